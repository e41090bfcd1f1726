#include "host/listings/PanelListing.h"

#include <cstdio>

#include "host/text/DisplayText.h"
#include "host/text/Printable.h"

namespace host {
namespace {

std::string ControlLine(const HostControl& control) {
  int x0 = 0;
  int y0 = 0;
  int x1 = 0;
  int y1 = 0;
  control.GetBounds(&x0, &y0, &x1, &y1);
  char text[160];
  std::snprintf(text, sizeof(text), "  %u  %-10s at (%d, %d), %d by %d", control.ID(), InfoOf(control.Type()).name, x0,
                y0, x1 - x0, y1 - y0);
  std::string line = text;
  if (control.GetProperty(kAKGUIPropertyHasRange) != 0) {
    double minimum = 0;
    double maximum = 0;
    control.GetRange(&minimum, &maximum);
    std::snprintf(text, sizeof(text), ", %g to %g", minimum, maximum);
    line += text;
  }
  return line + ": " + Printable(DisplayText(control.DisplayedValue())) + "\n";
}

}  // namespace

std::string PanelListing(const HostPanel& panel) {
  int width = 0;
  int height = 0;
  panel.GetPanelSize(&width, &height);
  std::string text = "panel " + std::to_string(width) + " by " + std::to_string(height);
  if (panel.AllowsMultipleSelection()) text += ", for several objects at once";
  text += "\n";
  for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) text += ControlLine(panel.ControlAt(i));
  return text;
}

}  // namespace host
