// The panel of the selected objects' class, built from its description strings.
//
// Controls lie where the description puts them. A value that the objects do not share is shown as mixed. What the user
// changes goes to all selected objects; a slide is one undo step. The panel is built anew when another class is
// selected and filled anew when the objects change by other hands, such as a handle on the canvas.
#pragma once

#include <gtkmm/label.h>

#include <memory>

#include "host/panels/Inspector.h"
#include "host/window/panels/EditorPanel.h"
#include "host/window/panels/PanelWidget.h"

namespace host {

class InspectorPanel : public EditorPanel {
 public:
  InspectorPanel();

 protected:
  void Refresh() override;

 private:
  Result<> Open();
  void Build();
  void Changed(unsigned int controlID, const ControlWidget::SetValue& set, bool more);
  void ShowControls();
  void Tell(const Result<>& done);
  void UpdateIdling();

  Inspector inspector_;
  std::unique_ptr<PanelWidget> widget_;  ///< of the panel that was shown last
  Gtk::Label none_;
  sigc::connection idling_;
};

}  // namespace host
