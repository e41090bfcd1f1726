// The page of the document: its size, by numbers or by the name of a paper, its background, the unit
// of lengths and the step of the grid.
#pragma once

#include <gtkmm/button.h>
#include <gtkmm/colorbutton.h>
#include <gtkmm/dropdown.h>

#include "host/window/panels/EditorPanel.h"
#include "host/window/widgets/FormGrid.h"
#include "host/window/widgets/NumberField.h"

namespace host {

class PagePanel : public EditorPanel {
 public:
  PagePanel();

  void OnPageChanged() override { RefreshSoon(); }

 protected:
  void Refresh() override;

 private:
  void SetSize(const AGSize& size, const char* burst);
  void ChoosePaper();
  void ChooseOrientation();
  void ChooseUnit();
  void SetGridStep(double step);

  FormGrid grid_;
  Gtk::DropDown paper_;
  Gtk::DropDown orientation_;
  NumberField width_;
  NumberField height_;
  Gtk::ColorButton background_;
  Gtk::DropDown unit_;
  NumberField gridStep_;
  Gtk::Button fit_;
};

}  // namespace host
