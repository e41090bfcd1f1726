// Everything that the drawing layer can do, drawn live on the window's own port.
#pragma once

#include <gtkmm/window.h>

namespace host {

/// Opens a window of its own, which closes with `parent`.
void ShowGallery(Gtk::Window& parent);

}  // namespace host
