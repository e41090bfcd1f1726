// The property dictionaries of brushes and pens. Angles are degrees there, from the single-precision radians in memory.
#include "graphics/geometry/AGClamp.h"
#include "graphics/paint/AGBrush.h"
#include "graphics/paint/AGPen.h"
#include "kit/geometry/AGConstants.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueEnums.h"
#include "kit/values/AKValueHelpers.h"

namespace {

const AKString kKey_Style("Style");
const AKString kKey_Pattern("Pattern");
const AKString kKey_Color("Color");
const AKString kKey_Color2("Color2");
const AKString kKey_Blend("Blend");
const AKString kKey_Angle("Angle");
const AKString kKey_CenterX("Center.x");
const AKString kKey_CenterY("Center.y");
const AKString kKey_Brush("Brush");
const AKString kKey_SizeMode("SizeMode");
const AKString kKey_Size("Size");
const AKString kKey_Ratio("Ratio");

const AKValueEnums kStyleWords[] = {{kAGBrushStyleNone, "None"},
                                    {kAGBrushStyleSolid, "Solid"},
                                    {kAGBrushStylePattern, "Pattern"},
                                    {kAGBrushStyleLinearGradient, "LinearGradient"},
                                    {kAGBrushStyleRadialGradient, "RadialGradient"},
                                    {0, ""}};
const AKValueEnums kSizeModeWords[] = {
    {kAGPenSizeModeAbsolute, "Absolute"}, {kAGPenSizeModeRelative, "Relative"}, {0, ""}};

constexpr float kDegreesPerRadian = 57.2957763671875F;
constexpr double kRadiansPerDegree = 0.017453292519943295;

// The product is taken in single precision, so that 90 degrees come out as 90.
double Degrees(double radians) { return static_cast<double>(static_cast<float>(radians) * kDegreesPerRadian); }

// One dictionary that is read from or written to, key by key.
class Reader {
 public:
  Reader(const AKDictionary& dictionary, bool convert) : dictionary_(dictionary), convert_(convert) {}

  template <typename Take>
  void Number(const AKString& key, Take take) const {
    double value = 0;
    if (AKValueGetasFloat64(dictionary_.GetValue(key), &value, convert_)) take(value);
  }

  template <typename Take>
  void Unsigned(const AKString& key, Take take) const {
    unsigned int value = 0;
    if (AKValueGetasUInt(dictionary_.GetValue(key), &value, convert_)) take(value);
  }

  template <typename Take>
  void Color(const AKString& key, Take take) const {
    AGColor value;
    if (AKValueGetasAGColor(dictionary_.GetValue(key), &value, convert_)) take(value);
  }

  bool Word(const AKString& key, const AKValueEnums* words, unsigned int* value) const {
    return AKValueGetasEnum(dictionary_.GetValue(key), value, words);
  }

 private:
  const AKDictionary& dictionary_;
  bool convert_;
};

void WriteNumber(AKDictionary* dictionary, const AKString& key, double number) {
  dictionary->SetValue(key, AKValueSetasFloat64(number));
}

void WriteColor(AKDictionary* dictionary, const AKString& key, AGColor color) {
  dictionary->SetValue(key, AKValueSetasAGColor(color));
}

AKDictionary DictionaryOf(const AKValue& value) {
  const AKDictionary* dictionary = value.GetasAKDictionary();
  return dictionary != nullptr ? *dictionary : kAKNullDictionary;
}

bool HasSecondColor(AGBrushStyle style) { return style >= kAGBrushStylePattern; }

}  // namespace

