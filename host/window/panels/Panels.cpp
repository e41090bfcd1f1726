#include "host/window/panels/Panels.h"

#include "host/text/Text.h"
#include "host/window/panels/BrushPanel.h"
#include "host/window/panels/HistoryPanel.h"
#include "host/window/panels/InspectorPanel.h"
#include "host/window/panels/LabelPanel.h"
#include "host/window/panels/LayersPanel.h"
#include "host/window/panels/ObjectPanel.h"
#include "host/window/panels/PagePanel.h"
#include "host/window/panels/PenPanel.h"

namespace host {

std::vector<NamedPanel> MakePanels() {
  std::vector<NamedPanel> panels;
  panels.push_back({N_("Object"), std::make_unique<ObjectPanel>()});
  panels.push_back({N_("Inspector"), std::make_unique<InspectorPanel>()});
  panels.push_back({N_("Brush"), std::make_unique<BrushPanel>()});
  panels.push_back({N_("Pen"), std::make_unique<PenPanel>()});
  panels.push_back({N_("Label"), std::make_unique<LabelPanel>()});
  panels.push_back({N_("Layers"), std::make_unique<LayersPanel>(), true});
  panels.push_back({N_("History"), std::make_unique<HistoryPanel>(), true});
  panels.push_back({N_("Page"), std::make_unique<PagePanel>()});
  return panels;
}

}  // namespace host
