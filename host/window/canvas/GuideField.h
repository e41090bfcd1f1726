// A field for the exact place of a guide, beside it on the canvas.
#pragma once

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/popover.h>

#include "host/view/GuideTool.h"
#include "host/window/widgets/NumberField.h"

namespace host {

/// "Vertical Guide", translated.
std::string NameOf(const Guide& guide);

class GuideField {
 public:
  /// The owner has the field among its children, gets the keys back when it closes, and outlives it.
  explicit GuideField(Gtk::Widget& owner);
  GuideField(const GuideField&) = delete;
  GuideField& operator=(const GuideField&) = delete;
  ~GuideField();

  /// At a point of the owner, with the guide's name and place in map units. Enter and Escape close it.
  void Open(const AGPoint& point, const std::string& name, double place, LengthUnit unit);
  /// To be called when the owner gets its place.
  void Place() { popover_.present(); }

  /// Another place was entered; map units.
  sigc::signal<void(double)>& SignalChosen() { return field_.SignalChosen(); }

 private:
  Gtk::Popover popover_;
  Gtk::Box row_{Gtk::Orientation::HORIZONTAL, 8};
  Gtk::Label name_;
  NumberField field_;
};

}  // namespace host
