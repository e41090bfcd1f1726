#include "host/svg/SvgGradient.h"

#include <algorithm>
#include <cmath>

#include "host/svg/SvgValues.h"

namespace host {
namespace {

constexpr std::size_t kLongestChain = 16;  // of gradients that are like another one
constexpr double kSlack = 0.004;           // of the way, about a step of 255
constexpr double kRimOfBrush = 0.707;      // of an object's sides, how far a radial brush goes

struct Stop {
  double at;
  AGColor color;
};

AGColor Mixed(const AGColor& a, const AGColor& b, double part) {
  const auto mix = [part](int from, int to) {
    return static_cast<unsigned char>(std::lround(from + (to - from) * part));
  };
  return {mix(a.Red(), b.Red()), mix(a.Green(), b.Green()), mix(a.Blue(), b.Blue()), mix(a.Alpha(), b.Alpha())};
}

// A gradient with what it has of others.
class Gradient {
 public:
  Gradient(const SvgTree& tree, const SvgStyles& styles, const SvgElement& element, double opacity);

  std::string_view Get(std::string_view name) const;
  std::optional<double> Length(std::string_view name, double usual, double whole) const;
  bool IsRadial() const { return chain_[0]->name == "radialGradient"; }
  bool IsOfBox() const { return Get("gradientUnits") != "userSpaceOnUse"; }
  bool IsPadded() const { return Get("spreadMethod").empty() || Get("spreadMethod") == "pad"; }
  /// From the parts of the filled box, 0 to 1, to where the gradient's numbers are. None when not understood.
  std::optional<AGAffineTransform> FromBox(const AGRect& box) const;

  const std::vector<Stop>& Stops() const { return stops_; }
  AGColor At(double place) const;

 private:
  void TakeStops(const SvgStyles& styles, const SvgElement& element, double opacity);

