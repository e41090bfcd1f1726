// A part of the panels that is closed by its title, and is found as it was left.
#pragma once

#include <gtkmm/expander.h>

namespace host {

/// Open, unless the user closed the one of this name. The name is not translated, its title is; the caller's parent
/// owns the section.
Gtk::Expander* NewSection(const char* name);
/// Opens a section for as long as it has something to show, or leaves it as the user did.
void OpenFor(Gtk::Expander* section, const char* name, bool hasContent);

}  // namespace host
