// The brush of the selected objects; that of the first one is shown.
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
