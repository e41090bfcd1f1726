// The layers, the foremost on top: which one is active, which are visible and which are locked.
#pragma once

#include <gtkmm/listbox.h>
#include <gtkmm/scrolledwindow.h>

#include "host/window/panels/EditorPanel.h"

namespace host {

class LayersPanel : public EditorPanel {
 public:
  LayersPanel();

  void OnObjectChanged(ObjectID) override {}
  void OnSelectionChanged() override {}
  void OnHistoryChanged() override {}

 protected:
  void Refresh() override;

 private:
  Gtk::Widget* MakeRow(const Layer& layer);
  void AddButton(Gtk::Box* box, const char* icon, const char* tip, const std::function<void()>& pressed);
  void MoveActive(int by);

  Gtk::ListBox list_;
};

}  // namespace host
