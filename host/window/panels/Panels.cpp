#include "host/window/panels/Panels.h"

#include "host/text/Localisation.h"
#include "host/window/panels/BrushPanel.h"
#include "host/window/panels/HistoryPanel.h"
#include "host/window/panels/InspectorPanel.h"
#include "host/window/panels/LayersPanel.h"
#include "host/window/panels/ObjectPanel.h"
#include "host/window/panels/PenPanel.h"

namespace host {

std::vector<NamedPanel> MakePanels() {
  std::vector<NamedPanel> panels;
  panels.push_back({Tr("Object"), std::make_unique<ObjectPanel>()});
  panels.push_back({Tr("Inspector"), std::make_unique<InspectorPanel>()});
  panels.push_back({Tr("Brush"), std::make_unique<BrushPanel>()});
  panels.push_back({Tr("Pen"), std::make_unique<PenPanel>()});
  panels.push_back({Tr("Layers"), std::make_unique<LayersPanel>()});
  panels.push_back({Tr("History"), std::make_unique<HistoryPanel>()});
  return panels;
}

}  // namespace host
