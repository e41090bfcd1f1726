// The host's side of an inspector panel: the controls that a plug-in added, and their events.
//
// Plug-ins reach it through the panel service table. A panel owns the control wrappers that were added to it. The items
// of its description are listed in docs/abi.md. An event of a kind other than those that AKGUIEvent names is
// kEventIdle, which a panel that asked for it (SetIdling) is sent now and then while it is shown.
//
// What a panel or its controls did not understand of their descriptions is logged, with bundle, class and control, as
// soon as the panel's class is known: when it is attached to it or opened as a dialog of an object.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/panels/HostControl.h"
#include "kit/panels/AKGUIDesc.h"

namespace host {

class HostPanel final {
 public:
  static constexpr unsigned int kEventIdle = 2;

  /// Takes what a formatted description string says. `wrapper` is the kit's side, which owns this one.
  HostPanel(AKGUIDesc* wrapper, const AKString& description);
  HostPanel(const HostPanel&) = delete;
  HostPanel& operator=(const HostPanel&) = delete;
  /// Complaints of a panel that nobody attached or opened are logged now.
  ~HostPanel();

  /// The panel behind a kit wrapper; null when the wrapper is null or has none.
  static HostPanel* Of(const AKGUIDesc* wrapper);
  /// The panel service table, made once.
  static const AKPanelTable* Table();

  /// The class whose panel this is, for what is logged.
  void SetOwner(const AKClass& cls);
  AKGUIDesc& Wrapper() const { return *wrapper_; }
  /// True when the panel may be shown for several selected objects.
  bool AllowsMultipleSelection() const { return multipleSelection_; }
  /// The control of an index below GetControllerCount(), in the order of their making.
  const HostControl& ControlAt(unsigned int index) const;
  HostControl& ControlAt(unsigned int index);

  void SetProperty(unsigned int selector, unsigned int value);
  unsigned int GetProperty(unsigned int selector) const;
  /// A width of 0 means: as wide as the host's panels are.
  void SetPanelSize(int width, int height);
  void GetPanelSize(int* width, int* height) const;
  void SetPanelTitle(const AKString& title) { title_ = title; }
  AKString GetPanelTitle() const { return title_; }
  void AddControl(AKGUICtrl* control);
  AKGUICtrl* GetController(unsigned int controlID) const;
  unsigned int GetControllerCount() const { return static_cast<unsigned int>(controls_.size()); }
  /// Shows the panel until CloseDialog. The object is sent an event to fill the controls, then one for each change.
  /// Returns 0 with what CloseDialog was given in `*result`, which may be null; -1, with `*result` untouched, when
  /// there is nobody to show it to (Host::userInterface), or no procedure or object.
  int OpenModalDialog(AKGUIDesc::ModalProc proc, AKObject* object, int* result);
  void CloseDialog(int result);

 private:
  void Complain(const std::string& part, const AKString& complaint);

  unsigned int id_ = 0;
  unsigned int flags_ = 0;
  std::string owner_;                    // empty while it is not known
  std::vector<std::string> complaints_;  // that wait for the owner
  AKGUIDesc* wrapper_;
  bool multipleSelection_ = false;
  int width_ = 0;
  int height_ = 0;
  AKString title_;
  std::vector<std::unique_ptr<AKGUICtrl>> controls_;
  std::unordered_map<unsigned int, AKGUICtrl*> byID_;  // the first of each ID
};

}  // namespace host
