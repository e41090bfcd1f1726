// A part of the panels that is closed by its title, and is found as it was left.
#pragma once

#include <gtkmm/expander.h>

namespace host {

/// Open, unless the user closed the one of this name. The name is not translated, its title is; the caller's parent
/// owns the section.
Gtk::Expander* NewSection(const char* name);

}  // namespace host
