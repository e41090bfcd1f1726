// The menus of the window, and the keys of their actions.
#pragma once

#include <giomm/menu.h>
#include <gtkmm/application.h>

#include <string>
#include <vector>

namespace host {

struct ActionKeys {
  char const* title;   ///< as in the menus, not translated
  char const* action;  ///< with its group: "win.undo"
  std::vector<char const*> keys;
  char const* canvasKey = nullptr;  ///< shown in the menu; the canvas takes it itself, since fields need it for text
};

struct MenuSection {
  char const* title;  ///< of the submenu that the section begins; null to go on in the same one
  std::vector<ActionKeys> entries;
};

/// All menus in order: the sections of a submenu follow each other.
std::vector<MenuSection> const& MenuSections();

struct Menus {
  Glib::RefPtr<Gio::Menu> bar;
  Glib::RefPtr<Gio::Menu> recent;  ///< the submenu of files that were used last
  Glib::RefPtr<Gio::Menu> undo;    ///< the section with undo and redo, whose titles change
};
Menus MakeMenus();
void SetKeys(Gtk::Application& application);
/// "<Control>z" as "Ctrl+Z", the first of an action's keys or that of the canvas; empty when it has none.
std::string ShownKey(ActionKeys const& entry);

}  // namespace host
