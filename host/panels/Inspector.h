// A class's inspector panel, applied to selected objects: fill the controls, change one, read what they hold.
//
// The panel belongs to the class and is shared: whoever opens it fills it. It is filled from the first object; where
// the others differ a control counts as mixed. A change goes to every object and is one undo step, also when the first
// object refuses a value or corrects it. Slides are enclosed by the session's BeginStep and EndStep, as drags are.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "host/panels/HostPanel.h"
#include "host/session/DocumentSession.h"
#include "host/text/Problem.h"

namespace host {

class Inspector {
 public:
  /// Fails when there is no panel for all of the objects: they are of several classes, the class has none, or it is
  /// for one object at a time. The session outlives the inspector.
  Result<> Open(DocumentSession* session, const ObjectIDs& ids);

  /// The host's side of the open panel.
  const HostPanel& Panel() const { return *HostPanel::Of(panel_); }
  AKGUIDesc& Wrapper() { return *panel_; }

  /// Asks the objects to fill the controls. Fails with the first status that is not 0.
  Result<> Fill();
  /// True when the objects showed different values in the control when they last filled it.
  bool IsMixed(unsigned int controlID) const { return mixed_.count(controlID) != 0; }

  /// Gives the control a value, as a user would, and tells the objects. `*actionName` receives what they named the
  /// change, empty when they named none. Fails when an object returns a status, or can't write its record; then that
  /// object is as it was before.
  Result<> Change(unsigned int controlID, double value, std::string* actionName);
  /// The same with any kind of value: `set` gives it to the control of the panel, once for each object.
  Result<> Change(unsigned int controlID, const std::function<void(AKGUIDesc& panel, unsigned int controlID)>& set,
                  std::string* actionName);
  /// The same from a text that suits the control (HostControl::Enter), UTF-8. Fails when it does not,
  /// and as Change does.
  Result<> Enter(unsigned int controlID, const std::string& text, std::string* actionName);
  /// Sends an event of any kind to all objects.
  Result<> Send(unsigned int kind, unsigned int controlID, std::string* actionName);

 private:
  using Prepare = std::function<void()>;

  Result<> SendToAll(unsigned int kind, unsigned int controlID, const Prepare& prepare, std::string* actionName);
  int SendTo(ObjectID id, AKGUIEvent* event);
  std::vector<AKString> ShownValues() const;

  DocumentSession* session_ = nullptr;
  ObjectIDs ids_;
  AKGUIDesc* panel_ = nullptr;
  std::set<unsigned int> mixed_;
};

}  // namespace host
