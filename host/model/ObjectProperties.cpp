#include "host/model/ObjectProperties.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "host/Host.h"
#include "host/model/ObjectRecord.h"
#include "host/tables/SlotCall.h"
#include "host/text/DisplayText.h"
#include "host/text/Expression.h"
#include "host/text/Localisation.h"
#include "host/text/ParseNumber.h"
#include "kit/geometry/AGConstants.h"
#include "kit/text/AKTextConversions.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

namespace host {
namespace {

const AKString kKey_Bounds(N_("Bounds"));
const AKString kKey_Angle(N_("Angle"));
const AKString kKey_Brush(N_("Brush"));
const AKString kKey_Pen(N_("Pen"));

bool IsHostKey(const AKString& name) {
  return name == kKey_Bounds || name == kKey_Angle || name == kKey_Brush || name == kKey_Pen;
}

AKString FirstName(const AKString& path) {
  const AKString name = path.BeforeFirst(".");
  return name.IsEmpty() ? path : name;
}

// Four numbers in parentheses, the whole text.
bool ParseRect(const std::string& text, AGRect* rect) {
  if (text.size() < 2 || text.front() != '(' || text.back() != ')') return false;
  double* const parts[] = {&rect->x0, &rect->y0, &rect->x1, &rect->y1};
  std::size_t start = 1;
  for (int i = 0; i < 4; ++i) {
    const std::size_t end = i < 3 ? text.find(';', start) : text.size() - 1;
    if (end == std::string::npos || !ParseFinite(text.substr(start, end - start), parts[i])) return false;
    start = end + 1;
  }
  return true;
}

// A value of the same kind as `old` from text.
bool ParseLike(const AKValue& old, const std::string& text, AKValue* value) {
  double number = 0;
  AGRect rect;
  switch (old.Type()) {
    case kAKValueTypeBool:
      if (text != "0" && text != "1") return false;
      value->SetasBool(text == "1");
      return true;
    case kAKValueTypeInteger:
      if (!ParseFinite(text, &number) || number != std::floor(number) || std::fabs(number) > 9e15) return false;
      value->SetasInteger(static_cast<long long>(number));
      return true;
    case kAKValueTypeFloat:
      if (!ParseFinite(text, &number)) return false;
      value->SetasFloat(number);
      return true;
    case kAKValueTypeString:
      value->SetasAKString(TextForBundles(text));
      return true;
    case kAKValueTypeDictionary:
      if (!ParseRect(text, &rect)) return false;
      AKValueSetasAGRect(value, rect);
      return true;
    default:
      return false;
  }
}

// A length, with a unit, in place of the part that it is of another; the text itself where it is nothing of the kind.
std::string RatioText(const HostFields& fields, const std::string& path, const std::string& text) {
  double number = 0;
  const auto one = LengthOfOne(fields.placement, path);
  if (!one || ParseFinite(text, &number)) return text;
  const auto length = Evaluate(text, Measure::kLength, std::nullopt, Decimals::kPoint);
  return length ? TextOf(AKValueSetasFloat64(*length / *one)) : text;
}

Text KindName(const AKValue& value) {
  switch (value.Type()) {
    case kAKValueTypeBool:
      return N_("0 or 1");
    case kAKValueTypeInteger:
      return N_("a whole number");
    case kAKValueTypeFloat:
      return N_("a number");
    case kAKValueTypeDictionary:
      return N_("four numbers as (x0;y0;x1;y1)");
    default:
      return N_("a value that can be given as text");
  }
}

// The shorter number where it is the same angle: what was set as 30 is not read as 29.999999999999996.
double DegreesOf(double radians) {
  constexpr double kPlaces = 1e12;
  const double degrees = radians * kRadToDeg;
  const double shorter = std::round(degrees * kPlaces) / kPlaces;
  return shorter * kDegToRad == radians ? shorter : degrees;
}

// 0, or what the class returned.
int TakeProperty(const DocumentObject& object, HostFields* fields, const AKString& name, const AKDictionary& all) {
  const AKValue& value = all.GetValue(name);
  double degrees = 0;
  if (name == kKey_Bounds) {
    AKValueGetasAGRect(value, &fields->placement.bounds, false);
  } else if (name == kKey_Angle) {
    if (AKValueGetasFloat64(value, &degrees, true)) fields->placement.angle = degrees * kDegToRad;
  } else if (name == kKey_Brush) {
    fields->brush.ReadFromValue(value, true);
  } else if (name == kKey_Pen) {
    fields->pen.ReadFromValue(value, true);
  } else {
    AKDictionary properties;
    properties.SetValue(name, value);
    return SetClassProperties(object, properties);
  }
  return 0;
}

AKValue HostProperty(const HostFields& fields, const AKString& name) {
  AKValue value;
  if (name == kKey_Bounds) return AKValueSetasAGRect(fields.placement.bounds);
  if (name == kKey_Angle) return AKValueSetasFloat64(DegreesOf(fields.placement.angle));
  name == kKey_Brush ? fields.brush.WriteToValue(&value) : fields.pen.WriteToValue(&value);
  return value;
}

// The properties among which one of a name is looked for: those of the host cost many times what others do.
AKDictionary PropertiesAround(const DocumentObject& object, const HostFields& fields, const AKString& name) {
  if (!IsHostKey(name)) return ClassProperties(object);
  AKDictionary own;
  own.SetValue(name, HostProperty(fields, name));
  return own;
}

// What the object did not take is still its old value; one that it took within its limits is another. Words and colours
// are texts too.
bool WasTaken(const AKValue& value, const AKValue& old, const AKValue& now, const std::string& text) {
  if (now.IsEqual(value) || !now.IsEqual(old)) return true;
  AGColor color;
  return strGetasAGColor(text.c_str(), &color, kAGNullColor) && AKValueGetasAGColor(now, false) == color;
}

}  // namespace

AKDictionary ClassProperties(const DocumentObject& object) {
  AKDictionary properties;
  if (object.IsPlaceholder()) return properties;
  const AKClass& cls = *object.instance->Class();
  if (HasSlot(cls, kAKMethodGetObjectProperties)) {
    CallSlot<int, AKDictionary*>(cls, kAKMethodGetObjectProperties, object.instance.get(), &properties);
  }
  return properties;
}

int SetClassProperties(const DocumentObject& object, const AKDictionary& properties) {
  const AKClass& cls = *object.instance->Class();
  if (!HasSlot(cls, kAKMethodSetObjectProperties)) return -1;
  return CallSlot<int, const AKDictionary&>(cls, kAKMethodSetObjectProperties, object.instance.get(), properties);
}

std::optional<double> LengthOfOne(const ObjectPlacement& placement, const std::string& property) {
  if (property != "Rounding") return std::nullopt;
  const double one = std::min(std::fabs(placement.bounds.Width()), std::fabs(placement.bounds.Height())) / 2;
  return one > 0 ? std::optional(one) : std::nullopt;
}

std::string ClassName(AKClassID classID) {
  const AKClass* cls = Host::Instance().Classes().Find(classID);
  return cls == nullptr ? classID.chars : DisplayText(DisplayName(*cls));
}

AKDictionary PropertiesOf(const DocumentObject& object) {
  AKDictionary all = ClassProperties(object);
  const HostFields fields{object.Placement(), object.brush, object.pen};
  for (const AKString& name : {kKey_Bounds, kKey_Angle, kKey_Brush, kKey_Pen}) {
    all.SetValue(name, HostProperty(fields, name));
  }
  return all;
}

Result<> SetProperty(const DocumentObject& object, HostFields* fields, const std::string& path,
                     const std::string& text) {
  if (object.IsPlaceholder()) {
    return WhyPlaceholder(object);
  }
  const AKString key = TextForBundles(path);
  const AKString name = FirstName(key);
  AKDictionary all = PropertiesAround(object, *fields, name);
  const bool settable = IsHostKey(name) || HasSlot(*object.instance->Class(), kAKMethodSetObjectProperties);
  if (!all.ContainsKey(key) || !settable) {
    return Problem(N_("there is no property \"%s\""), {path});
  }
  const AKValue old = all.GetValue(key);
  AKValue value;
  if (!ParseLike(old, RatioText(*fields, path, text), &value)) {
    return Problem(N_("property \"%s\" takes %s, not \"%s\""), {path, KindName(old), text});
  }
  all.SetValue(key, value);
  if (const int status = TakeProperty(object, fields, name, all); status != 0) {
    return Problem(N_("class \"%s\" does not take property \"%s\" (status %s)"),
                   {object.classID.chars, path, std::to_string(status)});
  }
  AKValue now;
  PropertiesAround(object, *fields, name).GetValueCopy(key, &now);
  if (WasTaken(value, old, now, text)) return {};
  return Problem(N_("property \"%s\" does not take \"%s\""), {path, text});
}

std::string TextOf(const AKValue& value) {
  char buffer[32];
  switch (value.Type()) {
    case kAKValueTypeBool: {
      bool flag = false;
      value.GetasBool(&flag, false);
      return flag ? "1" : "0";
    }
    case kAKValueTypeInteger: {
      long long number = 0;
      value.GetasInteger(&number, false);
      return std::to_string(number);
    }
    case kAKValueTypeFloat: {
      double number = 0;
      value.GetasFloat(&number, false);
      const auto end = std::to_chars(buffer, buffer + sizeof(buffer), number).ptr;
      return {buffer, end};
    }
    case kAKValueTypeString:
      return DisplayText(*value.GetasAKString());
    case kAKValueTypeDictionary: {
      std::string text = "{";
      value.GetasAKDictionary()->ForEach([&text](const AKString& key, const AKValue& entry) {
        text += (text.size() > 1 ? " " : "") + DisplayText(key) + "=" + TextOf(entry);
      });
      return text + "}";
    }
    case kAKValueTypeEmpty:
      return "";
    default:
      return "(data)";
  }
}

}  // namespace host
