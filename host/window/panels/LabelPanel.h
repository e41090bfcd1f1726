// The labels of the selected objects: what differs among them shows as mixed. Open where there is a label, whether the
// user closed the panel or not.
#pragma once

#include <gtkmm/colorbutton.h>
#include <gtkmm/stringlist.h>

#include "host/window/panels/EditorPanel.h"
#include "host/window/widgets/FormGrid.h"
#include "host/window/widgets/NumberField.h"
#include "host/window/widgets/TextArea.h"

namespace host {

class LabelPanel : public EditorPanel {
 public:
  LabelPanel();

  // SessionObserver
  void OnSelectionChanged() override;

 protected:
  void Refresh() override;

 private:
  using Labels = std::vector<const ObjectLabel*>;

  bool Change(const LabelChange& change, const char* burst);
  void FillFonts();
  void ShowFont(const Labels& labels);
  template <typename Choice>
  void AddChoice(int row, const char* title, const std::vector<Glib::ustring>& names, Gtk::DropDown* choice,
                 std::optional<Choice> LabelChange::*field);
  void ChooseFont();
  Labels SelectedLabels() const;

  FormGrid grid_;
  TextArea text_;
  Gtk::DropDown font_;
  Glib::RefPtr<Gtk::StringList> fonts_;  ///< null until they are seen; the first stands for the system's
  NumberField size_;
  Gtk::DropDown style_;
  Gtk::ColorButton color_;
  Gtk::DropDown across_;
  Gtk::DropDown down_;
  Gtk::DropDown direction_;
  bool otherSelection_ = false;
};

}  // namespace host
