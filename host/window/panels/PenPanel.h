// The pen of the selected objects, field by field: what differs among them shows as mixed.
#pragma once

#include "host/window/panels/BrushEditor.h"
#include "host/window/panels/EditorPanel.h"
#include "host/window/widgets/FormGrid.h"

namespace host {

class PenPanel : public EditorPanel {
 public:
  PenPanel();

 protected:
  void Refresh() override;

 private:
  void Changed(PenField field, const std::string& burst);
  /// Before a change: a control that sends bursts has one step for each.
  void BeginStep(const std::string& burst);
  AGPen Entered() const;
  void ChooseDashes();
  void ShowDashes();
  void ShowNumber(PenField field, NumberField* control, double value, const PenFields& differs);
  BrushEditor brush_{false};
  FormGrid grid_;
  NumberField size_;
  Gtk::DropDown sizeMode_;
  Gtk::DropDown cap_;
  Gtk::DropDown join_;
  NumberField ratio_;
  NumberField angle_;
  Gtk::DropDown dashes_;
};

}  // namespace host
