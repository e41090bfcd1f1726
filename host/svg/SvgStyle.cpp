#include "host/svg/SvgStyle.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "host/svg/SvgGradient.h"
#include "host/svg/SvgValues.h"

namespace host {
namespace {

void SetPaint(const SvgTree& tree, std::string_view text, const AGColor& current, SvgPaint* paint, bool* understood) {
  if (text.empty() || text == "inherit") return;
  if (text.starts_with("url(") && text.find(')') != text.npos) {
    const std::size_t end = text.find(')') + 1;
    const SvgElement* const found = tree.Find(text.substr(0, end));
    const std::string_view otherwise = SvgTrimmed(text.substr(end));
    if (found == nullptr && !otherwise.empty()) return SetPaint(tree, otherwise, current, paint, understood);
    *paint = {};
    if (found != nullptr && IsSvgGradient(*found)) {
      paint->gradient = found;
    } else {
      *understood = *understood && found == nullptr && text.find('#') != text.npos;  // nothing is there to be drawn
    }
    return;
  }
  const auto color = text == "currentColor" ? std::optional(current) : SvgColor(text);
  if (text == "none") {
    *paint = {};
  } else if (color) {
    *paint = {color};
  } else {
    *understood = false;
  }
}

template <typename Value, std::size_t count>
void SetWord(std::string_view text, const std::pair<std::string_view, Value> (&words)[count], Value* value) {
  for (const auto& [word, meaning] : words) {
    if (text == word) *value = meaning;
  }
}

// Lengths with blanks or commas between them; an odd number of them is gone through twice.
void SetDashes(std::string_view text, SvgStyle* style) {
  if (text.empty() || text == "inherit") return;
  std::string blanks(text);
  std::ranges::replace(blanks, ',', ' ');
  std::vector<double> dashes;
  for (const std::string_view word : SvgWords(text == "none" ? std::string_view() : blanks)) {
    const auto length = SvgLength(word, style->Diagonal());
    if (!length || *length < 0) {
      style->understood = false;
      return;
    }
    dashes.push_back(*length);
  }
  if (dashes.size() % 2 != 0) dashes.insert(dashes.end(), dashes.begin(), dashes.end());
  if (!(std::accumulate(dashes.begin(), dashes.end(), 0.0) > 0)) dashes.clear();
  style->dashes = std::move(dashes);
}

void SetOutline(const SvgProperties& properties, SvgStyle* style) {
  constexpr std::pair<std::string_view, AGPenLineCap> kCaps[] = {
      {"butt", kAGPenLineCapButt}, {"square", kAGPenLineCapSquare}, {"round", kAGPenLineCapRound}};
  constexpr std::pair<std::string_view, AGPenLineJoin> kJoins[] = {
      {"miter", kAGPenLineJoinMiter}, {"bevel", kAGPenLineJoinBevel}, {"round", kAGPenLineJoinRound}};
  SetWord(properties.Get("stroke-linecap"), kCaps, &style->cap);
  SetWord(properties.Get("stroke-linejoin"), kJoins, &style->join);
  SetDashes(properties.Get("stroke-dasharray"), style);
  const std::string_view width = properties.Get("stroke-width");
  if (!width.empty() && width != "inherit") style->strokeWidth = style->Length(width, style->Diagonal());
  const std::string_view order = properties.Get("paint-order");
  if (!order.empty()) style->strokesFirst = order.find("stroke") < order.find("fill");
  style->keepsWidth = properties.Get("vector-effect") == "non-scaling-stroke";
}

// "none" and "auto" may be said of what an element does not have.
bool Has(const SvgProperties& properties, std::string_view name, std::string_view usual) {
  const std::string_view value = properties.Get(name);
  return !value.empty() && value != "none" && value != usual;
}

void SetTransform(const SvgProperties& properties, SvgStyle* style) {
  for (const char* own : {"translate", "rotate", "scale", "transform-origin"}) {
    if (Has(properties, own, "0 0")) style->understood = false;
  }
  if (!Has(properties, "transform", "")) return;
  const auto transform = SvgTransform(properties.Get("transform"));
  style->understood = style->understood && transform;
  if (transform) style->toPicture = AGAffineTransformConcat(*transform, style->toPicture);
}

}  // namespace

double SvgStyle::Diagonal() const { return std::hypot(whole.width, whole.height) / std::sqrt(2.0); }

double SvgStyle::Length(std::string_view text, double of) {
  const auto length = SvgLength(text, of);
  understood = understood && (length || text.empty());
  return length.value_or(0);
}

void ApplyProperties(const SvgTree& tree, const SvgProperties& properties, SvgStyle* style) {
  const auto get = [&properties](std::string_view name) { return properties.Get(name); };
  SvgPaint color{style->color};
  SetPaint(tree, get("color"), style->color, &color, &style->understood);
  style->color = color.color.value_or(style->color);
  SetPaint(tree, get("fill"), style->color, &style->fill, &style->understood);
  SetPaint(tree, get("stroke"), style->color, &style->stroke, &style->understood);
  SetOutline(properties, style);
  style->opacity *= SvgFraction(get("opacity")).value_or(1);
  style->fillOpacity = SvgFraction(get("fill-opacity")).value_or(style->fillOpacity);
  style->strokeOpacity = SvgFraction(get("stroke-opacity")).value_or(style->strokeOpacity);
  style->shown = style->shown && get("display") != "none";
  const std::string_view visibility = get("visibility");
  if (!visibility.empty() && visibility != "inherit") style->isVisible = visibility == "visible";
  style->isClipped = style->isClipped || Has(properties, "clip-path", "") || Has(properties, "mask", "") ||
                     Has(properties, "filter", "") || Has(properties, "mix-blend-mode", "normal");
  SetTransform(properties, style);
}

}  // namespace host
