// The host's side of a panel's control: what a plug-in described, and the value that it holds now.
//
// A description is a list of items, all optional but the type:
//
//   -type:T         a name of ControlType.cpp
//   -id:N           the number by which the plug-in addresses the control, 0 without one
//   -pos:(X;Y)      place and size in panel units: pixels of an unscaled panel, y down
//   -dim:(W;H)
//   -title:"TEXT"   label of a static text, check box or button
//   -prec:N         decimals of a numeric field, 2 without it
//   -range:(A;B)    lowest and highest value; a slider has 0 to 1 without it
//   -step:S         what a step of a numeric field adds; without it 1 of the last decimal shown
//   -items:"A;B"    items of a pop-up menu
//   -value:"TEXT"   the value to begin with, as a user would enter it
//   -tip:"TEXT"     what the host shows of the control when asked for help
//   -flags:N        the flags word
//   -visible:0      hidden, or with 1 not
//   -enable:0       disabled, or with 1 not
//
// Plug-ins reach it through the control service table. The table's entries are virtual functions of ControlOperations,
// which is not the first base of HostControl, so a call goes through an adjusted object and a virtual table.
#pragma once

#include <optional>

#include "host/panels/ControlType.h"
#include "host/panels/PanelItem.h"
#include "host/tables/TableBuilder.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGPoint.h"
#include "kit/panels/AKGUICtrl.h"
#include "kit/text/AKStringArray.h"

namespace host {

class ControlOperations {
 public:
  virtual ~ControlOperations() = default;

  virtual void SetProperty(unsigned int selector, unsigned int value) = 0;
  virtual unsigned int GetProperty(unsigned int selector) const = 0;
  virtual void SetBounds(int x0, int y0, int x1, int y1) = 0;
  virtual void GetBounds(int* x0, int* y0, int* x1, int* y1) const = 0;
  virtual void SetTitle(const AKString& title) = 0;
  virtual AKString GetTitle() const = 0;
  virtual void SetRange(double minimum, double maximum) = 0;
  virtual void GetRange(double* minimum, double* maximum) const = 0;
  virtual void SetXPMIcon(const char** icon) = 0;
  virtual const char** GetXPMIcon() const = 0;
  virtual void SetMenuItemList(const AKStringArray& items) = 0;
  virtual AKString GetMenuItemAtIndex(unsigned int index) const = 0;
  virtual unsigned int GetMenuItemCount() const = 0;
  virtual void SetMenuIndex(unsigned int index) = 0;
  virtual unsigned int GetMenuIndex() const = 0;
  virtual void SetMenuItem(const AKString& item) = 0;
  virtual AKString GetMenuItem() const = 0;
  virtual int GetValuePrecision() const = 0;
  virtual AKString GetValueAsString() const = 0;
  virtual bool GetValueAsBool() const = 0;
  virtual int GetValueAsSInt() const = 0;
  virtual unsigned int GetValueAsUInt() const = 0;
  virtual float GetValueAsFloat32() const = 0;
  virtual double GetValueAsFloat64() const = 0;
  virtual double GetValueAsTimeHMS() const = 0;
  virtual AGColor GetValueAsAGColor() const = 0;
  virtual void SetValuePrecision(int decimals) = 0;
  virtual void SetValueAsString(const AKString& value) = 0;
  virtual void SetValueAsBool(bool value) = 0;
  virtual void SetValueAsSInt(int value) = 0;
  virtual void SetValueAsUInt(unsigned int value) = 0;
  virtual void SetValueAsFloat32(float value) = 0;
  virtual void SetValueAsFloat64(double value) = 0;
  virtual void SetValueAsTimeHMS(double seconds) = 0;
  virtual void SetValueAsAGColor(AGColor value) = 0;
  virtual void Refresh() const = 0;
};

class HostControl final : public PanelItem, public ControlOperations {
 public:
  /// Takes what a formatted description string says, the last of repeated items; what it does not understand is logged
  /// in one line.
  explicit HostControl(const AKString& description);

