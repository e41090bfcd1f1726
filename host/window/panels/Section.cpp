#include "host/window/panels/Section.h"

#include <string>

#include "host/text/Localisation.h"
#include "host/window/WindowSettings.h"
#include "host/window/widgets/Tip.h"

namespace host {
namespace {

bool opening = false;  // it is not the user who opens or closes a section

}  // namespace

Gtk::Expander* NewSection(const char* name) {
  auto* const section = Gtk::make_managed<Gtk::Expander>(Tr(name));
  GiveName(section, Tr(name));
  section->set_expanded(!WindowSettings::Instance().closedPanels.contains(name));
  section->property_expanded().signal_changed().connect([section, name = std::string(name)] {
    if (opening) return;
    auto& closed = WindowSettings::Instance().closedPanels;
    section->get_expanded() ? static_cast<void>(closed.erase(name)) : static_cast<void>(closed.insert(name));
    WindowSettings::Instance().Save();
  });
  return section;
}

void OpenFor(Gtk::Expander* section, const char* name, bool hasContent) {
  opening = true;
  section->set_expanded(hasContent || !WindowSettings::Instance().closedPanels.contains(name));
  opening = false;
}

}  // namespace host
