// Controls: what is set is what is got, and nothing else changes.
#include <climits>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "kit/panels/AKGUIDesc.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Entries.h"

namespace torture {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A control of a panel that nobody shows.
class OneControl {
 public:
  explicit OneControl(const std::string& description) {
    Call call("control.construct", "make a control: " + TextOf(std::string_view(description)), kControlSection);
    call([&] { control_ = std::make_unique<AKGUICtrl>(&panel_, "%s", description.c_str()); });
    call.Expect(IsThere(), "the wrapper filled", "it empty");
  }
  OneControl(const OneControl&) = delete;
  OneControl& operator=(const OneControl&) = delete;
  ~OneControl() {
    Call call("control.destruct", "end a control that was added to no panel", kControlSection);
    call([&] { control_.reset(); });
  }

  bool IsThere() const { return control_ != nullptr && control_->HostObject() != nullptr; }
  AKGUICtrl* operator->() const { return control_.get(); }

 private:
  AKGUIDesc panel_;
  std::unique_ptr<AKGUICtrl> control_;
};

// Calls the setter, then holds what the getter gives against it.
template <typename Value, typename Set, typename Get>
void SetAndGet(const char* setter, const char* getter, const Value& value, Set set, Get get) {
  Call put(setter, "set " + TextOf(value), kControlSection);
  put([&] { set(value); });
  Call take(getter, "ask for " + TextOf(value) + " that was set", kControlSection);
  take.ExpectIs(value, take([&] { return get(); }));
}

void AskFeatures(const std::string& type, unsigned int number, const char* features) {
  const OneControl control("-id:4294967295 -type:" + type + " -title:Title -flags:3 -enable:0 -visible:0");
  if (!control.IsThere()) return;
  const auto expect = [&](const char* what, bool expected, bool seen) {
    Call("control.getProperty", type + ": " + what, kControlSection).ExpectIs(expected, seen);
  };
  Call call("control.getProperty", type + ": type and ID", kControlSection);
  call.ExpectIs(number, call([&] { return control->CtrlType(); }));
  call.ExpectIs(0xFFFFFFFFU, call([&] { return control->CtrlID(); }));
  expect("enabled", false, control->IsEnable());
  expect("visible", false, control->IsVisible());
  expect("flag 3", true, control->HasFlag(3));
  expect("flag 4", false, control->HasFlag(4));
  const std::string has = features;
  expect("has a value", has.find('v') != has.npos, control->HasFeatureValue());
  expect("has a range", has.find('r') != has.npos, control->HasFeatureRange());
  expect("has a title", has.find('t') != has.npos, control->HasFeatureTitle());
  expect("has items", has.find('i') != has.npos, control->HasFeatureItems());
}

void AskProperties() {
  const OneControl control("-id:7 -type:Slider");
  if (!control.IsThere()) return;
  for (const bool on : {true, false, true}) {
    SetAndGet(
        "control.setProperty", "control.getProperty", on, [&](bool value) { control->SetVisible(value); },
        [&] { return control->IsVisible(); });
    SetAndGet(
        "control.setProperty", "control.getProperty", on, [&](bool value) { control->SetEnable(value); },
        [&] { return control->IsEnable(); });
    SetAndGet(
        "control.setProperty", "control.getProperty", on, [&](bool value) { control->SetFlag(0x80000001, value); },
        [&] { return control->HasFlag(0x80000001); });
  }
  void* const host = control->HostObject();
  for (const unsigned int selector : {0U, 1U, 2U, 6U, 10U, 11U, 12U, 13U, 14U, 99U, 0xFFFFFFFFU}) {
    Call get("control.getProperty", "ask for property " + TextOf(selector), kControlSection);
    const auto ask = [&] { return AKGUICtrl::sWrapper->getProperty.Call(host, selector); };
    const unsigned int before = get(ask);
    if (selector > 14 || selector == 0 || selector == 6) get.ExpectIs(0U, before);
    Call set("control.setProperty", "set property " + TextOf(selector) + ", which can't be set", kControlSection);
    set([&] { AKGUICtrl::sWrapper->setProperty.Call(host, selector, 0xFFFFFFFF); });
    set.ExpectIs(before, get(ask));
  }
}

void AskBounds() {
  const OneControl control("-id:1 -type:Button -pos:(010;-7) -dim:(068;016)");
  if (!control.IsThere()) return;
  const auto expect = [&](const char* done, int x0, int y0, int x1, int y1) {
    int seen[4] = {-1, -1, -1, -1};
    Call call("control.getBounds", done, kControlSection);
    call([&] { control->GetBounds(&seen[0], &seen[1], &seen[2], &seen[3]); });
    const int expected[4] = {x0, y0, x1, y1};
    for (int i = 0; i < 4; ++i) call.ExpectIs(expected[i], seen[i]);
  };
  expect("ask for the bounds of -pos:(010;-7) -dim:(068;016)", 10, -7, 78, 9);
  for (const int edge : {0, 1, -1, 40000, INT_MIN, INT_MAX}) {
    Call set("control.setBounds", "set the bounds to " + TextOf(edge) + " and others", kControlSection);
    set([&] { control->SetBounds(edge, 2, 3, edge); });
    expect("ask for the bounds that were set", edge, 2, 3, edge);
  }
  Call call("control.getBounds", "ask for the bounds without places for them", kControlSection);
  call([&] { control->GetBounds(nullptr, nullptr, nullptr, nullptr); });
}

void AskTitlesAndRanges() {
  const OneControl control("-id:1 -type:Slider -range:(-2;3)");
  if (!control.IsThere()) return;
  for (const AKString& title : {AKString("Title"),
                                AKString("Gr\x9A\xA7"
                                         "e"),
                                OddText(), LongText(), AKString("")}) {
    SetAndGet(
        "control.setTitle", "control.getTitle", title, [&](const AKString& value) { control->SetTitle(value); },
        [&] { return control->GetTitle(); });
  }
  const auto expect = [&](const std::string& done, double least, double most) {
    double low = 77;
    double high = 77;
    Call call("control.getRange", done, kControlSection);
    call([&] { control->GetRange(&low, &high); });
    call.ExpectIs(least, low);
    call.ExpectIs(most, high);
    call([&] { control->GetRange(nullptr, &high); });
    call([&] { control->GetRange(&low, nullptr); });
    call([&] { control->GetRange(nullptr, nullptr); });
  };
  expect("ask for the range of -range:(-2;3)", -2, 3);
  for (const auto& [least, most] : {std::pair(0.0, 0.1), std::pair(5.0, -5.0), std::pair(-kInfinity, kInfinity),
                                    std::pair(std::nan(""), 1e308), std::pair(0.0, 100.0)}) {
    Call set("control.setRange", "set the range from " + TextOf(least) + " to " + TextOf(most), kControlSection);
    set([&, low = least, high = most] { control->SetRange(low, high); });
    expect("ask for the range that was set", least, most);
  }
  static const char* icon[] = {"1 1 1 1", ". c #000000", "."};
  const OneControl button("-id:1 -type:Button");
  if (!button.IsThere()) return;
  for (const char** one : {static_cast<const char**>(icon), static_cast<const char**>(nullptr)}) {
    Call set("control.setXPMIcon", "set an icon, or none", kControlSection);
    set([&] { button->SetXPMIcon(one); });
    Call get("control.getXPMIcon", "ask for the icon that was set, or for none", kControlSection);
    get.Expect(get([&] { return button->GetXPMIcon(); }) == one, "what was set, not a copy", "another address");
  }
}

void AskMenus() {
  const OneControl control("-id:1 -type:PopUp -items:\"One;Two, or more;Th\\;ree\"");
  if (!control.IsThere()) return;
  const auto expectItems = [&](const AKStringArray& items) {
    Call count("control.getMenuItemCount", "count the items", kControlSection);
    count.ExpectIs(items.Count(), count([&] { return control->GetMenuItemCount(); }));
    for (unsigned int i = 0; i < items.Count() && i < 4; ++i) {
      Call call("control.getMenuItemAtIndex", "ask for item " + TextOf(i), kControlSection);
      call.ExpectIs(items[i], call([&] { return control->GetMenuItemAtIndex(i); }));
    }
    for (const unsigned int index : {items.Count(), 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      Call call("control.getMenuItemAtIndex", "ask for an item behind the last", kControlSection);
      call.ExpectIs(AKString(), call([&] { return control->GetMenuItemAtIndex(index); }));
    }
  };
  expectItems(AKStringArray{"One", "Two, or more", "Th;ree"});
  for (const unsigned int index : {2U, 0U, 1U}) {
    SetAndGet(
        "control.setMenuIndex", "control.getMenuIndex", index,
        [&](unsigned int value) { control->SetMenuIndex(value); }, [&] { return control->GetMenuIndex(); });
  }
  SetAndGet(
      "control.setMenuItem", "control.getMenuItem", AKString("Th;ree"),
      [&](const AKString& item) { control->SetMenuItem(item); }, [&] { return control->GetMenuItem(); });
  for (const AKString& none : {AKString("th;ree"), AKString(""), LongText()}) {
    Call call("control.setMenuItem", "set the item " + TextOf(none) + ", which the menu has not got", kControlSection);
    call([&] { control->SetMenuItem(none); });
    call.ExpectIs(AKString("Th;ree"), control->GetMenuItem());
  }
  Call behind("control.setMenuIndex", "set an index behind the last item", kControlSection);
  behind([&] { control->SetMenuIndex(99); });
  behind.ExpectIs(AKString(), control->GetMenuItem());
  AKStringArray many;
  for (unsigned int i = 0; i < 5000; ++i) many.Append(AKString(std::to_string(i)));
  for (const AKStringArray& items : {AKStringArray(), AKStringArray{OddText(), LongText()}, many}) {
    AKStringArray borrowed = items;
    Call set("control.setMenuItemList", "set " + TextOf(items.Count()) + " items and overwrite the array",
             kControlSection);
    set([&] { control->SetMenuItemList(borrowed); });
    for (AKString& item : borrowed) item = "overwritten";
    expectItems(items);
  }
}

template <typename Value>
struct NumberEntry {
  const char* setter;
  const char* getter;
  void (AKGUICtrl::*set)(Value value);
  Value (AKGUICtrl::*get)() const;
};

template <typename Value>
void AskNumber(const OneControl& control, const NumberEntry<Value>& entry, std::initializer_list<Value> values) {
  for (const Value value : values) {
    SetAndGet(
        entry.setter, entry.getter, value, [&](Value one) { ((*control.operator->()).*entry.set)(one); },
        [&] { return ((*control.operator->()).*entry.get)(); });
  }
}

void AskNumbers() {
  const OneControl control("-id:1 -type:EditNum");
  if (!control.IsThere()) return;
  const NumberEntry<double> f64{"control.setValueAsFloat64", "control.getValueAsFloat64", &AKGUICtrl::SetValueAsFloat64,
                                &AKGUICtrl::GetValueAsFloat64};
  AskNumber(control, f64, {0.0, -0.0, 1.0 / 3, -1e308, 5e-324, kInfinity, -kInfinity, std::nan("")});
  const NumberEntry<int> sint{"control.setValueAsSInt", "control.getValueAsSInt", &AKGUICtrl::SetValueAsSInt,
                              &AKGUICtrl::GetValueAsSInt};
  AskNumber(control, sint, {0, -1, INT_MIN, INT_MAX});
  const NumberEntry<unsigned int> uint{"control.setValueAsUInt", "control.getValueAsUInt", &AKGUICtrl::SetValueAsUInt,
                                       &AKGUICtrl::GetValueAsUInt};
  AskNumber(control, uint, {0U, 1U, 0x80000000U, UINT_MAX});
  const NumberEntry<bool> boolean{"control.setValueAsBool", "control.getValueAsBool", &AKGUICtrl::SetValueAsBool,
                                  &AKGUICtrl::GetValueAsBool};
  AskNumber(control, boolean, {true, false});
  for (const float value : {0.0F, 0.1F, -1e38F, 1e-40F}) {
    SetAndGet(
        "control.setValueAsFloat32", "control.getValueAsFloat32", static_cast<double>(value),
        [&](double one) { control->SetValueAsFloat32(static_cast<float>(one)); },
        [&] { return static_cast<double>(control->GetValueAsFloat32()); });
  }
  // Every number is every other kind of number, where it fits.
  for (const int value : {0, 1, 7, 100000}) {
    Call call("control.setValueAsSInt", "set " + TextOf(value) + " and ask for it as every other number",
              kControlSection);
    call([&] { control->SetValueAsSInt(value); });
    call.ExpectIs(static_cast<double>(value), control->GetValueAsFloat64());
    call.ExpectIs(static_cast<unsigned int>(value), control->GetValueAsUInt());
    call.ExpectIs(value != 0, control->GetValueAsBool());
    call.ExpectIs(static_cast<double>(value), control->GetValueAsTimeHMS());
  }
  for (const double value : {1e300, -1e300, kInfinity, std::nan(""), -0.5}) {
    Call call("control.setValueAsFloat64", "set " + TextOf(value) + ", which no whole number is", kControlSection);
    call([&] { control->SetValueAsFloat64(value); });
    Call("control.getValueAsSInt", "ask for " + TextOf(value),
         kControlSection)([&] { return control->GetValueAsSInt(); });
    Call("control.getValueAsUInt", "ask for " + TextOf(value),
         kControlSection)([&] { return control->GetValueAsUInt(); });
    Call("control.getValueAsString", "ask for " + TextOf(value),
         kControlSection)([&] { return control->GetValueAsString(); });
    call.ExpectIs(value, control->GetValueAsFloat64());
  }
  const NumberEntry<int> precision{"control.setValuePrecision", "control.getValuePrecision",
                                   &AKGUICtrl::SetValuePrecision, &AKGUICtrl::GetValuePrecision};
  AskNumber(control, precision, {0, 15, -1, INT_MAX, INT_MIN, 2});
  const NumberEntry<double> time{"control.setValueAsTimeHMS", "control.getValueAsTimeHMS",
                                 &AKGUICtrl::SetValueAsTimeHMS, &AKGUICtrl::GetValueAsTimeHMS};
  AskNumber(control, time, {3725.0, 0.0, -1.0, 1e15, kInfinity, std::nan("")});
}

void AskTextsAndColors() {
  const OneControl text("-id:1 -type:EditText -value:\"as it begins\"");
  const OneControl number("-id:2 -type:EditNum");
  const OneControl color("-id:3 -type:Color");
  if (!text.IsThere() || !number.IsThere() || !color.IsThere()) return;
  Call begins("control.getValueAsString", "ask for the value to begin with", kDescriptionSection);
  begins.ExpectIs(AKString("as it begins"), begins([&] { return text->GetValueAsString(); }));
  for (const AKString& value : {AKString("a text"), OddText(), LongText()}) {
    SetAndGet(
        "control.setValueAsString", "control.getValueAsString", value,
        [&](const AKString& one) { text->SetValueAsString(one); }, [&] { return text->GetValueAsString(); });
  }
  Call set("control.setValueAsString", "set the text \"2.5\" of a number field", kControlSection);
  set([&] { number->SetValueAsString("2.5"); });
  set.ExpectIs(2.5, number->GetValueAsFloat64());
  for (const AGColor value : {AGColor(1, 2, 3, 4), kAGColorWhite, AGColor(0, 0, 0, 0)}) {
    SetAndGet(
        "control.setValueAsAGColor", "control.getValueAsAGColor", value,
        [&](AGColor one) { color->SetValueAsAGColor(one); }, [&] { return color->GetValueAsAGColor(); });
  }
  Call refresh("control.refresh", "refresh a control", kControlSection);
  refresh([&] { number->Refresh(); });
  refresh.ExpectIs(2.5, number->GetValueAsFloat64());
}

// What a host does not understand it logs, and goes on.
void AskDescriptions() {
  const std::string huge(LongText().CStr());
  for (const std::string& description :
       {std::string(), std::string("-type:Slider -id:-1 -id:99999999999999999999 -pos:(1e300;nan) -dim:(-5;inf)"),
        std::string("-title:\"never ends"), std::string("----:::\"\"\"(((;;;"), std::string("-type:\xFF -items:;;;;"),
        "-title:\"" + huge + "\"", "-" + huge + ":1", std::string("-range:(5;) -prec:x -step:-1 -value:none")}) {
    const OneControl control(description);
    if (!control.IsThere()) continue;
    Call call("control.getProperty", "ask for the ID of a control of an odd description", kDescriptionSection);
    call([&] { return control->CtrlID(); });
  }
}

}  // namespace

void AskControls() {
  if (!HasTable(TableID::kControl) || !IsCallable("control.construct") || !IsCallable("control.destruct")) return;
  AskFeatures("StaticText", 1, "t");
  AskFeatures("EditNum", 2, "v");
  AskFeatures("Slider", 3, "vr");
  AskFeatures("CheckBox", 4, "vt");
  AskFeatures("PopUp", 5, "vi");
  AskFeatures("Button", 6, "t");
  AskFeatures("Color", 7, "v");
  AskFeatures("EditText", 8, "v");
  AskProperties();
  AskBounds();
  AskTitlesAndRanges();
  AskMenus();
  AskNumbers();
  AskTextsAndColors();
  AskDescriptions();
}

}  // namespace torture
