#include "host/window/dialogs/CloseByEscape.h"

#include <gtkmm/eventcontrollerkey.h>

namespace host {

void CloseByEscape(Gtk::Window& window) {
  auto keys = Gtk::EventControllerKey::create();
  keys->signal_key_pressed().connect(
      [&window](guint value, guint, Gdk::ModifierType) {
        if (value == GDK_KEY_Escape) window.close();
        return value == GDK_KEY_Escape;
      },
      false);
  window.add_controller(keys);
}

}  // namespace host
