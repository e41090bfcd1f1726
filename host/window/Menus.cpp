#include "host/window/Menus.h"

#include <gtkmm/accelerator.h>

#include "host/text/Localisation.h"

namespace host {

std::vector<MenuSection> const& MenuSections() {
  static const std::vector<MenuSection> sections = {
      {"_File", {{"_New", "app.new", {"<Control>n"}}, {"_Open…", "win.open", {"<Control>o"}}}},
      {nullptr,
       {{"_Save", "win.save", {"<Control>s"}},
        {"Save _As…", "win.save-as", {"<Control><Shift>s"}},
        {"_Export…", "win.export", {"<Control>e"}}}},
      {nullptr, {{"Load _Bundle…", "win.load-bundle", {}}}},
      {nullptr, {{"_Close", "win.close", {"<Control>w"}}, {"_Quit", "app.quit", {"<Control>q"}}}},
      {"_Edit", {{"_Undo", "win.undo", {"<Control>z"}}, {"_Redo", "win.redo", {"<Control><Shift>z", "<Control>y"}}}},
      {nullptr,
       {{"Cu_t", "win.cut", {"<Control>x"}},
        {"_Copy", "win.copy", {"<Control>c"}},
        {"_Paste", "win.paste", {"<Control>v"}},
        {"_Duplicate", "win.duplicate", {"<Control>d"}},
        {"De_lete", "win.delete", {}}}},
      {nullptr,
       {{"Select _All", "win.select-all", {"<Control>a"}}, {"Select _None", "win.select-none", {"<Control><Shift>a"}}}},
      {"_Object",
       {{"Bring to _Front", "win.to-front", {"<Control><Shift>bracketright"}},
        {"Bring _Forward", "win.forward", {"<Control>bracketright"}},
        {"Send _Backward", "win.backward", {"<Control>bracketleft"}},
        {"Send to Bac_k", "win.to-back", {"<Control><Shift>bracketleft"}}}},
      {nullptr,
       {{"Align _Left", "win.align-left", {}},
        {"Align _Center", "win.align-center", {}},
        {"Align _Right", "win.align-right", {}},
        {"Align _Top", "win.align-top", {}},
        {"Align _Middle", "win.align-middle", {}},
        {"Align _Bottom", "win.align-bottom", {}}}},
      {nullptr,
       {{"Distribute _Horizontally", "win.distribute-horizontally", {}},
        {"Distribute _Vertically", "win.distribute-vertically", {}}}},
      {nullptr, {{"New La_yer", "win.add-layer", {"<Control><Shift>n"}}}},
      {"_View",
       {{"Zoom _In", "win.zoom-in", {"<Control>plus", "<Control>equal", "<Control>KP_Add"}},
        {"Zoom _Out", "win.zoom-out", {"<Control>minus", "<Control>KP_Subtract"}},
        {"_100 %", "win.zoom-100", {"<Control>1"}},
        {"Fit _Page", "win.zoom-fit", {"<Control>0"}},
        {"Fit _Selection", "win.zoom-selection", {"<Control>2"}}}},
      {nullptr,
       {{"_Rulers", "win.rulers", {"<Control>r"}},
        {"_Grid", "win.grid", {"<Control>g"}},
        {"_Snap to Grid", "win.snap", {"<Control><Shift>g"}},
        {"_Dark", "app.dark", {}}}},
      {nullptr, {{"Galle_ry", "win.gallery", {}}}},
      {"_Help", {{"_Shortcuts", "win.shortcuts", {"<Control>question", "F1"}}, {"_About", "app.about", {}}}},
  };
  return sections;
}

Menus MakeMenus() {
  Menus menus;
  menus.bar = Gio::Menu::create();
  Glib::RefPtr<Gio::Menu> submenu;
  for (MenuSection const& section : MenuSections()) {
    if (section.title != nullptr) {
      submenu = Gio::Menu::create();
      menus.bar->append_submenu(Tr(section.title), submenu);
    }
    auto entries = Gio::Menu::create();
    for (ActionKeys const& entry : section.entries) {
      entries->append(Tr(entry.title), entry.action);
      if (std::string("win.open") != entry.action) continue;
      menus.recent = Gio::Menu::create();
      entries->append_submenu(Tr("Open _Recent"), menus.recent);
    }
    submenu->append_section(entries);
    if (std::string("win.undo") == section.entries[0].action) menus.undo = entries;
  }
  return menus;
}

void SetKeys(Gtk::Application& application) {
  for (MenuSection const& section : MenuSections()) {
    for (ActionKeys const& entry : section.entries) {
      if (!entry.keys.empty()) application.set_accels_for_action(entry.action, {entry.keys.begin(), entry.keys.end()});
    }
  }
}

std::string ShownKey(ActionKeys const& entry) {
  if (entry.keys.empty()) return {};
  guint key = 0;
  Gdk::ModifierType modifiers{};
  if (!Gtk::Accelerator::parse(entry.keys[0], key, modifiers)) return {};
  return Gtk::Accelerator::get_label(key, modifiers);
}

}  // namespace host
