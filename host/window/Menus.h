// The menus of the window, and the keys of their actions.
#pragma once

#include <giomm/menu.h>
#include <gtkmm/application.h>

#include <string>
#include <vector>

namespace host {

struct ActionKeys {
  const char* title;   ///< as in the menus, not translated
  const char* action;  ///< with its group: "win.undo"
  std::vector<const char*> keys;
  const char* canvasKey = nullptr;  ///< shown in the menu; the canvas takes it itself, since fields need it for text
};

struct MenuSection {
  const char* title;  ///< of the submenu that the section begins; null to go on in the same one
  std::vector<ActionKeys> entries;
};

/// All menus in order: the sections of a submenu follow each other.
const std::vector<MenuSection>& MenuSections();

struct Menus {
  Glib::RefPtr<Gio::Menu> bar;
  Glib::RefPtr<Gio::Menu> recent;  ///< the submenu of files that were used last
  Glib::RefPtr<Gio::Menu> undo;    ///< the section with undo and redo, whose titles change
};
Menus MakeMenus();
/// What the right button offers on the canvas.
Glib::RefPtr<Gio::Menu> MakeContextMenu();
void SetKeys(Gtk::Application& application);
/// The action of a bracket's key with Ctrl, for where the toolkit does not find it: with Shift it writes another
/// character, and keyboards without brackets have other keys at their place. Null for any other key.
const char* OrderActionOf(guint value, guint keycode, Gdk::ModifierType state);
/// "<Control>z" as "Ctrl+Z", the first of an action's keys or that of the canvas; empty when it has none.
std::string ShownKey(const ActionKeys& entry);
/// A title without the mark of the key that chooses it: "_Open" is "Open", "開く(_O)" is "開く".
std::string WithoutMnemonic(std::string title);
/// What an entry does and its key, for a tip: "Undo Move (Ctrl+Z)". Without a title, the entry's own.
std::string EntryTip(const std::string& action, std::string title = {});

}  // namespace host
