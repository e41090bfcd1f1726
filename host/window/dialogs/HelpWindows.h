// The window of shortcuts.
#pragma once

#include <gtkmm/window.h>

namespace host {

/// Opens a window of its own, which closes with `parent`.
void ShowShortcuts(Gtk::Window& parent);

}  // namespace host
