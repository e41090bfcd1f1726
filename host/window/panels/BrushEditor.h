// The controls of a brush: its style, and what the style needs.
#pragma once

#include <gtkmm/colorbutton.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/scale.h>

#include "graphics/paint/AGBrush.h"
#include "host/window/widgets/FormGrid.h"
#include "host/window/widgets/NumberField.h"

namespace host {

class BrushEditor : public FormGrid {
 public:
  /// With or without what only fills have: gradients and the rule of filling.
  explicit BrushEditor(bool forFills);

  /// Shows a brush without telling anybody.
  void Show(const AGBrush& brush);
  /// The user changed the brush. `burst` names the control when more changes may follow, else it is empty.
  sigc::signal<void(const AGBrush& brush, const std::string& burst)>& SignalChanged() { return changed_; }

 private:
  void Changed(const std::string& burst);
  void Take(AGBrush* brush) const;
  void ShowWhatCounts();

  bool forFills_;
  bool showing_ = false;
  AGBrush brush_;
  Gtk::DropDown style_;
  Gtk::ColorButton color_;
  Gtk::ColorButton color2_;
  NumberField pattern_;
  Gtk::Scale blend_{Gtk::Orientation::HORIZONTAL};
  NumberField angle_;
  NumberField centerX_;
  NumberField centerY_;
  Gtk::DropDown fillMode_;
  sigc::signal<void(const AGBrush&, const std::string&)> changed_;
};

Gdk::RGBA ToRGBA(AGColor color);
AGColor FromRGBA(const Gdk::RGBA& color);

}  // namespace host
