// Menu entries with a check mark, whose state the next start finds again.
#pragma once

#include <giomm/simpleaction.h>

#include <functional>

#include "host/window/WindowSettings.h"

namespace host {

/// An action that begins as the setting is; `apply` is called with each new state, after it is kept.
Glib::RefPtr<Gio::SimpleAction> NewToggle(const char* name, bool WindowSettings::*setting,
                                          const std::function<void(bool on)>& apply);

}  // namespace host
