// The host's side of an inspector panel: the controls that a plug-in added, and their events.
//
// Plug-ins reach it through the panel service table, whose entries are virtual functions behind an adjustment, as those
// of controls. A panel owns the control wrappers that were added to it.
//
// A description is a list of items, all optional: -id:N, -title:"TEXT", -flags:N, and -multisel:1 when the panel may be
// shown for several selected objects at once. An event of a kind other than those that AKGUIEvent names is kEventIdle,
// which a panel that asked for it (SetIdling) is sent now and then while it is shown.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "host/panels/HostControl.h"
#include "host/panels/PanelItem.h"
#include "kit/panels/AKGUIDesc.h"

namespace host {

class PanelOperations {
 public:
  virtual ~PanelOperations() = default;

  virtual void SetProperty(unsigned int selector, unsigned int value) = 0;
  virtual unsigned int GetProperty(unsigned int selector) const = 0;
  virtual void SetPanelSize(int width, int height) = 0;
  virtual void GetPanelSize(int* width, int* height) const = 0;
  virtual void SetPanelTitle(const AKString& title) = 0;
  virtual AKString GetPanelTitle() const = 0;
  virtual void AddControl(AKGUICtrl* control) = 0;
  virtual AKGUICtrl* GetController(unsigned int id) const = 0;
  virtual unsigned int GetControllerCount() const = 0;
  virtual int OpenModalDialog(AKGUIDesc::ModalProc proc, AKObject* object, int* result) = 0;
  virtual void CloseDialog(int result) = 0;
};

class HostPanel final : public PanelItem, public PanelOperations {
 public:
  static constexpr unsigned int kEventIdle = 2;

  /// Takes what a formatted description string says; what it does not understand is logged in one line.
  /// `wrapper` is the kit's side, which owns this one.
  HostPanel(AKGUIDesc* wrapper, const AKString& description);

  /// The panel behind a kit wrapper; null when the wrapper is null or has none.
  static HostPanel* Of(const AKGUIDesc* wrapper);
  /// The panel service table, made once.
  static void* Table();

  AKGUIDesc& Wrapper() const { return *wrapper_; }
  /// True when the panel may be shown for several selected objects.
  bool AllowsMultipleSelection() const { return multipleSelection_; }
  /// The control of an index below GetControllerCount(), in the order of their making.
  const HostControl& ControlAt(unsigned int index) const;
  HostControl& ControlAt(unsigned int index);
  /// The control of an ID, or null.
  HostControl* FindControl(unsigned int controlID) const;

  void SetProperty(unsigned int selector, unsigned int value) override;
  unsigned int GetProperty(unsigned int selector) const override;
  /// A width of 0 means: as wide as the host's panels are.
  void SetPanelSize(int width, int height) override;
  void GetPanelSize(int* width, int* height) const override;
  void SetPanelTitle(const AKString& title) override { title_ = title; }
  AKString GetPanelTitle() const override { return title_; }
  void AddControl(AKGUICtrl* control) override;
  AKGUICtrl* GetController(unsigned int controlID) const override;
  unsigned int GetControllerCount() const override { return static_cast<unsigned int>(controls_.size()); }
  /// Shows the panel until CloseDialog. The object is sent an event to fill the controls, then one for each change.
  /// Returns 0 with what CloseDialog was given in `*result`, which may be null; -1, with `*result` untouched, when
  /// there is nobody to show it to (Host::userInterface), or no procedure or object.
  int OpenModalDialog(AKGUIDesc::ModalProc proc, AKObject* object, int* result) override;
  void CloseDialog(int result) override;

 private:
  bool TakeItem(const AKString& item);

  AKGUIDesc* wrapper_;
  bool multipleSelection_ = false;
  int width_ = 0;
  int height_ = 0;
  AKString title_;
  std::vector<std::unique_ptr<AKGUICtrl>> controls_;
  std::unordered_map<unsigned int, AKGUICtrl*> byID_;  // the first of each ID
};

}  // namespace host
