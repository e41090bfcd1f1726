#include "host/window/widgets/NumberField.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/button.h>
#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollerscroll.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "host/text/Localisation.h"

namespace host {
void UseWheelWithFocusAlone(Gtk::Widget* widget) {
  const auto controllers = widget->observe_controllers();
  for (guint i = 0; i < controllers->get_n_items(); ++i) {
    const auto scroll = std::dynamic_pointer_cast<Gtk::EventControllerScroll>(controllers->get_object(i));
    if (scroll == nullptr) continue;
    const Gtk::PropagationPhase phase = scroll->get_propagation_phase();
    scroll->set_propagation_phase(Gtk::PropagationPhase::NONE);
    auto focus = Gtk::EventControllerFocus::create();
    focus->signal_enter().connect([scroll, phase] { scroll->set_propagation_phase(phase); });
    focus->signal_leave().connect([scroll] { scroll->set_propagation_phase(Gtk::PropagationPhase::NONE); });
    widget->add_controller(focus);
    return;
  }
}

NumberField::NumberField(double least, double most, double step, int decimals, const Glib::ustring& accessibleName)
    : Gtk::SpinButton(Gtk::Adjustment::create(0, least, most, step, 10 * step, 0), step, static_cast<guint>(decimals)),
      step_(step) {
  set_numeric(false);  // else the decimal separator of another habit could not be typed
  UseWheelWithFocusAlone(this);
  set_width_chars(6);  // with the longest label of all languages, the panels are no wider than they have to be
  set_max_width_chars(7);
  gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, accessibleName.c_str(), -1);
  reason_.set_parent(*this);
  reason_.set_autohide(false);  // the keys stay with the field
  reason_.set_can_focus(false);
  reason_.set_position(Gtk::PositionType::LEFT);
  reason_.set_child(reasonText_);
  AddSignals();
  AddEscape();
}

// The toolkit asks for a last update while it takes the field down.
NumberField::~NumberField() {
  showing_ = true;
  typed_ = false;
  reason_.unparent();
}

void NumberField::AddSignals() {
  signal_changed().connect([this] {
    if (writing_) return;
    typed_ = true;
    if (refused_) Allow();
  });
  signal_input().connect(
      [this](double& value) {
        Input(&value);
        return 1;
      },
      false);
  // The text is written here alone, so that the toolkit never writes over what is typed.
  signal_output().connect(
      [this] {
        if (showing_ || typed_ || (mixed_ && get_text().empty())) return true;
        shownText_ = TextOf(get_value());
        WriteText(shownText_);
        return true;
      },
      false);
  signal_value_changed().connect([this] {
    if (showing_ || (!mixed_ && get_value() == shown_)) return;
    typed_ = false;  // a step of the wheel
    Allow();
    Choose();
  });
}

void NumberField::AddEscape() {
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](guint key, guint, Gdk::ModifierType) {
        if (key != GDK_KEY_Escape || !typed_) return false;
        GiveUp();
        select_region(0, -1);
        return true;
      },
      false);
  add_controller(keys);
}

// The value that the toolkit takes over. What is shown is rounded: untouched, it is none.
void NumberField::Input(double* value) {
  *value = get_value();
  if (!typed_) return;
  if (get_text().raw() == shownText_.raw()) return GiveUp();
  double number = 0;
  if (!Read(get_text().raw(), &number)) return Refuse();
  typed_ = false;
  number = std::clamp(number, get_adjustment()->get_lower(), get_adjustment()->get_upper());
  // The toolkit sees no change, but for some objects it is one.
  if (mixed_ && number == *value) Choose();
  *value = number;
}

bool NumberField::Read(const std::string& text, double* value) const {
  if (read_) return read_(text, value);
  const auto number = Evaluate(text, measure_, mixed_ ? std::nullopt : std::optional(shown_), Decimals::kPointOrComma,
                               MapUnitsOf(unit_));
  if (number) *value = *number;
  return number.has_value();
}