  /// The control behind a kit wrapper; null when the wrapper is null or has none.
  static HostControl* Of(const AKGUICtrl* wrapper);
  /// The control service table, made once.
  static void* Table();

  ControlType Type() const { return type_; }
  bool IsVisible() const { return visible_; }
  bool IsEnabled() const { return enabled_; }
  const AKString& Tip() const { return tip_; }
  /// What a step of a numeric field adds.
  double Step() const;
  /// True when the number is to be read and shown as hours, minutes and seconds.
  bool ShowsTime() const { return showsTime_; }
  /// The value as a user reads it: a number field to its precision, a pop-up menu as its item.
  AKString DisplayedValue() const;
  /// Takes a value as a user enters it, and keeps it within the range if there is one. False, and nothing changed, when
  /// the text does not suit: no number, no item of the menu, no colour. A check box takes on and off (also yes and no,
  /// true and false, 1 and 0), a menu an item or its index, a colour "(r;g;b;a)" or hexadecimal digits, a button the
  /// empty text.
  bool Enter(const AKString& text);

  void SetProperty(unsigned int selector, unsigned int value) override;
  unsigned int GetProperty(unsigned int selector) const override;
  void SetBounds(int x0, int y0, int x1, int y1) override;
  void GetBounds(int* x0, int* y0, int* x1, int* y1) const override;
  void SetTitle(const AKString& title) override { title_ = title; }
  AKString GetTitle() const override { return title_; }
  void SetRange(double minimum, double maximum) override;
  void GetRange(double* minimum, double* maximum) const override;
  void SetXPMIcon(const char** icon) override { icon_ = icon; }
  const char** GetXPMIcon() const override { return icon_; }
  void SetMenuItemList(const AKStringArray& items) override;
  AKString GetMenuItemAtIndex(unsigned int index) const override;
  unsigned int GetMenuItemCount() const override { return items_.Count(); }
  /// The index is the control's number; one behind the last item shows none.
  void SetMenuIndex(unsigned int index) override { SetValueAsFloat64(index); }
  unsigned int GetMenuIndex() const override { return GetValueAsUInt(); }
  void SetMenuItem(const AKString& item) override;
  AKString GetMenuItem() const override { return GetMenuItemAtIndex(GetMenuIndex()); }
  int GetValuePrecision() const override { return precision_; }
  AKString GetValueAsString() const override;
  bool GetValueAsBool() const override { return number_ != 0; }
  int GetValueAsSInt() const override;
  unsigned int GetValueAsUInt() const override;
  float GetValueAsFloat32() const override { return static_cast<float>(number_); }
  double GetValueAsFloat64() const override { return number_; }
  double GetValueAsTimeHMS() const override { return number_; }
  AGColor GetValueAsAGColor() const override { return color_; }
  void SetValuePrecision(int decimals) override { precision_ = decimals; }
  void SetValueAsString(const AKString& value) override;
  void SetValueAsBool(bool value) override { SetValueAsFloat64(value ? 1 : 0); }
  void SetValueAsSInt(int value) override { SetValueAsFloat64(value); }
  void SetValueAsUInt(unsigned int value) override { SetValueAsFloat64(value); }
  void SetValueAsFloat32(float value) override { SetValueAsFloat64(static_cast<double>(value)); }
  void SetValueAsFloat64(double value) override;
  /// From then on the number is shown as a time.
  void SetValueAsTimeHMS(double seconds) override;
  void SetValueAsAGColor(AGColor value) override { color_ = value; }
  void Refresh() const override {}

 private:
  bool TakeItem(const AKString& item);
  bool TakeSwitch(const AKString& text, bool* state) const;
  void MoveTo(const AGPoint& position);
  void Resize(const AGPoint& size);
  bool EnterNumber(const AKString& text);
  bool EnterMenuItem(const AKString& text);
  bool EnterColor(const AKString& text);
  /// The index of an item of the menu.
  std::optional<unsigned int> IndexOf(const AKString& item) const;

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
  // A value to begin with is entered when the whole description is known.
  AKString firstValue_;
  bool hasFirstValue_ = false;
};

}  // namespace host
