// The row of buttons under the menus, for what is done most often. Each stands for an entry of the menus: it has its
// name and key in its tip, and is grey where that would do nothing.
#pragma once

#include <gtkmm/button.h>
#include <gtkmm/scrolledwindow.h>

#include "host/session/SessionSteps.h"

namespace host {

/// Scrolls, in a window that is narrower than it.
class Toolbar : public Gtk::ScrolledWindow {
 public:
  Toolbar();

  /// What there is to undo and redo. The menus' entries are never grey, since a text that is typed may want them.
  void ShowSteps(const SessionSteps& steps);

 private:
  Gtk::Button* undo_ = nullptr;  // of the row, as all
  Gtk::Button* redo_ = nullptr;
};

}  // namespace host
