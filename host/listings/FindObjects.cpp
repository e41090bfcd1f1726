#include "host/listings/FindObjects.h"

#include <algorithm>

#include "host/model/ObjectProperties.h"
#include "host/svg/SvgValues.h"
#include "host/text/DisplayText.h"

namespace host {
namespace {

// Letters of ASCII alone, so that it does not depend on the locale.
std::string Folded(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return text;
}

bool Contains(const std::string& text, const std::string& folded) {
  return Folded(text).find(folded) != std::string::npos;
}

bool IsSameColor(AGColor a, AGColor b) {
  return a.Red() == b.Red() && a.Green() == b.Green() && a.Blue() == b.Blue() && a.Alpha() != 0;
}

bool HasText(const DocumentObject& object, const std::string& folded) {
  bool has = false;
  ClassProperties(object).ForEach([&](const AKString&, const AKValue& value) {
    if (value.Type() == kAKValueTypeString) has = has || Contains(DisplayText(*value.GetasAKString()), folded);
  });
  return has;
}

bool Fits(const DocumentObject& object, const Wanted& wanted, const std::string& name) {
  if (wanted.classID && !(object.classID == *wanted.classID)) return false;
  if ((wanted.fill || wanted.stroke) && object.IsPlaceholder()) return false;
  if (wanted.fill && !wanted.fill->Fits(object.brush)) return false;
  if (wanted.stroke && !wanted.stroke->Fits(object.pen.Brush())) return false;
  return name.empty() || Contains(ClassName(object.classID), name) || Contains(object.classID.chars, name) ||
         HasText(object, name);
}

}  // namespace

bool WantedPaint::Fits(const AGBrush& brush) const {
  const AGBrushStyle style = brush.Style();
  if (!color) return style == kAGBrushStyleNone;
  if (style == kAGBrushStyleNone) return false;
  return IsSameColor(brush.Color(), *color) || (style != kAGBrushStyleSolid && IsSameColor(brush.Color2(), *color));
}

std::optional<WantedPaint> ParsePaint(const std::string& text) {
  if (text == "none") return WantedPaint();
  auto color = SvgColor(Folded(text));
  if (!color && std::ranges::count(text, ',') == 2) color = SvgColor("rgb(" + text + ")");
  if (!color) return std::nullopt;
  return WantedPaint{color};
}

ObjectIDs FindObjects(const Document& document, const Wanted& wanted) {
  ObjectIDs found;
  const std::string name = Folded(wanted.name);
  for (const Layer* layer : document.Layers()) {
    if (wanted.layer && layer->id != *wanted.layer) continue;
    layer->objects.ForEach([&](const DocumentObject& object) {
      if (Fits(object, wanted, name)) found.push_back(object.id);
    });
  }
  return found;
}

}  // namespace host
