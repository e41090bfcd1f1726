// Wrong controls.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "kit/panels/AKGUICtrl.h"
#include "tests/host/torture/HostMutants.h"

namespace host {
namespace {

using Tables = HostTables;

const AKControlTable& kReal = gReal.control;

// An entry whose argument, or result, is changed on its way.
#define SET(entry, Type, change) \
  [](Tables* t) { Put<[](void* c, Type value) { kReal.entry.Call(c, change); }>(&t->control.entry); }
#define GET(entry, change)              \
  [](Tables* t) {                       \
    Put<[](void* c) {                   \
      auto value = kReal.entry.Call(c); \
      return change;                    \
    }>(&t->control.entry);              \
  }

std::vector<HostMutant> ShapeMutants() {
  return {{"control.construct", "leaves the wrapper empty",
           [](Tables* t) { t->control.construct = [](AKGUICtrl*, AKGUIDesc*, const char*, va_list) {}; }},
          {"control.destruct", "frees nothing", [](Tables* t) { t->control.destruct = [](AKGUICtrl*) {}; }},
          {"control.getProperty", "it can't be enabled again",
           [](Tables* t) {
             Put<[](void* c, unsigned int selector, unsigned int value) {
               if (selector != kAKGUIPropertyEnabled || value == 0) kReal.setProperty.Call(c, selector, value);
             }>(&t->control.setProperty);
           }},
          {"control.getProperty", "1 for unknown properties",
           [](Tables* t) {
             Put<[](void* c, unsigned int selector) {
               return kAKGUIPropertyHasIcon < selector ? 1U : kReal.getProperty.Call(c, selector);
             }>(&t->control.getProperty);
           }},
          {"control.getBounds", "corners of 16 bits",
           [](Tables* t) {
             Put<[](void* c, int x0, int y0, int x1, int y1) {
               kReal.setBounds.Call(c, static_cast<short>(x0), y0, x1, y1);
             }>(&t->control.setBounds);
           }},
          {"control.setBounds", "throws for corners in the wrong order",
           [](Tables* t) {
             Put<[](void* c, int x0, int y0, int x1, int y1) {
               if (x1 < x0 || y1 < y0) throw x0;
               kReal.setBounds.Call(c, x0, y0, x1, y1);
             }>(&t->control.setBounds);
           }},
          {"control.getBounds", "writes one of four",
           [](Tables* t) {
             Put<[](void* c, int* x0, int*, int*, int*) { kReal.getBounds.Call(c, x0, nullptr, nullptr, nullptr); }>(
                 &t->control.getBounds);
           }},
          {"control.getTitle", "the last byte is lost", SET(setTitle, const AKString&, WithoutLast(value))},
          {"control.setTitle", "throws for what is not well formed",
           [](Tables* t) {
             Put<[](void* c, const AKString& title) {
               unsigned int place = 0;
               if (!title.IsPureAscii(&place)) throw place;
               kReal.setTitle.Call(c, title);
             }>(&t->control.setTitle);
           }},
          {"control.getTitle", "cut behind a NUL or at 100 bytes", GET(getTitle, value.SubString(0, 100))},
          {"control.getRange", "turns a range round",
           [](Tables* t) {
             Put<[](void* c, double least, double most) {
               kReal.setRange.Call(c, std::fmin(least, most), std::fmax(least, most));
             }>(&t->control.setRange);
           }},
          {"control.setRange", "throws for what is no number",
           [](Tables* t) {
             Put<[](void* c, double least, double most) {
               if (std::isnan(least)) throw most;
               kReal.setRange.Call(c, least, most);
             }>(&t->control.setRange);
           }},
          {"control.getRange", "single precision",
           [](Tables* t) {
             Put<[](void* c, double* least, double* most) {
               kReal.getRange.Call(c, least, most);
               if (most != nullptr) *most = static_cast<double>(static_cast<float>(*most));
             }>(&t->control.getRange);
           }},
          {"control.getXPMIcon", "keeps a copy",
           [](Tables* t) {
             Put<[](void* c, const char** icon) {
               static const char* copy[3];
               if (icon != nullptr) std::copy_n(icon, 3, copy);
               kReal.setXPMIcon.Call(c, icon == nullptr ? nullptr : copy);
             }>(&t->control.setXPMIcon);
           }},
          {"control.setXPMIcon", "reads one that is null",
           [](Tables* t) {
             Put<[](void* c, const char** icon) {
               kReal.setXPMIcon.Call(c, *static_cast<const char* volatile*>(icon) == nullptr ? nullptr : icon);
             }>(&t->control.setXPMIcon);
           }},
          {"control.getXPMIcon", "null",
           [](Tables* t) { Put<[](void*) { return static_cast<const char**>(nullptr); }>(&t->control.getXPMIcon); }},
          {"control.refresh", "sets the value back",
           [](Tables* t) { Put<[](void* c) { kReal.setValueAsFloat64.Call(c, 0); }>(&t->control.refresh); }}};
}

std::vector<HostMutant> MenuMutants() {
  return {
      {"control.getMenuItemCount", "takes at most 100 items",
       [](Tables* t) {
         Put<[](void* c, const AKStringArray& items) {
           AKStringArray some = items;
           while (100 < some.Count()) some.RemoveLast();
           kReal.setMenuItemList.Call(c, some);
         }>(&t->control.setMenuItemList);
       }},
      {"control.setMenuItemList", "throws for an empty list",
       [](Tables* t) {
         Put<[](void* c, const AKStringArray& items) {
           if (items.IsEmpty()) throw 0;
           kReal.setMenuItemList.Call(c, items);
         }>(&t->control.setMenuItemList);
       }},
      {"control.getMenuItemAtIndex", "the first item behind the last",
       [](Tables* t) {
         Put<[](void* c, unsigned int index) {
           const AKString item = kReal.getMenuItemAtIndex.Call(c, index);
           return item.IsEmpty() ? kReal.getMenuItemAtIndex.Call(c, 0) : item;
         }>(&t->control.getMenuItemAtIndex);
       }},
      {"control.getMenuItemCount", "one more", GET(getMenuItemCount, value + 1)},
      {"control.setMenuIndex", "keeps to what there is",
       SET(setMenuIndex, unsigned int, std::min(value, kReal.getMenuItemCount.Call(c) - 1))},
      {"control.getMenuIndex", "counts from 1", GET(getMenuIndex, value + 1)},
      {"control.setMenuItem", "the first item for one that there is not",
       [](Tables* t) {
         Put<[](void* c, const AKString& item) {
           kReal.setMenuIndex.Call(c, 0);
           kReal.setMenuItem.Call(c, item);
         }>(&t->control.setMenuItem);
       }},
      {"control.getMenuItem", "the first item", GET(getMenuItem, value.IsEmpty() ? value : AKString("One"))},
  };
}

std::vector<HostMutant> ValueMutants() {
  return {
      {"control.getValuePrecision", "none below 0", GET(getValuePrecision, std::max(value, 0))},
      {"control.getValueAsString", "without its last byte", GET(getValueAsString, WithoutLast(value))},
      {"control.getValueAsBool", "always off", GET(getValueAsBool, value && false)},
      {"control.getValueAsSInt", "without its sign", GET(getValueAsSInt, value < 0 ? -(value + 1) : value)},
      {"control.getValueAsUInt", "31 bits", GET(getValueAsUInt, value & 0x7FFFFFFF)},
      {"control.getValueAsFloat32", "half of it", GET(getValueAsFloat32, value / 2)},
      {"control.getValueAsFloat64", "single precision", GET(getValueAsFloat64, double(float(value)))},
      {"control.getValueAsTimeHMS", "none below 0", GET(getValueAsTimeHMS, std::fmax(value, 0))},
      {"control.getValueAsAGColor", "opaque",
       GET(getValueAsAGColor, AGColor(value.Red(), value.Green(), value.Blue()))},
      {"control.getValuePrecision", "at most 9", SET(setValuePrecision, int, std::min(value, 9))},
      {"control.setValuePrecision", "throws below 0",
       [](Tables* t) {
         Put<[](void* c, int decimals) {
           if (decimals < 0) throw decimals;
           kReal.setValuePrecision.Call(c, decimals);
         }>(&t->control.setValuePrecision);
       }},
      {"control.getValueAsString", "cut", SET(setValueAsString, const AKString&, value.SubString(0, 64))},
      {"control.setValueAsString", "no number of a text",
       [](Tables* t) {
         Put<[](void* c, const AKString& value) {
           if (value.Length() != 3) kReal.setValueAsString.Call(c, value);
         }>(&t->control.setValueAsString);
       }},
      {"control.getValueAsBool", "the contrary is set", SET(setValueAsBool, bool, !value)},
      {"control.getValueAsSInt", "set as unsigned",
       [](Tables* t) {
         Put<[](void* c, int value) { kReal.setValueAsUInt.Call(c, static_cast<unsigned int>(value)); }>(
             &t->control.setValueAsSInt);
       }},
      {"control.setValueAsSInt", "7 is another number", SET(setValueAsSInt, int, value == 7 ? 8 : value)},
      {"control.getValueAsUInt", "set as signed",
       [](Tables* t) {
         Put<[](void* c, unsigned int value) { kReal.setValueAsSInt.Call(c, static_cast<int>(value)); }>(
             &t->control.setValueAsUInt);
       }},
      {"control.getValueAsFloat32", "whole numbers are set", SET(setValueAsFloat32, float, std::trunc(value))},
      {"control.getValueAsFloat64", "0 for what is no number",
       SET(setValueAsFloat64, double, std::isnan(value) ? 0 : value)},
      {"control.setValueAsFloat64", "throws for infinity",
       [](Tables* t) {
         Put<[](void* c, double value) {
           if (std::isinf(value) && kReal.getValueAsFloat64.Call(c) != 5e-324) throw value;
           kReal.setValueAsFloat64.Call(c, value);
         }>(&t->control.setValueAsFloat64);
       }},
      {"control.getValueAsTimeHMS", "whole days are dropped", SET(setValueAsTimeHMS, double, std::fmod(value, 86400))},
      {"control.getValueAsAGColor", "red and blue are mixed up",
       SET(setValueAsAGColor, AGColor, AGColor(value.Blue(), value.Green(), value.Red(), value.Alpha()))},
  };
}

}  // namespace

std::vector<HostMutant> ControlMutants() {
  std::vector<HostMutant> all = ShapeMutants();
  for (const auto& more : {MenuMutants(), ValueMutants()}) all.insert(all.end(), more.begin(), more.end());
  return all;
}

}  // namespace host
