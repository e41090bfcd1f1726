// A field for a number: typing, stepping by arrow keys and buttons, the wheel.
//
// It follows the display's decimal separator and shows the value to its precision; a value that is only looked at stays
// as precise as it was. Changes of a burst of steps are sent one by one; typing is sent when it is finished by Enter or
// by leaving the field, and forgotten when it is no number.
#pragma once

#include <gtkmm/adjustment.h>
#include <gtkmm/spinbutton.h>

#include <functional>
#include <string>

namespace host {

/// A panel is scrolled by the wheel: a control that takes it for itself does so only while it has the focus.
void UseWheelWithFocusAlone(Gtk::Widget* widget);

class NumberField : public Gtk::SpinButton {
 public:
  NumberField(double least, double most, double step, int decimals, const Glib::ustring& accessibleName);

  using Write = std::function<std::string(double value)>;
  using Read = std::function<bool(const std::string& text, double* value)>;
  /// Shows and reads the value in a form of its own, such as hours and minutes, in place of decimal numbers.
  void SetForm(Write write, Read read);
  /// Leaves the arrow keys and the wheel to step with.
  void HideButtons();
  /// Shows a value without telling anybody.
  void Show(double value);
  /// Shows that several values differ.
  void ShowMixed();
  /// True from the first key until the number is taken over by Enter or by leaving the field.
  bool IsBeingTyped() const { return get_text().raw() != shownText_.raw(); }
  /// The user chose a value.
  sigc::signal<void(double)>& SignalChosen() { return chosen_; }

 private:
  void Choose();

  bool showing_ = false;
  double shown_ = 0;
  Glib::ustring shownText_;
  bool mixed_ = false;
  Write write_;
  Read read_;
  sigc::signal<void(double)> chosen_;
};

}  // namespace host
