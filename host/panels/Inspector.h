// One class's inspector panel, applied to an object: fill the controls, change one, read what they hold.
#pragma once

#include <string>

#include "host/document/Document.h"
#include "host/panels/HostPanel.h"

namespace host {

class Inspector {
 public:
  /// False, with one line in `*error`, when the object's class has no panel.
  bool Open(DocumentObject* object, std::string* error);

  /// The host's side of the open panel.
  HostPanel const& Panel() const { return *HostPanel::Of(panel_); }
  AKGUIDesc& Wrapper() { return *panel_; }

  /// Asks the object to fill the controls. Returns the object's status.
  int Fill();
  /// Gives the control a value, as a user would, and tells the object. `*actionName` receives what the object named the
  /// change, empty when it changed nothing.
  int Change(unsigned int controlID, double value, std::string* actionName);
  /// Sends any event.
  int Send(AKGUIEvent* event);

 private:
  DocumentObject* object_ = nullptr;
  AKGUIDesc* panel_ = nullptr;
};

}  // namespace host
