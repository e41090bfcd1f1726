#include "host/window/Panels.h"

#include "host/text/Localisation.h"
#include "host/window/BrushPanel.h"
#include "host/window/HistoryPanel.h"
#include "host/window/InspectorPanel.h"
#include "host/window/LayersPanel.h"
#include "host/window/ObjectPanel.h"
#include "host/window/PenPanel.h"

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
