// A bundle's panel as widgets, each where the description puts its control.
#pragma once

#include <gtkmm/fixed.h>

#include <memory>
#include <vector>

#include "host/panels/HostPanel.h"
#include "host/window/panels/ControlWidget.h"

namespace host {

class PanelWidget : public Gtk::Fixed {
 public:
  /// The panel outlives the widget.
  PanelWidget(const HostPanel& panel, const ControlWidget::Changed& changed);

  const HostPanel& Panel() const { return panel_; }
  /// Shows the controls as they are now; `isMixed` tells where several objects differ.
  void ShowControls(const std::function<bool(unsigned int controlID)>& isMixed);

 private:
  void Place(Gtk::Widget* widget, double x, double middle, int width);

  const HostPanel& panel_;
  std::vector<std::unique_ptr<ControlWidget>> widgets_;
};

}  // namespace host
