// The layers, the foremost on top: which one is active, which are visible and which are locked. A double click or Enter
// edits a name.
#pragma once

#include <gtkmm/checkbutton.h>
#include <gtkmm/listbox.h>
#include <gtkmm/togglebutton.h>

#include <vector>

#include "host/window/panels/EditorPanel.h"
#include "host/window/widgets/NameField.h"

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
  /// The widgets of a layer's row belong to the list.
  struct Row {
    LayerID id;
    Gtk::Widget* content;
    Gtk::CheckButton* visible;
    Gtk::ToggleButton* locked;
    NameField* name;
  };

  void AddDoubleClick();
  Row MakeRow(LayerID id);
  void Rename(LayerID id, NameField* field, const std::string& name);
  bool ShowsTheLayers() const;
  /// Makes the rows anew; true when one of the old had the focus.
  bool Build();
  void AddButton(Gtk::Box* box, const char* icon, const char* tip, const std::function<void()>& pressed);
  void MoveActive(int by);

  Gtk::ListBox list_;
  std::vector<Row> rows_;               ///< from the top
  const NameField* clicked_ = nullptr;  ///< the last press was on it, and was no second one
  guint32 clickTime_ = 0;               ///< of that, in milliseconds
};

}  // namespace host
