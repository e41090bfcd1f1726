#include "host/window/NumberField.h"

#include <gtkmm/button.h>

namespace host {

NumberField::NumberField(double least, double most, double step, int decimals, Glib::ustring const& accessibleName)
    : Gtk::SpinButton(Gtk::Adjustment::create(0, least, most, step, 10 * step, 0), step, static_cast<guint>(decimals)) {
  gtk_editable_set_enable_undo(GTK_EDITABLE(gobj()), FALSE);
  set_numeric(false);  // else the decimal separator of another habit could not be typed
  set_width_chars(7);
  set_max_width_chars(7);
  gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, accessibleName.c_str(), -1);
  // Both separators are understood when there is only one of them.
  signal_input().connect(
      [this](double& value) {
        Glib::ustring text = get_text();
        for (gunichar other : {gunichar(','), gunichar('.')}) {
          const auto place = text.find(other);
          if (place != Glib::ustring::npos) text.replace(place, 1, ".");
        }
        char* end = nullptr;
        const double parsed = g_ascii_strtod(text.c_str(), &end);
        while (end != nullptr && (*end == ' ' || *end == '\t')) ++end;
        // The unit sign of an angle may stand behind it.
        const std::string rest = end == nullptr ? "?" : end;
        if (text.empty() || end == text.c_str() || !(rest.empty() || rest == "\u00B0")) return GTK_INPUT_ERROR;
        value = parsed;
        return 1;
      },
      false);
  signal_value_changed().connect([this] {
    if (showing_ || (!mixed_ && get_value() == shown_)) return;
    shown_ = get_value();
    mixed_ = false;
    chosen_.emit(shown_);
  });
}

void NumberField::HideButtons() {
  for (Gtk::Widget* child = get_first_child(); child != nullptr; child = child->get_next_sibling()) {
    if (dynamic_cast<Gtk::Button*>(child) != nullptr) child->set_visible(false);
  }
}

void NumberField::Show(double value) {
  showing_ = true;
  set_value(value);
  if (mixed_) update();
  shown_ = get_value();
  mixed_ = false;
  showing_ = false;
}

void NumberField::ShowMixed() {
  mixed_ = true;
  set_text("");
}

}  // namespace host
