// A ruler along the canvas: ticks and numbers in the document's unit, and where the pointer is. A drag out of it makes
// a guide.
#pragma once

#include <gtkmm/drawingarea.h>

#include "host/model/PageAids.h"
#include "host/view/ViewTransform.h"

namespace host {

/// The distance in units between numbered ticks that suits a zoom, in pixels of the view a unit: 1, 2 or 5 times a
/// power of ten, at least 50 pixels of the view.
double RulerStep(double zoom);

class Ruler : public Gtk::DrawingArea {
 public:
  explicit Ruler(Gtk::Orientation orientation);

  void SetView(const ViewTransform& view);
  void SetPointer(const AGPoint& map);
  void SetUnit(LengthUnit unit);

  // What the main button does, in pixels of the ruler from its upper left corner.

  sigc::signal<void()>& SignalPressed() { return pressed_; }
  sigc::signal<void(AGPoint, Gdk::ModifierType)>& SignalDragged() { return dragged_; }
  sigc::signal<void()>& SignalReleased() { return released_; }

 private:
  void AddDrag();
  void Draw(const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height);

  Gtk::Orientation orientation_;
  ViewTransform view_;
  AGPoint pointer_;
  LengthUnit unit_ = LengthUnit::kPixel;
  sigc::signal<void()> pressed_;
  sigc::signal<void(AGPoint, Gdk::ModifierType)> dragged_;
  sigc::signal<void()> released_;
};

}  // namespace host
