// The panels beside the canvas.
#pragma once

#include <memory>
#include <vector>

#include "host/window/panels/EditorPanel.h"

namespace host {

struct NamedPanel {
  const char* name;  ///< not translated
  std::unique_ptr<EditorPanel> panel;
  bool stays = false;  ///< below the others, which are scrolled
};

/// All panels from top to bottom.
std::vector<NamedPanel> MakePanels();

}  // namespace host
