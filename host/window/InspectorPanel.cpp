#include "host/window/InspectorPanel.h"

#include <glibmm/main.h>

#include <algorithm>

#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"

namespace host {
namespace {

// A panel unit is a pixel; toolkit controls need more room than the panels are described for.
constexpr double kStretchX = 1.02;
constexpr double kStretchY = 1.35;
constexpr unsigned int kIdlePeriod = 100;  // milliseconds

}  // namespace

InspectorPanel::InspectorPanel() {
  none_.set_xalign(0);
  none_.set_wrap(true);
  none_.add_css_class("dim-label");
  append(none_);
  append(fixed_);
}

void InspectorPanel::Refresh() {
  std::string error = Tr("Nothing is selected");
  const bool open = Session() != nullptr && !Session()->Selected().IsEmpty() &&
                    inspector_.Open(Session(), Session()->Selected().IDs(), &error);
  fixed_.set_visible(open);
  none_.set_visible(!open);
  none_.set_text(error);
  if (!open) {
    idling_.disconnect();
    return;
  }
  inspector_.Fill();
  if (built_ != &inspector_.Panel() || widgets_.size() != inspector_.Panel().GetControllerCount()) Build();
  FillWidgets();
  UpdateIdling();
}

void InspectorPanel::Build() {
  for (auto const& widget : widgets_) fixed_.remove(widget->Widget());
  widgets_.clear();
  HostPanel const& panel = inspector_.Panel();
  built_ = &panel;
  std::string label;  // a control is named by the text in front of it
  for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) {
    HostControl const& control = panel.ControlAt(i);
    auto widget = ControlWidget::Make(
        control, [this](unsigned int id, ControlWidget::SetValue const& set, bool more) { Changed(id, set, more); });
    if (control.Type() == ControlType::kStaticText) label = DisplayText(control.GetTitle());
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget->Widget().gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   label.c_str(), -1);
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;
    control.GetBounds(&x0, &y0, &x1, &y1);
    widget->Widget().set_size_request(static_cast<int>((x1 - x0) * kStretchX), static_cast<int>((y1 - y0) * kStretchY));
    fixed_.put(widget->Widget(), x0 * kStretchX, y0 * kStretchY);
    widgets_.push_back(std::move(widget));
  }
}

void InspectorPanel::FillWidgets() {
  HostPanel const& panel = inspector_.Panel();
  for (unsigned int i = 0; i < widgets_.size(); ++i) {
    HostControl const& control = panel.ControlAt(i);
    widgets_[i]->Show(control, inspector_.IsMixed(control.id));
  }
}

void InspectorPanel::Changed(unsigned int controlID, ControlWidget::SetValue const& set, bool more) {
  if (IsRefreshing() || Session() == nullptr || Session()->Selected().IsEmpty()) return;
  if (more) {
    SlideStep::Continue(Session(), "control " + std::to_string(controlID));
  } else {
    SlideStep::End();
  }
  std::string actionName;
  inspector_.Change(controlID, set, &actionName);
  FillWidgets();
}

// A panel may ask to be told now and then that nothing happens.
void InspectorPanel::UpdateIdling() {
  const bool wanted = inspector_.Wrapper().IsIdling();
  if (wanted == idling_.connected()) return;
  idling_.disconnect();
  if (!wanted) return;
  idling_ = Glib::signal_timeout().connect(
      [this] {
        std::string actionName;
        inspector_.Send(HostPanel::kEventIdle, 0, &actionName);
        FillWidgets();
        return true;
      },
      kIdlePeriod);
}

}  // namespace host
