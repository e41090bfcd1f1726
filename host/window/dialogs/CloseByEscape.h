// The key that leaves a dialog.
#pragma once

#include <gtkmm/window.h>

namespace host {

/// Escape closes the window, unless the control that has the focus takes it for itself.
void CloseByEscape(Gtk::Window& window);

}  // namespace host
