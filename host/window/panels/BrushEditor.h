// The controls of a brush: its style, and what the style needs.
#pragma once

#include <gtkmm/colorbutton.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/scale.h>

#include "host/session/StyleFields.h"
#include "host/window/widgets/FormGrid.h"
#include "host/window/widgets/NumberField.h"

namespace host {

class BrushEditor : public FormGrid {
 public:
  /// With or without what only fills have: gradients and the rule of filling.
  explicit BrushEditor(bool forFills);

  /// Shows a brush, and which fields of it are different in others, without telling anybody.
  void Show(const AGBrush& brush, const BrushFields& differs);
  /// The user changed a field, to that of the brush. `burst` names the control when more changes may follow, else it is
  /// empty.
  using Changed = sigc::signal<void(BrushField field, const AGBrush& brush, const std::string& burst)>;
  Changed& SignalChanged() { return changed_; }

 private:
  void Tell(BrushField field, const std::string& burst);
  AGBrush Entered() const;
  void ShowNumber(BrushField field, NumberField* control, double value);
  void ShowWhatCounts();

  bool forFills_;
  bool showing_ = false;
  AGBrush brush_;
  BrushFields differs_;
  Gtk::DropDown style_;
  Gtk::ColorButton color_;
  Gtk::ColorButton color2_;
  NumberField pattern_;
  Gtk::Scale blend_{Gtk::Orientation::HORIZONTAL};
  NumberField angle_;
  NumberField centerX_;
  NumberField centerY_;
  Gtk::DropDown fillMode_;
  Changed changed_;
};

Gdk::RGBA ToRGBA(AGColor color);
AGColor FromRGBA(const Gdk::RGBA& color);

}  // namespace host
