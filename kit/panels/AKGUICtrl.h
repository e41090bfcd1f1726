// A control of an inspector panel. The host builds and owns the real one; this wrapper forwards to it through the
// control service table. Without a host everything is neutral: false, 0, the empty string, black.
//
// A control is described by a printf format whose result is a list of items "-key:value" separated by blanks. Which
// items there are is up to the host; docs/abi.md lists those of the reference host.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <type_traits>

#include "kit/geometry/AGColor.h"
#include "kit/host/AKWrapper.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringArray.h"

/// What the get-property and set-property entries of controls and panels select.
enum AKGUIProperty : std::uint32_t {
  kAKGUIPropertyType = 1,       ///< what CtrlType() gives; of a panel: nothing
  kAKGUIPropertyID = 2,         ///< of the control or panel
  kAKGUIPropertyFlags = 3,      ///< the flags word; may be set
  kAKGUIPropertyVisible = 4,    ///< 0 or 1; may be set
  kAKGUIPropertyEnabled = 5,    ///< 0 or 1; may be set
  kAKGUIPropertyHasValue = 10,  ///< 0 or 1
  kAKGUIPropertyHasRange = 11,  ///< 0 or 1
  kAKGUIPropertyHasTitle = 12,  ///< 0 or 1
  kAKGUIPropertyHasItems = 13,  ///< 0 or 1
  kAKGUIPropertyHasIcon = 14,   ///< 0 or 1
};

class AKGUICtrl : public AKWrapper<AKGUICtrl> {
 public:
  static const AKControlTable* sWrapper;  ///< the control service table, owned by the host

  /// The format and its arguments go to the host unformatted.
  AKGUICtrl(AKGUIDesc* panel, const char* format, ...) __attribute__((format(printf, 3, 4)));
  /// The same with a list of arguments; a template so that nothing but a va_list is taken for one, a literal 0 least.
  template <typename List>
  requires std::is_same_v<void(List), void(va_list)> AKGUICtrl(AKGUIDesc* panel, const char* format, List list) {
    Construct(panel, format, list);
  }
  /// Ends the host's control. Those that a panel has are ended by the panel.
  ~AKGUICtrl();

  /// Which kind of control it is: 1 static text, 2 number, 3 slider, 4 check box, 5 pop-up menu, 6 button, 7 colour, 8
  /// text; others are the host's.
  unsigned int CtrlType() const;
  /// The number of the control within its panel, 0 when its description gave none.
  unsigned int CtrlID() const;
  /// True when all bits of `flags` are set.
  bool HasFlag(unsigned int flags) const;
  /// Sets or clears all bits of `flags`.
  void SetFlag(unsigned int flags, bool on);

  ///@{
  /// Whether the user sees the control, and whether he may use it.
  void SetVisible(bool visible);
  bool IsVisible() const;
  void SetEnable(bool enabled);
  bool IsEnable() const;
  ///@}

  ///@{
  /// What this kind of control has: a value, a range of numbers, a title, items of a menu, an icon. Where one is
  /// lacking, setting it does nothing and asking for it gives the neutral result.
  bool HasFeatureValue() const;
  bool HasFeatureRange() const;
  bool HasFeatureTitle() const;
  bool HasFeatureItems() const;
  bool HasFeatureIcon() const;
  ///@}

  ///@{
  /// The place in the panel, in panel units with y down: left, top, right, bottom. Outputs may be null.
  void SetBounds(int x0, int y0, int x1, int y1);
  void GetBounds(int* x0, int* y0, int* x1, int* y1) const;
  ///@}
  ///@{
  /// What stands on the control, or in it for a static text. Copied.
  void SetTitle(const AKString& title);
  AKString GetTitle() const;
  ///@}
  ///@{
  /// The least and the greatest number that the user can choose; values set by program are not held to it. Outputs may
  /// be null.
  void SetRange(double minimum, double maximum);
  void GetRange(double* minimum, double* maximum) const;
  ///@}
  ///@{
  /// A picture as the lines of an XPM file. It is kept, not copied: it has to outlive the control. Null when none was
  /// set.
  void SetXPMIcon(const char** icon);
  const char** GetXPMIcon() const;
  ///@}

  /// Replaces the items of a menu by copies of these.
  void SetMenuItemList(const AKStringArray& items);
  /// Splits the text at "," and ";" first; items that have one of them in them need an array.
  void SetMenuItemList(const AKString& items);
  ///@{
  /// The items, counted from 0, and the chosen one, by its index and by its text. An index behind the last has the
  /// empty item; choosing a text that the menu has not got changes nothing.
  AKString GetMenuItemAtIndex(unsigned int index) const;
  unsigned int GetMenuItemCount() const;
  void SetMenuIndex(unsigned int index);
  unsigned int GetMenuIndex() const;
  void SetMenuItem(const AKString& item);
  AKString GetMenuItem() const;
  ///@}

  ///@{
  /// The value as the kind of number, text or colour that is asked for, converted where it was set as another: 0, empty
  /// or black where that cannot be. The precision is the number of decimals that are shown.
  int GetValuePrecision() const;
  AKString GetValueAsString() const;
  bool GetValueAsBool() const;
  int GetValueAsSInt() const;
  unsigned int GetValueAsUInt() const;
  float GetValueAsFloat32() const;
  double GetValueAsFloat64() const;
  double GetValueAsTimeHMS() const;  ///< seconds
  AGColor GetValueAsAGColor() const;
  ///@}

  ///@{
  /// Sets the value, bit for bit, whatever the range. Times are seconds.
  void SetValuePrecision(int decimals);
  void SetValueAsString(const AKString& value);
  void SetValueAsBool(bool value);
  void SetValueAsSInt(int value);
  void SetValueAsUInt(unsigned int value);
  void SetValueAsFloat32(float value);
  void SetValueAsFloat64(double value);
  void SetValueAsTimeHMS(double seconds);
  void SetValueAsAGColor(AGColor value);
  ///@}

  /// Has the control drawn anew.
  void Refresh() const;

 private:
  void Construct(AKGUIDesc* panel, const char* format, va_list list);
  unsigned int Property(AKGUIProperty selector) const;
  void SetProperty(AKGUIProperty selector, unsigned int value);
};

static_assert(sizeof(AKGUICtrl) == sizeof(void*));
