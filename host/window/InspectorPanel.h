// The panel of the selected objects' class, built from its description strings.
//
// Controls lie where the description puts them. A value that the objects do not share is shown as mixed. What the user
// changes goes to all selected objects; a slide is one undo step. The panel is built anew when another class is
// selected and filled anew when the objects change by other hands, such as a handle on the canvas.
#pragma once

#include <gtkmm/fixed.h>
#include <gtkmm/label.h>

#include <memory>

#include "host/panels/Inspector.h"
#include "host/window/ControlWidget.h"
#include "host/window/EditorPanel.h"

namespace host {

class InspectorPanel : public EditorPanel {
 public:
  InspectorPanel();

 protected:
  void Refresh() override;

 private:
  void Build();
  void Changed(unsigned int controlID, ControlWidget::SetValue const& set, bool more);
  void FillWidgets();
  void UpdateIdling();

  Inspector inspector_;
  HostPanel const* built_ = nullptr;
  Gtk::Fixed fixed_;
  Gtk::Label none_;
  std::vector<std::unique_ptr<ControlWidget>> widgets_;
  sigc::connection idling_;
};

}  // namespace host