void AGBrush::WriteToValue(AKValue* value) const {
  AKDictionary dictionary;
  dictionary.SetValue(kKey_Style, AKValueSetasEnum(style_, kStyleWords));
  if (style_ >= kAGBrushStyleSolid && style_ <= kAGBrushStyleRadialGradient) {
    WriteColor(&dictionary, kKey_Color, color_);
    if (HasSecondColor(style_)) WriteColor(&dictionary, kKey_Color2, color2_);
  }
  switch (style_) {
    case kAGBrushStylePattern:
      dictionary.SetValue(kKey_Pattern, AKValueSetasUInt(patternIndex_));
      break;
    case kAGBrushStyleLinearGradient:
      WriteNumber(&dictionary, kKey_Blend, blend_);
      WriteNumber(&dictionary, kKey_Angle, Degrees(angle_));
      break;
    case kAGBrushStyleRadialGradient:
      WriteNumber(&dictionary, kKey_Blend, blend_);
      WriteNumber(&dictionary, kKey_CenterX, centerX_);
      WriteNumber(&dictionary, kKey_CenterY, centerY_);
      break;
    default:
      break;
  }
  value->SetasAKDictionary(dictionary);
}

bool AGBrush::ReadFromValue(const AKValue& value, bool convert) {
  ResetCustomGradient();
  const AKDictionary dictionary = DictionaryOf(value);
  const Reader reader(dictionary, convert);
  unsigned int style = 0;
  if (dictionary.IsEmpty() || !reader.Word(kKey_Style, kStyleWords, &style)) return true;
  SetStyle(static_cast<AGBrushStyle>(style));
  if (style_ == kAGBrushStyleNone) return true;

  reader.Color(kKey_Color, [this](AGColor color) { color_ = color; });
  if (HasSecondColor(style_)) reader.Color(kKey_Color2, [this](AGColor color) { color2_ = color; });
  if (style_ == kAGBrushStylePattern) reader.Unsigned(kKey_Pattern, [this](unsigned int i) { SetPatternIndex(i); });
  if (style_ == kAGBrushStyleLinearGradient || style_ == kAGBrushStyleRadialGradient) {
    reader.Number(kKey_Blend, [this](double blend) { SetGradientBlend(blend); });
  }
  if (style_ == kAGBrushStyleLinearGradient) {
    reader.Number(kKey_Angle, [this](double degrees) { SetGradientAngle(degrees * kRadiansPerDegree); });
  }
  if (style_ == kAGBrushStyleRadialGradient) {
    reader.Number(kKey_CenterX, [this](double x) { SetGradientCenterX(x); });
    reader.Number(kKey_CenterY, [this](double y) { SetGradientCenterY(y); });
  }
  return true;
}

void AGPen::WriteToValue(AKValue* value) const {
  AKDictionary dictionary;
  AKValue brush;
  brush_.WriteToValue(&brush);
  dictionary.SetValue(kKey_Brush, brush);
  if (brush_.Style() != kAGBrushStyleNone) {
    dictionary.SetValue(kKey_SizeMode, AKValueSetasEnum(sizeMode_, kSizeModeWords));
    WriteNumber(&dictionary, kKey_Size, size_);
    WriteNumber(&dictionary, kKey_Ratio, ratio_);
    WriteNumber(&dictionary, kKey_Angle, Degrees(angle_));
  }
  value->SetasAKDictionary(dictionary);
}

bool AGPen::ReadFromValue(const AKValue& value, bool convert) {
  const AKDictionary dictionary = DictionaryOf(value);
  if (dictionary.IsEmpty()) return true;
  brush_.ReadFromValue(dictionary.GetValue(kKey_Brush), convert);
  if (brush_.Style() == kAGBrushStyleNone) return true;

  const Reader reader(dictionary, convert);
  unsigned int mode = 0;
  if (reader.Word(kKey_SizeMode, kSizeModeWords, &mode)) SetSizeMode(static_cast<AGPenSizeMode>(mode));
  reader.Number(kKey_Size, [this](double size) { SetSize(size); });
  reader.Number(kKey_Ratio, [this](double ratio) { SetRatio(ratio); });
  reader.Number(kKey_Angle, [this](double degrees) { SetAngle(degrees * kRadiansPerDegree); });
  return true;
}
