#include "host/window/panels/PanelWidget.h"

#include <algorithm>

#include "host/text/DisplayText.h"

namespace host {
namespace {

// A panel unit is a pixel; the toolkit's controls are higher than panels are described for.
constexpr double kStretchX = 1.02;
constexpr double kStretchY = 1.35;

// Panels are described for texts that stand at the top of their boxes: where the middle of the first line is.
constexpr double kTextMiddle = 6;

}  // namespace

// As high as the toolkit wants it, about the middle of the box that is described.
void PanelWidget::Place(Gtk::Widget* widget, double x, double middle, int width) {
  int least = 0;
  int height = 0;
  int baseline = 0;
  widget->measure(Gtk::Orientation::VERTICAL, -1, least, height, baseline, baseline);
  widget->set_size_request(width, -1);
  put(*widget, x, std::max(middle - height / 2.0, 0.0));
}

PanelWidget::PanelWidget(const HostPanel& panel, const ControlWidget::Changed& changed) : panel_(panel) {
  std::string label;  // a control is named by the text in front of it
  for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) {
    const HostControl& control = panel.ControlAt(i);
    auto widget = ControlWidget::Make(control, changed);
    if (control.Type() == ControlType::kStaticText) label = DisplayText(control.GetTitle());
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget->Widget().gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   label.c_str(), -1);
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;
    control.GetBounds(&x0, &y0, &x1, &y1);
    const double middle = control.Type() == ControlType::kStaticText ? y0 + kTextMiddle : (y0 + y1) / 2.0;
    Place(&widget->Widget(), x0 * kStretchX, middle * kStretchY, static_cast<int>((x1 - x0) * kStretchX));
    widgets_.push_back(std::move(widget));
  }
}

void PanelWidget::ShowControls(const std::function<bool(unsigned int controlID)>& isMixed) {
  for (unsigned int i = 0; i < widgets_.size(); ++i) {
    const HostControl& control = panel_.ControlAt(i);
    widgets_[i]->Show(control, isMixed(control.ID()));
  }
}

}  // namespace host
