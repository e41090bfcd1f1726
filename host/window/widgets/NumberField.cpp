#include "host/window/widgets/NumberField.h"

#include <gtkmm/button.h>
#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerscroll.h>

#include <algorithm>
#include <cmath>

namespace host {
namespace {

// A number alone, or with the sign of a degree behind it. Either decimal separator will do when there is one only.
bool ReadDecimal(Glib::ustring text, double* value) {
  const auto separator = text.find_first_of(",");
  if (separator != Glib::ustring::npos) text.replace(separator, 1, ".");
  char* end = nullptr;
  const double number = g_ascii_strtod(text.c_str(), &end);
  const bool any = end != text.c_str();
  while (*end == ' ' || *end == '\t') ++end;
  const std::string rest = end;
  if (!any || !std::isfinite(number) || !(rest.empty() || rest == "\u00B0")) return false;
  *value = number;
  return true;
}

}  // namespace

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
    : Gtk::SpinButton(Gtk::Adjustment::create(0, least, most, step, 10 * step, 0), step, static_cast<guint>(decimals)) {
  set_numeric(false);  // else the decimal separator of another habit could not be typed
  UseWheelWithFocusAlone(this);
  set_width_chars(7);
  set_max_width_chars(7);
  gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, accessibleName.c_str(), -1);
  signal_input().connect(
      [this](double& value) {
        value = get_value();
        if (!IsBeingTyped()) return 1;  // what is shown is rounded: it is no value to take over
        double typed = 0;
        if (!(read_ ? read_(get_text().raw(), &typed) : ReadDecimal(get_text(), &typed))) return 1;
        const bool unchanged = std::clamp(typed, get_adjustment()->get_lower(), get_adjustment()->get_upper()) == value;
        value = typed;
        if (mixed_ && unchanged) Choose();  // the toolkit sees no change, but for some objects it is one
        return 1;
      },
      false);
  // A field of several values stays empty when it is left as it was.
  signal_output().connect(
      [this] {
        if (mixed_ && !showing_ && get_text().empty()) return true;
        if (!write_) return false;
        if (const std::string text = write_(get_value()); get_text().raw() != text) set_text(text);
        return true;
      },
      false);
  signal_value_changed().connect([this] {
    if (showing_ || (!mixed_ && get_value() == shown_)) return;
    Choose();
  });
}

void NumberField::Choose() {
  shown_ = get_value();
  shownText_ = get_text();
  mixed_ = false;
  chosen_.emit(shown_);
}

void NumberField::SetForm(Write write, Read read) {
  write_ = std::move(write);
  read_ = std::move(read);
}

void NumberField::HideButtons() {
  for (Gtk::Widget* child = get_first_child(); child != nullptr; child = child->get_next_sibling()) {
    if (dynamic_cast<Gtk::Button*>(child) != nullptr) child->set_visible(false);
  }
}

void NumberField::Show(double value) {
  showing_ = true;
  mixed_ = false;
  set_value(value);
  shown_ = get_value();
  shownText_ = get_text();
  showing_ = false;
}

void NumberField::ShowMixed() {
  mixed_ = true;
  set_text("");
  shownText_.clear();
}

}  // namespace host
