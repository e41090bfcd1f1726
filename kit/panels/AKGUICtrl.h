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
  kAKGUIPropertyType = 1,
  kAKGUIPropertyID = 2,
  kAKGUIPropertyFlags = 3,
  kAKGUIPropertyVisible = 4,
  kAKGUIPropertyEnabled = 5,
  kAKGUIPropertyHasValue = 10,
  kAKGUIPropertyHasRange = 11,
  kAKGUIPropertyHasTitle = 12,
  kAKGUIPropertyHasItems = 13,
  kAKGUIPropertyHasIcon = 14,
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
  ~AKGUICtrl();

  unsigned int CtrlType() const;
  unsigned int CtrlID() const;
  /// True when all bits of `flags` are set.
  bool HasFlag(unsigned int flags) const;
  void SetFlag(unsigned int flags, bool on);

  void SetVisible(bool visible);
  bool IsVisible() const;
  void SetEnable(bool enabled);
  bool IsEnable() const;

  bool HasFeatureValue() const;
  bool HasFeatureRange() const;
  bool HasFeatureTitle() const;
  bool HasFeatureItems() const;
  bool HasFeatureIcon() const;

  void SetBounds(int x0, int y0, int x1, int y1);
  void GetBounds(int* x0, int* y0, int* x1, int* y1) const;
  void SetTitle(const AKString& title);
  AKString GetTitle() const;
  void SetRange(double minimum, double maximum);
  void GetRange(double* minimum, double* maximum) const;
  void SetXPMIcon(const char** icon);
  const char** GetXPMIcon() const;

  void SetMenuItemList(const AKStringArray& items);
  /// Splits the text at "," and ";" first; items that have one of them in them need an array.
  void SetMenuItemList(const AKString& items);
  AKString GetMenuItemAtIndex(unsigned int index) const;
  unsigned int GetMenuItemCount() const;
  void SetMenuIndex(unsigned int index);
  unsigned int GetMenuIndex() const;
  void SetMenuItem(const AKString& item);
  AKString GetMenuItem() const;

  int GetValuePrecision() const;
  AKString GetValueAsString() const;
  bool GetValueAsBool() const;
  int GetValueAsSInt() const;
  unsigned int GetValueAsUInt() const;
  float GetValueAsFloat32() const;
  double GetValueAsFloat64() const;
  double GetValueAsTimeHMS() const;  ///< seconds
  AGColor GetValueAsAGColor() const;

  void SetValuePrecision(int decimals);
  void SetValueAsString(const AKString& value);
  void SetValueAsBool(bool value);
  void SetValueAsSInt(int value);
  void SetValueAsUInt(unsigned int value);
  void SetValueAsFloat32(float value);
  void SetValueAsFloat64(double value);
  void SetValueAsTimeHMS(double seconds);
  void SetValueAsAGColor(AGColor value);

  void Refresh() const;

 private:
  void Construct(AKGUIDesc* panel, const char* format, va_list list);
  unsigned int Property(AKGUIProperty selector) const;
  void SetProperty(AKGUIProperty selector, unsigned int value);
};

static_assert(sizeof(AKGUICtrl) == sizeof(void*));
