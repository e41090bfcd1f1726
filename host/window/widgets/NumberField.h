// A field for a number: typing, stepping by arrow keys and buttons, the wheel.
//
// It follows the display's decimal separator and shows the value to its precision; a value that is only looked at stays
// as precise as it was. Changes of a burst of steps are sent one by one; typing is sent when it is taken over
// (TypedField). Sums, units and parts of the present value may be typed (Expression.h). A text that is no number stays,
// in red and with the reason, until it is corrected or given up; it is replaced from outside when the field has not the
// focus and there is another value to show.
#pragma once

#include <gtkmm/adjustment.h>
#include <gtkmm/label.h>
#include <gtkmm/popover.h>
#include <gtkmm/spinbutton.h>

#include <functional>
#include <string>

#include "host/model/PageAids.h"
#include "host/text/Expression.h"
#include "host/text/Text.h"
#include "host/window/widgets/Focus.h"
#include "host/window/widgets/TypedField.h"

namespace host {

/// A panel is scrolled by the wheel: a control that takes it for itself does so only while it has the focus.
void UseWheelWithFocusAlone(Gtk::Widget* widget);

class NumberField : public Gtk::SpinButton, public TypedField {
 public:
  NumberField(double least, double most, double step, int decimals, const Glib::ustring& accessibleName);
  ~NumberField() override;

  /// What the number is of, and so what units may be typed behind it.
  void SetMeasure(Measure measure) { measure_ = measure; }

  /// Of a length: what it is shown in and a bare number is of. The value stays map units.
  void SetUnit(LengthUnit unit);

  using Write = std::function<std::string(double value)>;
  using ReadText = std::function<bool(const std::string& text, double* value)>;
  /// Shows and reads the value in a form of its own, such as hours and minutes, in place of decimal numbers.
  void SetForm(Write write, ReadText read);
  /// Leaves the arrow keys and the wheel to step with.
  void HideButtons();
  /// Shows a value without telling anybody; behind what is being typed.
  void Show(double value);
  /// Shows that several values differ.
  void ShowMixed();
  /// The user chose a value.
  sigc::signal<void(double)>& SignalChosen() { return chosen_; }

  // TypedField
  bool IsBeingTyped() const override { return typed_; }
  void TakeOver() override { update(); }
  void GiveUp() override;

 private:
  void AddSignals();
  void AddEscape();
  void Input(double* value);
  bool Read(const std::string& text, double* value) const;
  Text WhyRefused() const;
  void Choose();
  std::string TextOf(double value) const;
  void WriteText(const Glib::ustring& text);
  void Refuse();
  void ShowReason();
  void Allow();
  /// What is typed stays: it is the user's, or says what was wrong with it.
  bool KeepsText(bool sameValue) const { return typed_ && (HasFocus(*this) || (refused_ && sameValue)); }

  bool showing_ = false;
  double shown_ = 0;
  Glib::ustring shownText_;  ///< what there is to be seen when nothing is typed
  bool mixed_ = false;
  bool writing_ = false;
  bool typed_ = false;
  bool refused_ = false;
  Gtk::Popover reason_;
  Gtk::Label reasonText_;
  Glib::ustring tip_;  ///< the field's own, while the reason is in its place
  Write write_;
  ReadText read_;
  Measure measure_ = Measure::kPlain;
  LengthUnit unit_ = LengthUnit::kPixel;
  const double step_;  ///< of pixels
  sigc::signal<void(double)> chosen_;
};

}  // namespace host