  std::vector<const SvgElement*> chain_;
  std::vector<Stop> stops_;
};

Gradient::Gradient(const SvgTree& tree, const SvgStyles& styles, const SvgElement& element, double opacity) {
  for (const SvgElement* each = &element; each != nullptr && chain_.size() < kLongestChain;) {
    chain_.push_back(each);
    if (stops_.empty()) TakeStops(styles, *each, opacity);
    const std::string_view href = each->Get("href").empty() ? each->Get("xlink:href") : each->Get("href");
    each = tree.Find(href);
    if (each != nullptr && !IsSvgGradient(*each)) break;
  }
}

void Gradient::TakeStops(const SvgStyles& styles, const SvgElement& element, double opacity) {
  double last = 0;
  for (const auto& child : element.children) {
    if (child->name != "stop") continue;
    const SvgProperties properties = styles.Of(*child);
    const std::string_view text = properties.Get("stop-color");
    const AGColor color = SvgColor(text.empty() ? "black" : text).value_or(kAGColorBlack);
    last = std::max(last, SvgFraction(properties.Get("offset")).value_or(0));
    stops_.push_back({last, SvgFaded(color, opacity * SvgFraction(properties.Get("stop-opacity")).value_or(1))});
  }
}

std::string_view Gradient::Get(std::string_view name) const {
  for (const SvgElement* each : chain_) {
    if (const std::string_view value = each->Get(name); !value.empty()) return value;
  }
  return {};
}

std::optional<double> Gradient::Length(std::string_view name, double usual, double whole) const {
  const std::string_view text = Get(name);
  return text.empty() ? usual * whole : SvgLength(text, whole);
}

std::optional<AGAffineTransform> Gradient::FromBox(const AGRect& box) const {
  const auto own = SvgTransform(Get("gradientTransform"));
  if (!own || !(std::fabs(own->Determinant()) > 1e-12)) return std::nullopt;
  AGAffineTransform toUser = kAGAffineTransformIdentity;
  if (!IsOfBox()) toUser = {box.Width(), 0, 0, box.Height(), box.x0, box.y0};
  return AGAffineTransformConcat(toUser, AGAffineTransformInverse(*own));
}

AGColor Gradient::At(double place) const {
  const auto next = std::ranges::find_if(stops_, [place](const Stop& stop) { return stop.at > place; });
  if (next == stops_.begin()) return stops_.front().color;
  if (next == stops_.end()) return stops_.back().color;
  const Stop& before = *(next - 1);
  return Mixed(before.color, next->color, (place - before.at) / (next->at - before.at));
}

bool IsFinite(const AGBrush& brush) { return std::isfinite(brush.GradientAngle() + brush.GradientBlend()); }

std::optional<SvgGradientBrush> Linear(const Gradient& gradient, const SvgFilled& filled) {
  const AGSize whole = gradient.IsOfBox() ? AGSize{1, 1} : filled.whole;
  const auto x1 = gradient.Length("x1", 0, whole.width), x2 = gradient.Length("x2", 1, whole.width);
  const auto y1 = gradient.Length("y1", 0, whole.height), y2 = gradient.Length("y2", 0, whole.height);
  const auto map = gradient.FromBox(filled.box);
  if (!x1 || !x2 || !y1 || !y2 || !map) return std::nullopt;
  const AGPoint way{*x2 - *x1, *y2 - *y1};
  const double length = way.x * way.x + way.y * way.y;
  SvgGradientBrush made;
  if (!(length > 0)) {
    made.brush.SetStyleSolid(gradient.Stops().back().color);
    return made;
  }
  const auto place = [&](const AGPoint& ofBox) {
    const AGPoint at = map->Apply(ofBox);
    return ((at.x - *x1) * way.x + (at.y - *y1) * way.y) / length;
  };
  // How the place changes with a unit of the object's directions, y up.
  const double middle = place({0.5, 0.5});
  const double across = (place({1, 0.5}) - place({0, 0.5})) / filled.size.width;
  const double down = (place({0.5, 1}) - place({0.5, 0})) / filled.size.height;
  const double up = filled.mirrored ? down : -down;
  const double slope = std::hypot(across, up);
  if (!std::isfinite(middle) || !(slope > 0)) return std::nullopt;
  const double toRim = std::min(filled.size.width / 2 / std::max(std::fabs(across) / slope, 1e-9),
                                filled.size.height / 2 / std::max(std::fabs(up) / slope, 1e-9));
  const double start = middle - slope * toRim;
  const double end = middle + slope * toRim;
  made.brush.SetStyleLinearGradient(gradient.At(start), gradient.At(end), 0.5, -std::atan2(up, across));
  const auto& stops = gradient.Stops();
  made.isExact = stops.size() == 2 && std::fabs(stops[0].at - start) < kSlack && std::fabs(stops[1].at - end) < kSlack;
  return IsFinite(made.brush) ? std::optional(made) : std::nullopt;
}

std::optional<SvgGradientBrush> Radial(const Gradient& gradient, const SvgFilled& filled) {
  const AGSize whole = gradient.IsOfBox() ? AGSize{1, 1} : filled.whole;
  const double diagonal = std::hypot(whole.width, whole.height) / std::sqrt(2.0);
  const auto x = gradient.Length("cx", 0.5, whole.width), y = gradient.Length("cy", 0.5, whole.height);
  const auto radius = gradient.Length("r", 0.5, diagonal);
  const auto map = gradient.FromBox(filled.box);
  if (!x || !y || !radius || !map || !(std::fabs(map->Determinant()) > 1e-12)) return std::nullopt;
  SvgGradientBrush made;
  if (!(*radius > 0)) {
    made.brush.SetStyleSolid(gradient.Stops().back().color);
    return made;
  }
  const auto fx = gradient.Length("fx", *x, 1), fy = gradient.Length("fy", *y, 1);
  const AGPoint center = AGAffineTransformInverse(*map).Apply({*x, *y});
  // A circle of parts of the box, as large as what the gradient's becomes there.
  const double rim = *radius / std::sqrt(std::fabs(map->Determinant()));
  if (!std::isfinite(center.x + center.y + rim)) return std::nullopt;
  const AGPoint across = map->ApplyLinear({1, 0});
  const AGPoint down = map->ApplyLinear({0, 1});
  const double a = std::hypot(across.x, across.y);
  const double b = std::hypot(down.x, down.y);
  const bool isRound =
      std::fabs(a - b) < kSlack * a && std::fabs(across.x * down.x + across.y * down.y) < kSlack * a * b;
  const auto& stops = gradient.Stops();
  const double half = (stops.front().at + stops.back().at) / 2 * rim / kRimOfBrush;
  made.brush.SetStyleRadialGradient(gradient.At(0), gradient.At(kRimOfBrush / rim), 1 - half, center.x,
                                    filled.mirrored ? 1 - center.y : center.y);
  const bool isWithin = center.x >= 0 && center.x <= 1 && center.y >= 0 && center.y <= 1;
  made.isExact = stops.size() == 2 && isRound && isWithin && fx == x && fy == y && stops[0].at < kSlack &&
                 std::fabs(stops[1].at * rim - kRimOfBrush) < kSlack;
  return made;
}

}  // namespace

bool IsSvgGradient(const SvgElement& element) {
  return element.name == "linearGradient" || element.name == "radialGradient";
}

std::optional<AGColor> FirstColor(const SvgTree& tree, const SvgStyles& styles, const SvgElement& gradient,
                                  double opacity) {
  const Gradient whole(tree, styles, gradient, opacity);
  return whole.Stops().empty() ? std::nullopt : std::optional(whole.Stops()[0].color);
}

std::optional<SvgGradientBrush> BrushOfGradient(const SvgTree& tree, const SvgStyles& styles, const SvgElement& element,
                                                const SvgFilled& filled, double opacity) {
  const Gradient gradient(tree, styles, element, opacity);
  const auto& stops = gradient.Stops();
  SvgGradientBrush plain;
  if (stops.size() < 2) {
    stops.empty() ? plain.brush.SetStyleNone() : plain.brush.SetStyleSolid(stops[0].color);
    return plain;
  }
  auto made = gradient.IsRadial() ? Radial(gradient, filled) : Linear(gradient, filled);
  if (made) made->isExact = made->isExact && gradient.IsPadded();
  return made;
}

}  // namespace host
