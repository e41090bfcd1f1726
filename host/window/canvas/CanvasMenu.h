// The menu that the right button opens on the canvas.
#pragma once

#include <gtkmm/popovermenu.h>

#include "kit/geometry/AGPoint.h"

namespace host {

class CanvasMenu {
 public:
  /// The owner has the menu among its children, gets the keys back when it closes, and outlives it.
  explicit CanvasMenu(Gtk::Widget& owner);
  CanvasMenu(const CanvasMenu&) = delete;
  CanvasMenu& operator=(const CanvasMenu&) = delete;
  ~CanvasMenu();

  /// At a point of the owner.
  void Open(const AGPoint& point);
  /// To be called when the owner gets its place.
  void Place();

 private:
  Gtk::Widget& owner_;
  Gtk::PopoverMenu menu_;
};

}  // namespace host