Text NumberField::WhyRefused() const {
  if (read_) return N_("“%s” is no time. Write hours, minutes and seconds, such as 1:02:05.");
  if (measure_ == Measure::kLength) return N_("“%s” is no length. Write a number or a sum, such as 20 mm + 5.");
  return N_("“%s” is no number.");
}

void NumberField::Choose() {
  shown_ = get_value();
  shownText_ = TextOf(shown_);
  mixed_ = false;
  chosen_.emit(shown_);
}

void NumberField::GiveUp() {
  typed_ = false;
  Allow();
  WriteText(shownText_);
}

std::string NumberField::TextOf(double value) const {
  if (write_) return write_(value);
  char text[400];  // the longest number has 309 digits before the separator
  const int digits = unit_ == LengthUnit::kPixel ? static_cast<int>(get_digits()) : DigitsOf(unit_);
  std::snprintf(text, sizeof(text), "%.*f", digits, value / MapUnitsOf(unit_));
  const bool isZero = std::string_view(text).find_first_of("123456789") == std::string_view::npos;
  return isZero && text[0] == '-' ? text + 1 : text;
}

// A text that is selected as a whole, to be typed over, stays so.
void NumberField::WriteText(const Glib::ustring& text) {
  if (get_text().raw() == text.raw()) return;
  int start = 0;
  int end = 0;
  const bool all = get_selection_bounds(start, end) && start == 0 && end == static_cast<int>(get_text().length());
  writing_ = true;
  set_text(text);
  writing_ = false;
  if (all) select_region(0, -1);
}

// For the eye, for a pointer that rests, and for those who hear the window.
void NumberField::Refuse() {
  if (refused_) return ShowReason();
  refused_ = true;
  const std::string why = TrWith(WhyRefused(), get_text().raw()) + " " + Tr("Escape brings back the old value.");
  add_css_class("error");
  tip_ = get_tooltip_text();
  set_tooltip_text(why);
  gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, why.c_str(), -1);
  gtk_accessible_update_state(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_STATE_INVALID, GTK_ACCESSIBLE_INVALID_TRUE, -1);
  reasonText_.set_text(why);
  ShowReason();
}

// A field that is taken off its panel while it is typed in is asked for its value once more, and has no place for a
// reason any more.
void NumberField::ShowReason() {
  if (get_root() != nullptr && get_mapped()) reason_.popup();
}

void NumberField::Allow() {
  if (!refused_) return;
  refused_ = false;
  remove_css_class("error");
  set_tooltip_text(tip_);
  gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, tip_.c_str(), -1);
  gtk_accessible_update_state(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_STATE_INVALID, GTK_ACCESSIBLE_INVALID_FALSE, -1);
  reason_.popdown();
}

// The wheel goes on by as many units as by pixels, of inches by a tenth.
void NumberField::SetUnit(LengthUnit unit) {
  if (unit == unit_) return;
  unit_ = unit;
  const double step =
      step_ * MapUnitsOf(unit) * (unit == LengthUnit::kInch || unit == LengthUnit::kCentimetre ? 0.1 : 1);
  set_increments(step, 10 * step);
  if (!mixed_) shownText_ = TextOf(shown_);
  if (!typed_) WriteText(shownText_);
}

void NumberField::SetForm(Write write, ReadText read) {
  write_ = std::move(write);
  read_ = std::move(read);
}

void NumberField::HideButtons() {
  for (Gtk::Widget* child = get_first_child(); child != nullptr; child = child->get_next_sibling()) {
    if (dynamic_cast<Gtk::Button*>(child) != nullptr) child->set_visible(false);
  }
}

void NumberField::Show(double value) {
  const bool keeps = KeepsText(!mixed_ && value == shown_);
  showing_ = true;
  mixed_ = false;
  set_value(value);
  showing_ = false;
  shown_ = get_value();
  shownText_ = TextOf(shown_);
  if (!keeps) GiveUp();
}

void NumberField::ShowMixed() {
  const bool keeps = KeepsText(mixed_);
  mixed_ = true;
  shownText_.clear();
  if (!keeps) GiveUp();
}

}  // namespace host
