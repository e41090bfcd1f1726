// The layers, the foremost on top: which one is active, which are visible and which are locked. A double click or Enter
// edits a name. Of very many layers a stretch is listed, the one with the active layer to begin with; buttons above and
// below it go on.
#pragma once

#include <gtkmm/button.h>
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
  /// The layer of a row, counted from the top of those that are listed.
  const Layer& LayerAt(std::size_t row) const;
  std::size_t RowCount() const;
  /// Keeps the listed stretch within the layers, and the active layer within it when it is another.
  void PlaceStretch();
  void AddSlideButton(Gtk::Button& button, const char* text, bool isDown);
  void Slide(bool isDown);
  void FocusWhenPlaced(LayerID id);
  bool ShowsTheLayers() const;
  /// Makes the rows anew; true when one of the old had the focus.
  bool Build();
  void AddButton(Gtk::Box* box, const char* icon, const char* tip, const std::function<void()>& pressed);
  void MoveActive(int by);

  Gtk::ListBox list_;
  std::vector<Row> rows_;  ///< from the top
  Gtk::Button above_, below_;
  std::size_t first_ = 0;               ///< the layer of the first row, counted from the foremost
  LayerID active_ = kNoLayerID;         ///< at the last refresh
  const NameField* clicked_ = nullptr;  ///< the last press was on it, and was no second one
  guint32 clickTime_ = 0;               ///< of that, in milliseconds
};

}  // namespace host
