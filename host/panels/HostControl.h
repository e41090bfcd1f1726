// The host's side of a panel's control: what a plug-in described, and the value that it holds now.
//
// Plug-ins reach it through the control service table. The table's entries are virtual functions of ControlOperations,
// which is not the first base of HostControl, so a call goes through an adjusted object and a virtual table.
#pragma once

#include <cstdint>

#include "graphics/values/AGColor.h"
#include "host/panels/PanelItem.h"
#include "host/tables/TableBuilder.h"
#include "kit/AKGUICtrl.h"
#include "kit/AKStringArray.h"

namespace host {

/// The controls that the host offers; their numbers are what CtrlType() returns.
enum class ControlType : std::uint32_t { kUnknown = 0, kStaticText = 1, kEditNum = 2, kSlider = 3 };

/// The name in description strings; "Unknown" for a type that is none of them.
const char* ControlTypeName(ControlType type);

class ControlOperations {
 public:
  virtual ~ControlOperations() = default;

  virtual void SetProperty(unsigned int selector, unsigned int value) = 0;
  virtual unsigned int GetProperty(unsigned int selector) const = 0;
  virtual void SetBounds(int x0, int y0, int x1, int y1) = 0;
  virtual void GetBounds(int* x0, int* y0, int* x1, int* y1) const = 0;
  virtual void SetTitle(AKString const& title) = 0;
  virtual AKString GetTitle() const = 0;
  virtual void SetRange(double minimum, double maximum) = 0;
  virtual void GetRange(double* minimum, double* maximum) const = 0;
  virtual void SetXPMIcon(char const** icon) = 0;
  virtual char const** GetXPMIcon() const = 0;
  virtual void SetMenuItemList(AKStringArray const& items) = 0;
  virtual AKString GetMenuItemAtIndex(unsigned int index) const = 0;
  virtual unsigned int GetMenuItemCount() const = 0;
  virtual void SetMenuIndex(unsigned int index) = 0;
  virtual unsigned int GetMenuIndex() const = 0;
  virtual void SetMenuItem(AKString const& item) = 0;
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
  virtual void SetValueAsString(AKString const& value) = 0;
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
  /// Takes what a formatted description string says; what it does not understand is logged in one line.
  explicit HostControl(AKString const& description);

  /// The control behind a kit wrapper; null when the wrapper is null or has none.
  static HostControl* Of(AKGUICtrl const* wrapper);
  /// The control service table, made once.
  static void* Table();

  ControlType Type() const { return type_; }
  /// The value as a user reads it: a number field to its precision.
  AKString DisplayedValue() const;

  void SetProperty(unsigned int selector, unsigned int value) override;
  unsigned int GetProperty(unsigned int selector) const override;
  void SetBounds(int x0, int y0, int x1, int y1) override;
  void GetBounds(int* x0, int* y0, int* x1, int* y1) const override;
  void SetTitle(AKString const& title) override { title_ = title; }
  AKString GetTitle() const override { return title_; }
  void SetRange(double minimum, double maximum) override;
  void GetRange(double* minimum, double* maximum) const override;
  void SetXPMIcon(char const** icon) override { icon_ = icon; }
  char const** GetXPMIcon() const override { return icon_; }
  void SetMenuItemList(AKStringArray const& items) override;
  AKString GetMenuItemAtIndex(unsigned int index) const override;
  unsigned int GetMenuItemCount() const override { return items_.Count(); }
  void SetMenuIndex(unsigned int index) override { menuIndex_ = index; }
  unsigned int GetMenuIndex() const override { return menuIndex_; }
  void SetMenuItem(AKString const& item) override;
  AKString GetMenuItem() const override { return GetMenuItemAtIndex(menuIndex_); }
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
  void SetValueAsString(AKString const& value) override;
  void SetValueAsBool(bool value) override { SetValueAsFloat64(value ? 1 : 0); }
  void SetValueAsSInt(int value) override { SetValueAsFloat64(value); }
  void SetValueAsUInt(unsigned int value) override { SetValueAsFloat64(value); }
  void SetValueAsFloat32(float value) override { SetValueAsFloat64(static_cast<double>(value)); }
  void SetValueAsFloat64(double value) override;
  void SetValueAsTimeHMS(double seconds) override { SetValueAsFloat64(seconds); }
  void SetValueAsAGColor(AGColor value) override { color_ = value; }
  void Refresh() const override {}

 private:
  bool TakeItem(AKString const& item);
  bool TakeType(AKString const& name);

  ControlType type_ = ControlType::kUnknown;
  bool visible_ = true;
  bool enabled_ = true;
  int bounds_[4] = {0, 0, 0, 0};  // x0, y0, x1, y1 in panel units
  AKString title_;
  double minimum_ = 0;
  double maximum_ = 1;
  bool hasRange_ = false;
  char const** icon_ = nullptr;
  AKStringArray items_;
  unsigned int menuIndex_ = 0;
  int precision_ = 2;
  double number_ = 0;
  AKString text_;
  AGColor color_ = kAGColorBlack;
};

}  // namespace host
