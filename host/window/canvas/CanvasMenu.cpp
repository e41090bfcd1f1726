#include "host/window/canvas/CanvasMenu.h"

#include <glibmm/main.h>

#include "host/window/Menus.h"

namespace host {

CanvasMenu::~CanvasMenu() {
  if (menu_ != nullptr) menu_->unparent();
}

void CanvasMenu::Open(const AGPoint& point) {
  if (menu_ == nullptr) {
    menu_ = std::make_unique<Gtk::PopoverMenu>(MakeContextMenu());
    menu_->set_parent(owner_);
    menu_->set_has_arrow(false);
    // Beside the pointer rather than below it: the toolkit pushes it up as far as the screen needs, but not above.
    menu_->set_position(Gtk::PositionType::RIGHT);
    menu_->set_valign(Gtk::Align::START);
    // After the toolkit, which would leave the keys with the menu.
    menu_->signal_closed().connect(
        [this] { Glib::signal_idle().connect_once([&owner = owner_] { owner.grab_focus(); }, Glib::PRIORITY_HIGH); });
  }
  menu_->set_pointing_to({static_cast<int>(point.x), static_cast<int>(point.y), 1, 1});
  menu_->popup();
}

void CanvasMenu::Place() {
  if (menu_ != nullptr) menu_->present();
}

}  // namespace host
