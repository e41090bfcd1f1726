#include "host/window/Toggle.h"

namespace host {

Glib::RefPtr<Gio::SimpleAction> NewToggle(const char* name, bool WindowSettings::*setting,
                                          const std::function<void(bool on)>& apply) {
  auto action = Gio::SimpleAction::create_bool(name, WindowSettings::Instance().*setting);
  Gio::SimpleAction* const raw = action.get();
  action->signal_activate().connect([raw, setting, apply](const Glib::VariantBase&) {
    bool on = false;
    raw->get_state(on);
    raw->set_state(Glib::Variant<bool>::create(!on));
    WindowSettings::Instance().*setting = !on;
    WindowSettings::Instance().Save();
    apply(!on);
  });
  return action;
}

}  // namespace host
