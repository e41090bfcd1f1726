#include "host/window/canvas/CanvasMenu.h"

#include <glibmm/main.h>

#include "host/window/Menus.h"

namespace host {

// Made before it is opened: the toolkit puts the lines between its sections in later, when nothing else is to be done,
// which would move the entries under the pointer.
CanvasMenu::CanvasMenu(Gtk::Widget& owner) : owner_(owner), menu_(MakeContextMenu()) {
  menu_.set_parent(owner);
  menu_.set_has_arrow(false);
  menu_.set_halign(Gtk::Align::START);
  // After the toolkit, which would leave the keys with the menu.
  menu_.signal_closed().connect(
      [this] { Glib::signal_idle().connect_once([&owner = owner_] { owner.grab_focus(); }, Glib::PRIORITY_HIGH); });
}

CanvasMenu::~CanvasMenu() { menu_.unparent(); }

void CanvasMenu::Open(const AGPoint& point) {
  menu_.set_pointing_to({static_cast<int>(point.x), static_cast<int>(point.y), 1, 1});
  menu_.popup();
}

void CanvasMenu::Place() { menu_.present(); }

}  // namespace host
