// The pen of the selected objects; that of the first one is shown.
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
  void Changed(const std::string& burst);

  AGPen pen_;
  BrushEditor brush_{false};
  FormGrid grid_;
  NumberField size_;
  Gtk::DropDown sizeMode_;
  Gtk::DropDown cap_;
  Gtk::DropDown join_;
  NumberField ratio_;
  NumberField angle_;
};

}  // namespace host
