#include "host/window/canvas/Ruler.h"

#include <gtkmm/gesturedrag.h>

#include <cmath>
#include <cstdio>

namespace host {
namespace {

constexpr int kThickness = 20;
constexpr double kLeastGap = 50;

}  // namespace

double RulerStep(double zoom) {
  double step = std::pow(10, std::floor(std::log10(kLeastGap / zoom)));
  for (double factor : {1.0, 2.0, 5.0, 10.0}) {
    if (step * factor * zoom >= kLeastGap) return step * factor;
  }
  return step * 10;
}

Ruler::Ruler(Gtk::Orientation orientation) : orientation_(orientation) {
  if (orientation == Gtk::Orientation::HORIZONTAL) {
    set_content_height(kThickness);
  } else {
    set_content_width(kThickness);
  }
  add_css_class("ruler");
  set_draw_func(
      [this](const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height) { Draw(cairo, width, height); });
  AddDrag();
}

void Ruler::AddDrag() {
  auto drag = Gtk::GestureDrag::create();
  Gtk::GestureDrag* const gesture = drag.get();
  drag->signal_drag_begin().connect([this](double, double) { pressed_.emit(); });
  drag->signal_drag_update().connect([this, gesture](double dx, double dy) {
    double x = 0;
    double y = 0;
    if (gesture->get_start_point(x, y)) dragged_.emit({x + dx, y + dy}, gesture->get_current_event_state());
  });
  drag->signal_drag_end().connect([this](double, double) { released_.emit(); });
  drag->signal_cancel().connect([this](Gdk::EventSequence*) { released_.emit(); });
  add_controller(drag);
}

void Ruler::SetUnit(LengthUnit unit) {
  unit_ = unit;
  queue_draw();
}

void Ruler::SetView(const ViewTransform& view) {
  view_ = view;
  queue_draw();
}

void Ruler::SetPointer(const AGPoint& map) {
  pointer_ = map;
  queue_draw();
}

void Ruler::Draw(const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height) {
  const bool across = orientation_ == Gtk::Orientation::HORIZONTAL;
  const double length = across ? width : height;
  const double thickness = across ? height : width;
  const Gdk::RGBA color = get_style_context()->get_color();
  cairo->set_source_rgba(color.get_red(), color.get_green(), color.get_blue(), 0.85);
  cairo->set_line_width(1);
  cairo->set_font_size(9);
  // The vertical one is drawn as the horizontal one turned, its numbers reading upwards.
  if (!across) {
    cairo->translate(0, length);
    cairo->rotate(-std::acos(0.0));
  }
  const double size = MapUnitsOf(unit_);
  const auto along = [&](double unit) {
    return across ? view_.ToView({unit * size, 0}).x : length - view_.ToView({0, unit * size}).y;
  };
  const AGPoint first = view_.ToMap({0, length});
  const double step = RulerStep(view_.Zoom() * size);
  for (double unit = std::floor((across ? first.x : first.y) / size / step) * step; along(unit) < length;
       unit += step) {
    for (int part = 0; part < 10; ++part) {
      const double place = std::floor(along(unit + step * part / 10)) + 0.5;
      const double tick = part == 0 ? thickness : part == 5 ? 7 : 4;
      cairo->move_to(place, thickness);
      cairo->line_to(place, thickness - tick);
    }
    cairo->stroke();
    char text[32];
    std::snprintf(text, sizeof(text), "%.10g", std::fabs(unit) < step / 2 ? 0.0 : unit);
    cairo->move_to(along(unit) + 3, 9);
    cairo->show_text(text);
  }
  cairo->set_source_rgb(0.15, 0.43, 0.86);
  const double place = std::floor(along((across ? pointer_.x : pointer_.y) / size)) + 0.5;
  cairo->move_to(place, 0);
  cairo->line_to(place, thickness);
  cairo->stroke();
}

}  // namespace host
