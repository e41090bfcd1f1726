#include "host/window/Menus.h"

#include <gdk/gdk.h>
#include <gtkmm/accelerator.h>

#include <algorithm>
#include <string_view>

#include "host/text/Localisation.h"

namespace host {
namespace {

bool IsBracket(guint value) { return value == GDK_KEY_bracketleft || value == GDK_KEY_bracketright; }

// The bracket that a key writes without modifiers, or else the one that an American keyboard has at its place; 0 for
// none.
guint BracketOf(guint value, guint keycode) {
  if (IsBracket(value)) return value;
  GdkKeymapKey* levels = nullptr;
  guint* values = nullptr;
  int count = 0;
  guint found = 0;
  if (gdk_display_map_keycode(gdk_display_get_default(), keycode, &levels, &values, &count)) {
    for (int i = 0; i < count; ++i) {
      if (levels[i].level == 0 && IsBracket(values[i])) found = values[i];
    }
  }
  g_free(levels);
  g_free(values);
  constexpr guint kLeftPlace = 34;  // as X and evdev count
  constexpr guint kRightPlace = 35;
  if (found != 0) return found;
  return keycode == kLeftPlace ? GDK_KEY_bracketleft : keycode == kRightPlace ? GDK_KEY_bracketright : 0;
}

}  // namespace

const std::vector<MenuSection>& MenuSections() {
  static const std::vector<MenuSection> sections = {
      {N_("_File"), {{N_("_New"), "app.new", {"<Control>n"}}, {N_("_Open…"), "win.open", {"<Control>o"}}}},
      {nullptr,
       {{N_("_Save"), "win.save", {"<Control>s"}},
        {N_("Save _As…"), "win.save-as", {"<Control><Shift>s"}},
        {N_("_Import…"), "win.import", {"<Control>i"}},
        {N_("_Export…"), "win.export", {"<Control>e"}}}},
      {nullptr,
       {{N_("Page Set_up…"), "win.page-setup", {"<Control><Shift>e"}},
        {N_("_Print…"), "win.print", {"<Control>p"}},
        {N_("Print Pre_view"), "win.print-preview", {"<Control><Shift>p"}}}},
      {nullptr, {{N_("Load _Bundle…"), "win.load-bundle", {}}}},
      {nullptr, {{N_("_Close"), "win.close", {"<Control>w"}}, {N_("_Quit"), "app.quit", {"<Control>q"}}}},
      {N_("_Edit"),
       {{N_("_Undo"), "win.undo", {"<Control>z"}}, {N_("_Redo"), "win.redo", {"<Control><Shift>z", "<Control>y"}}}},
      {nullptr,
       {{N_("Cu_t"), "win.cut", {"<Control>x"}},
        {N_("_Copy"), "win.copy", {"<Control>c"}},
        {N_("_Paste"), "win.paste", {"<Control>v"}},
        {N_("Paste in P_lace"), "win.paste-in-place", {"<Control><Shift>v"}},
        {N_("Paste at the P_ointer"), "win.paste-at-pointer", {"<Control><Alt>p"}},
        {N_("_Duplicate"), "win.duplicate", {"<Control>d"}},
        {N_("De_lete"), "win.delete", {}, "Delete"}}},
      {nullptr,
       {{N_("Copy St_yle"), "win.copy-style", {"<Control><Alt>c"}},
        {N_("Paste Styl_e"), "win.paste-style", {"<Control><Alt>v"}}}},
      {nullptr,
       {{N_("_Find…"), "win.find", {"<Control>f"}},
        {N_("Select _All"), "win.select-all", {"<Control>a"}},
        {N_("Select _None"), "win.select-none", {"<Control><Shift>a"}},
        {N_("Select the One _Below"), "win.select-below", {"<Control>b"}},
        {N_("Select Same _Fill"), "win.select-same-fill", {}},
        {N_("Select Same _Outline"), "win.select-same-outline", {}},
        {N_("Select Same _Kind"), "win.select-same-kind", {}}}},
      {N_("_Object"),
       {{N_("Bring to _Front"), "win.to-front", {"<Control><Shift>bracketright"}},
        {N_("Bring F_orward"), "win.forward", {"<Control>bracketright"}},
        {N_("_Send Backward"), "win.backward", {"<Control>bracketleft"}},
        {N_("Send to Bac_k"), "win.to-back", {"<Control><Shift>bracketleft"}}}},
      {nullptr, {{N_("_Group"), "win.group", {"<Control>g"}}, {N_("_Ungroup"), "win.ungroup", {"<Control><Shift>g"}}}},
      {nullptr,
       {{N_("Lock"), "win.lock", {"<Control>l"}},
        {N_("U_nlock All"), "win.unlock-all", {"<Control><Shift>l"}},
        {N_("H_ide"), "win.hide", {"<Control>h"}},
        {N_("Sho_w All"), "win.show-all", {"<Control><Shift>h"}}}},
      {nullptr, {{N_("New La_yer"), "win.add-layer", {"<Control><Shift>n"}}}},
      {N_("_Arrange"),
       {{N_("Align _Left"), "win.align-left", {}},
        {N_("Align _Center"), "win.align-center", {}},
        {N_("Align _Right"), "win.align-right", {}},
        {N_("Align _Top"), "win.align-top", {}},
        {N_("Align _Middle"), "win.align-middle", {}},
        {N_("Align _Bottom"), "win.align-bottom", {}}}},
      {nullptr,
       {{N_("Align to Each Other"), "win.align-to::objects", {}},
        {N_("Align to the Page"), "win.align-to::page", {}},
        {N_("Align to the Last Selected"), "win.align-to::key", {}}}},
      {nullptr,
       {{N_("Distribute _Horizontally"), "win.distribute-horizontally", {}},
        {N_("Distribute _Vertically"), "win.distribute-vertically", {}}}},
      {nullptr,
       {{N_("Match Width"), "win.match-width", {}},
        {N_("Match Height"), "win.match-height", {}},
        {N_("Match Size"), "win.match-size", {}},
        {N_("Flip Horizontally"), "win.flip-horizontally", {}, "h"},
        {N_("Flip Vertically"), "win.flip-vertically", {}, "v"},
        {N_("Repeat Last Transform"), "win.repeat", {"<Control><Shift>t"}}}},
      {N_("_View"),
       {{N_("Zoom _In"), "win.zoom-in", {"<Control>plus", "<Control>equal", "<Control>KP_Add"}},
        {N_("Zoom _Out"), "win.zoom-out", {"<Control>minus", "<Control>KP_Subtract"}},
        {N_("_50 %"), "win.zoom-50", {}},
        {N_("_100 %"), "win.zoom-100", {"<Control>1"}},
        {N_("_200 %"), "win.zoom-200", {}},
        {N_("Fit _Page"), "win.zoom-fit", {"<Control>0"}},
        {N_("Fit _Selection"), "win.zoom-selection", {"<Control>2"}},
        {N_("Fit Dra_wing"), "win.zoom-drawing", {"<Control>3"}}}},
      {nullptr,
       {{N_("_Rulers"), "win.rulers", {"<Control>r"}},
        {N_("_Grid"), "win.grid", {"<Control><Alt>g"}},
        {N_("Guides"), "win.guides", {"<Control><Alt>u"}},
        {N_("Lock Guides"), "win.lock-guides", {"<Control><Alt><Shift>u"}},
        {N_("New Vertical Guide"), "win.add-vertical-guide", {"<Control><Alt>k"}},
        {N_("New Horizontal Guide"), "win.add-horizontal-guide", {"<Control><Alt>j"}},
        {N_("Choose Next Guide"), "win.next-guide", {"<Control><Alt>n"}},
        {N_("Remove All Guides"), "win.remove-guides", {}}}},
      {nullptr,
       {{N_("Snapping"), "win.snapping", {"<Control><Alt>s"}},
        {N_("S_nap to Grid"), "win.snap", {"<Control><Alt><Shift>g"}},
        {N_("Snap to _Objects"), "win.snap-to-objects", {"<Control><Alt>o"}},
        {N_("Snap to Guides"), "win.snap-to-guides", {"<Control><Alt>i"}}}},
      {nullptr, {{N_("_Dark"), "app.dark", {}}}},
      {nullptr, {{N_("Galler_y"), "win.gallery", {}}}},
      {N_("_Help"),
       {{N_("_Shortcuts"), "win.shortcuts", {"<Control>question", "F1"}}, {N_("_About"), "app.about", {}}}},
  };
  return sections;
}

namespace {

const std::vector<std::vector<const char*>>& ContextActions() {
  static const std::vector<std::vector<const char*>> sections = {
      {"win.cut", "win.copy", "win.paste", "win.paste-at-pointer", "win.duplicate", "win.delete"},
      {"win.copy-style", "win.paste-style"},
      {"win.to-front", "win.forward", "win.backward", "win.to-back"},
      {"win.flip-horizontally", "win.flip-vertically"},
      {"win.group", "win.ungroup", "win.lock", "win.hide"},
      {"win.select-below", "win.select-all", "win.zoom-selection"},
  };
  return sections;
}

const ActionKeys* FindEntry(std::string_view action) {
  for (const MenuSection& section : MenuSections()) {
    for (const ActionKeys& entry : section.entries) {
      if (entry.action == action) return &entry;
    }
  }
  return nullptr;
}

Glib::RefPtr<Gio::MenuItem> MakeItem(const ActionKeys& entry) {
  auto item = Gio::MenuItem::create(Tr(entry.title), entry.action);
  if (entry.canvasKey != nullptr) {
    item->set_attribute_value("accel", Glib::Variant<Glib::ustring>::create(entry.canvasKey));
  }
  return item;
}

}  // namespace

Menus MakeMenus() {
  Menus menus;
  menus.bar = Gio::Menu::create();
  Glib::RefPtr<Gio::Menu> submenu;
  for (const MenuSection& section : MenuSections()) {
    if (section.title != nullptr) {
      submenu = Gio::Menu::create();
      menus.bar->append_submenu(Tr(section.title), submenu);
    }
    auto entries = Gio::Menu::create();
    for (const ActionKeys& entry : section.entries) {
      entries->append_item(MakeItem(entry));
      if (std::string("win.open") != entry.action) continue;
      menus.recent = Gio::Menu::create();
      entries->append_submenu(Tr("Open _Recent"), menus.recent);
    }
    submenu->append_section(entries);
    if (std::string("win.undo") == section.entries[0].action) menus.undo = entries;
  }
  return menus;
}

Glib::RefPtr<Gio::Menu> MakeContextMenu() {
  auto menu = Gio::Menu::create();
  for (const auto& actions : ContextActions()) {
    auto section = Gio::Menu::create();
    for (const char* action : actions) {
      if (const ActionKeys* entry = FindEntry(action)) section->append_item(MakeItem(*entry));
    }
    menu->append_section(section);
  }
  return menu;
}

void SetKeys(Gtk::Application& application) {
  for (const MenuSection& section : MenuSections()) {
    for (const ActionKeys& entry : section.entries) {
      if (!entry.keys.empty()) application.set_accels_for_action(entry.action, {entry.keys.begin(), entry.keys.end()});
    }
  }
}

const char* OrderActionOf(guint value, guint keycode, Gdk::ModifierType state) {
  if ((state & Gdk::ModifierType::CONTROL_MASK) == Gdk::ModifierType{}) return nullptr;
  if ((state & (Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK)) != Gdk::ModifierType{}) return nullptr;
  const bool all = (state & Gdk::ModifierType::SHIFT_MASK) != Gdk::ModifierType{};
  switch (BracketOf(value, keycode)) {
    case GDK_KEY_bracketleft:
      return all ? "win.to-back" : "win.backward";
    case GDK_KEY_bracketright:
      return all ? "win.to-front" : "win.forward";
    default:
      return nullptr;
  }
}

std::string ShownKey(const ActionKeys& entry) {
  if (entry.keys.empty() && entry.canvasKey == nullptr) return {};
  guint key = 0;
  Gdk::ModifierType modifiers{};
  if (!Gtk::Accelerator::parse(entry.keys.empty() ? entry.canvasKey : entry.keys[0], key, modifiers)) return {};
  return Gtk::Accelerator::get_label(key, modifiers);
}

// Scripts without Latin letters have the key in parentheses of its own.
std::string WithoutMnemonic(std::string title) {
  const std::size_t own = title.find("(_");
  if (own != std::string::npos && title.find(')', own) == own + 3) title.erase(own, 4);
  title.erase(std::remove(title.begin(), title.end(), '_'), title.end());
  return title;
}

std::string EntryTip(const std::string& action, std::string title) {
  const ActionKeys* const entry = FindEntry(action);
  if (entry == nullptr) return title;
  if (title.empty()) title = WithoutMnemonic(Tr(entry->title));
  const std::string key = ShownKey(*entry);
  return key.empty() ? title : title + " (" + key + ")";
}

}  // namespace host
