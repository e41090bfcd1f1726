// The host's side of a panel's control: what a plug-in described, and the value that it holds now.
//
// docs/abi.md lists the items of its description. Plug-ins reach it through the control service table.
#pragma once

#include <optional>
#include <string>

#include "host/panels/ControlType.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGPoint.h"
#include "kit/panels/AKGUICtrl.h"
#include "kit/text/AKStringArray.h"

namespace host {

class HostControl final {
 public:
  /// Takes what a formatted description string says, in any order, the last of repeated items.
  explicit HostControl(const AKString& description);

  /// The control behind a kit wrapper; null when the wrapper is null or has none.
  static HostControl* Of(const AKGUICtrl* wrapper);
  /// The control service table, made once.
  static const AKControlTable* Table();

  /// What it did not understand of its description, for the panel to report; empty when it understood all.
  const AKString& Complaint() const { return complaint_; }
  unsigned int ID() const { return id_; }
  ControlType Type() const { return type_; }
  bool IsVisible() const { return visible_; }
  bool IsEnabled() const { return enabled_; }
  const AKString& Tip() const { return tip_; }
  /// What a step of a numeric field adds.
  double Step() const;
  /// True when the number is to be read and shown as hours, minutes and seconds.
  bool ShowsTime() const { return showsTime_; }
  /// A time as a user reads and writes it; reading takes a bare number of seconds too.
  static std::string TimeText(double seconds, int precision);
  static bool ReadTime(const AKString& text, double* seconds);
  /// The value as a user reads it: a number field to its precision, a pop-up menu as its item.
  AKString DisplayedValue() const;
  /// Takes a value as a user enters it, and keeps it within the range if there is one. False, and nothing changed, when
  /// the text does not suit: no number, no item of the menu, no colour. A check box takes on and off (also yes and no,
  /// true and false, 1 and 0), a menu an item or its index, a colour "(r;g;b;a)" or hexadecimal digits, a button the
  /// empty text.
  bool Enter(const AKString& text);

  void SetProperty(unsigned int selector, unsigned int value);
  unsigned int GetProperty(unsigned int selector) const;
  void SetBounds(int x0, int y0, int x1, int y1);
  void GetBounds(int* x0, int* y0, int* x1, int* y1) const;
  void SetTitle(const AKString& title) { title_ = title; }
  AKString GetTitle() const { return title_; }
  void SetRange(double minimum, double maximum);
  void GetRange(double* minimum, double* maximum) const;
  void SetXPMIcon(const char** icon) { icon_ = icon; }
  const char** GetXPMIcon() const { return icon_; }
  void SetMenuItemList(const AKStringArray& items);
  AKString GetMenuItemAtIndex(unsigned int index) const;
  unsigned int GetMenuItemCount() const { return items_.Count(); }
  /// The index is the control's number; one behind the last item shows none.
  void SetMenuIndex(unsigned int index) { SetValueAsFloat64(index); }
  unsigned int GetMenuIndex() const { return GetValueAsUInt(); }
  void SetMenuItem(const AKString& item);
  AKString GetMenuItem() const { return GetMenuItemAtIndex(GetMenuIndex()); }
  int GetValuePrecision() const { return precision_; }
  AKString GetValueAsString() const;
  bool GetValueAsBool() const { return number_ != 0; }
  int GetValueAsSInt() const;
  unsigned int GetValueAsUInt() const;
  float GetValueAsFloat32() const { return static_cast<float>(number_); }
  double GetValueAsFloat64() const { return number_; }
  double GetValueAsTimeHMS() const { return number_; }
  AGColor GetValueAsAGColor() const { return color_; }
  void SetValuePrecision(int decimals) { precision_ = decimals; }
  void SetValueAsString(const AKString& value);
  void SetValueAsBool(bool value) { SetValueAsFloat64(value ? 1 : 0); }
  void SetValueAsSInt(int value) { SetValueAsFloat64(value); }
  void SetValueAsUInt(unsigned int value) { SetValueAsFloat64(value); }
  void SetValueAsFloat32(float value) { SetValueAsFloat64(static_cast<double>(value)); }
  void SetValueAsFloat64(double value);
  /// From then on the number is shown as a time.
  void SetValueAsTimeHMS(double seconds);
  void SetValueAsAGColor(AGColor value) { color_ = value; }
  void Refresh() const {}

 private:
  bool TakeType(const AKString& name);
  bool TakeStep(const AKString& text);
  bool TakePair(const AKString& text, void (HostControl::*take)(const AGPoint&));
  void MoveTo(const AGPoint& position);
  void Resize(const AGPoint& size);
  void SetRangeTo(const AGPoint& range) { SetRange(range.x, range.y); }
  bool EnterNumber(const AKString& text);
  bool EnterMenuItem(const AKString& text);
  bool EnterColor(const AKString& text);
  /// The index of an item of the menu.
  std::optional<unsigned int> IndexOf(const AKString& item) const;

  unsigned int id_ = 0;
  unsigned int flags_ = 0;
  AKString complaint_;
  ControlType type_ = ControlType::kUnknown;
  bool visible_ = true;
  bool enabled_ = true;
  int bounds_[4] = {0, 0, 0, 0};  // x0, y0, x1, y1 in panel units
  AKString title_;
  AKString tip_;
  double minimum_ = 0;
  double maximum_ = 1;
  bool hasRange_ = false;
  const char** icon_ = nullptr;
  AKStringArray items_;
  int precision_ = 2;
  double step_ = 0;  // 0: by the precision
  double number_ = 0;
  bool showsTime_ = false;
  AKString text_;
  AGColor color_ = kAGColorBlack;
  std::optional<AKString> firstValue_;  // entered when the whole description is known
};

}  // namespace host
