// A ruler along the canvas: ticks and numbers in map units, and where the pointer is.
#pragma once

#include <gtkmm/drawingarea.h>

#include "host/view/ViewTransform.h"

namespace host {

/// The distance in map units between numbered ticks that suits a zoom: 1, 2 or 5 times a power of ten, at least 50
/// pixels of the view.
double RulerStep(double zoom);

class Ruler : public Gtk::DrawingArea {
 public:
  explicit Ruler(Gtk::Orientation orientation);

  void SetView(const ViewTransform& view);
  void SetPointer(const AGPoint& map);

 private:
  void Draw(const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height);

  Gtk::Orientation orientation_;
  ViewTransform view_;
  AGPoint pointer_;
};

}  // namespace host
