// The brush of the selected objects, field by field: what differs among them shows as mixed.
#pragma once

#include "host/window/panels/BrushEditor.h"
#include "host/window/panels/EditorPanel.h"

namespace host {

class BrushPanel : public EditorPanel {
 public:
  BrushPanel();

 protected:
  void Refresh() override;

 private:
  BrushEditor editor_{true};
};

}  // namespace host
