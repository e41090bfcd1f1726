// The steps that were made, and those that can be made again; a click goes there.
#pragma once

#include <gtkmm/listbox.h>
#include <gtkmm/scrolledwindow.h>

#include "host/window/panels/EditorPanel.h"

namespace host {

class HistoryPanel : public EditorPanel {
 public:
  HistoryPanel();

  void OnObjectChanged(ObjectID) override {}
  void OnSelectionChanged() override {}

 protected:
  void Refresh() override;

 private:
  void ScrollToRow();

  Gtk::ListBox list_;
  Gtk::ScrolledWindow scrolled_;
  std::size_t rows_ = 0;
};

}  // namespace host
