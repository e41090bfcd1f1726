// An inspector panel. The host builds and owns the real one; this wrapper forwards to it through the panel service
// table. A class hands its panel to the host with AKClass::AddInspectorGUIDesc; from then on the host owns it, and the
// panel owns its controls.
//
// Every per-control operation takes the control's ID first, finds the control and does the same there. For an ID that
// the panel does not have, setters do nothing and getters give false, 0, the empty string or black.
#pragma once

#include "kit/panels/AKGUICtrl.h"
#include "kit/panels/AKGUIEvent.h"

class AKGUIDesc : public AKWrapper<AKGUIDesc> {
 public:
  static const AKPanelTable* sWrapper;  ///< the panel service table, owned by the host

  ///@{
  /// Bits of the panel's flags: with the first it gets idle events, the second is the host's to use.
  static constexpr unsigned int kFlagIdling = 0x100;
  static constexpr unsigned int kFlagYielding = 0x200;
  ///@}

  /// A method of an object that takes a dialog's events.
  using ModalProc = AKModalProc;

  /// A panel without a description.
  AKGUIDesc();
  /// The format and its arguments, a list of items such as "-multisel:1", go to the host unformatted.
  explicit AKGUIDesc(const char* format, ...) __attribute__((format(printf, 2, 3)));
  /// Ends the host's panel with its controls. Not for a panel that was handed to a class.
  ~AKGUIDesc();

  /// The panel's number, 0 when its description gave none.
  unsigned int DescID() const;
  /// True when all bits of `flags` are set.
  bool IsDescFlag(unsigned int flags) const;
  ///@{
  /// Sets, clears and asks for the two flags.
  void SetIdling(bool on);
  void SetYielding(bool on);
  bool IsIdling() const;
  bool IsYielding() const;
  ///@}

  ///@{
  /// In panel units; a width of 0 is the host's own. Outputs may be null.
  void SetPanelSize(int width, int height);
  void GetPanelSize(int* width, int* height) const;
  ///@}
  ///@{
  /// The title of a dialog, or above the panel. Copied.
  void SetPanelTitle(const AKString& title);
  AKString GetPanelTitle() const;
  ///@}

  /// Makes a control from a description (see AKGUICtrl) and adds it; the panel owns it.
  AKGUICtrl* NewController(const char* format, ...) __attribute__((format(printf, 2, 3)));
  /// The control of that ID, or null.
  AKGUICtrl* GetController(unsigned int id) const;
  /// How many controls were added.
  unsigned int GetControllerCount() const;

  /// Runs the panel as a modal dialog whose events go to `proc` of `object`; returns the host's result.
  int OpenModalDialog(ModalProc proc, AKObject* object, int* result);
  /// Ends the dialog that is open; `result` goes to where OpenModalDialog was told. Does nothing when none is open.
  void CloseDialog(int result);

  ///@{
  /// As the functions of AKGUICtrl, on the control of the ID.
  unsigned int CtrlType(unsigned int id) const;
  void SetFlag(unsigned int id, unsigned int flags, bool on);
  bool HasFlag(unsigned int id, unsigned int flags) const;
  ///@}
  ///@{
  /// As the functions of AKGUICtrl, on the control of the ID.
  void SetBounds(unsigned int id, int x0, int y0, int x1, int y1);
  void GetBounds(unsigned int id, int* x0, int* y0, int* x1, int* y1) const;
  void SetVisible(unsigned int id, bool visible);
  bool IsVisible(unsigned int id) const;
  void SetEnable(unsigned int id, bool enabled);
  bool IsEnable(unsigned int id) const;
  bool HasFeatureTitle(unsigned int id) const;
  void SetTitle(unsigned int id, const AKString& title);
  AKString GetTitle(unsigned int id) const;
  ///@}
  ///@{
  /// As the functions of AKGUICtrl, on the control of the ID. A list given as a text is split at "," and ";".
  bool HasFeatureItems(unsigned int id) const;
  void SetMenuItemList(unsigned int id, const AKStringArray& items);
  void SetMenuItemList(unsigned int id, const AKString& items);
  AKString GetMenuItemAtIndex(unsigned int id, unsigned int index) const;
  unsigned int GetMenuItemCount(unsigned int id) const;
  void SetMenuIndex(unsigned int id, unsigned int index);
  unsigned int GetMenuIndex(unsigned int id) const;
  void SetMenuItem(unsigned int id, const AKString& item);
  AKString GetMenuItem(unsigned int id) const;
  ///@}
  ///@{
  /// As the functions of AKGUICtrl, on the control of the ID.
  bool HasFeatureIcon(unsigned int id) const;
  void SetXPMIcon(unsigned int id, const char** icon);
  const char** GetXPMIcon(unsigned int id) const;
  bool HasFeatureRange(unsigned int id) const;
  void SetRange(unsigned int id, double minimum, double maximum);
  void GetRange(unsigned int id, double* minimum, double* maximum) const;
  bool HasFeatureValue(unsigned int id) const;
  ///@}

  ///@{
  /// The value of the control as the kind that is asked for; times are seconds.
  int GetValuePrecision(unsigned int id) const;
  AKString GetValueAsString(unsigned int id) const;
  bool GetValueAsBool(unsigned int id) const;
  int GetValueAsSInt(unsigned int id) const;
  unsigned int GetValueAsUInt(unsigned int id) const;
  float GetValueAsFloat32(unsigned int id) const;
  double GetValueAsFloat64(unsigned int id) const;
  double GetValueAsTimeHMS(unsigned int id) const;
  AGColor GetValueAsAGColor(unsigned int id) const;
  ///@}

  ///@{
  /// Sets the value of the control; times are seconds.
  void SetValuePrecision(unsigned int id, int decimals);
  void SetValueAsString(unsigned int id, const AKString& value);
  void SetValueAsBool(unsigned int id, bool value);
  void SetValueAsSInt(unsigned int id, int value);
  void SetValueAsUInt(unsigned int id, unsigned int value);
  void SetValueAsFloat32(unsigned int id, float value);
  void SetValueAsFloat64(unsigned int id, double value);
  void SetValueAsTimeHMS(unsigned int id, double seconds);
  void SetValueAsAGColor(unsigned int id, AGColor value);
  ///@}

  /// Has the control drawn anew.
  void Refresh(unsigned int id) const;

 private:
  unsigned int Flags() const;
  void SetDescFlag(unsigned int flags, bool on);
};

static_assert(sizeof(AKGUIDesc) == sizeof(void*));
