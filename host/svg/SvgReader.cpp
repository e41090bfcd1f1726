#include <algorithm>
#include <cmath>

#include "host/model/ObjectMarks.h"
#include "host/svg/SvgGradient.h"
#include "host/svg/SvgRectangle.h"
#include "host/svg/SvgStyle.h"
#include "host/svg/SvgValues.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

constexpr std::size_t kMostDrawn = 100000;
constexpr std::size_t kDeepestUse = 16;
constexpr std::size_t kMostVisited = 1000000;  // elements that are used elsewhere count as often as they are
constexpr double kMapUnitsAPixel = 72.0 / 96;
constexpr double kLargest = 1e9;   // map units: beyond, nothing could be seen of it
constexpr double kUneven = 0.001;  // part of a length that nobody sees

constexpr std::string_view kDrawing[] = {"rect",    "circle", "ellipse", "line",  "polyline",
                                         "polygon", "path",   "text",    "image", "foreignObject"};
constexpr std::string_view kHolding[] = {"g", "a", "svg", "switch"};

template <typename Names>
bool IsOneOf(std::string_view name, const Names& names) {
  return std::ranges::find(names, name) != std::end(names);
}

// The map from a box of user units to a place of a size: "xMidYMid meet" and its like.
AGAffineTransform FitBox(const std::vector<double>& box, const AGSize& size, std::string_view fit) {
  double x = size.width / box[2];
  double y = size.height / box[3];
  if (!fit.starts_with("none")) x = y = fit.ends_with("slice") ? std::max(x, y) : std::min(x, y);
  const auto part = [fit](std::string_view least, std::string_view most) {
    return fit.find(least) != fit.npos ? 0 : fit.find(most) != fit.npos ? 1 : 0.5;
  };
  return {x,
          0,
          0,
          y,
          (size.width - x * box[2]) * part("xMin", "xMax") - x * box[0],
          (size.height - y * box[3]) * part("YMin", "YMax") - y * box[1]};
}

bool TakeBox(std::string_view text, std::vector<double>* box) {
  return SvgNumbers(text, box) && box->size() == 4 && (*box)[2] > 0 && (*box)[3] > 0;
}

class Reader {
 public:
  explicit Reader(SvgTree tree) : tree_(std::move(tree)), styles_(&tree_.styles) {}
  Result<SvgPicture> Read();

 private:
  bool StartPicture(SvgStyle* style);
  void StartInner(const SvgProperties& properties, const SvgProperties& size, SvgStyle* style);
  void Visit(const SvgElement& element, const SvgStyle& inherited, const SvgElement* user);
  void VisitAll(const SvgElement& element, const SvgStyle& style);
  void Use(const SvgElement& element, const SvgProperties& properties, SvgStyle style);
  void Draw(const SvgElement& element, const SvgProperties& properties, SvgStyle* style);
  std::optional<SvgRectangle> Placed(const SvgProperties& properties, SvgStyle* style, bool* isSheared);
  bool Paint(const SvgProperties& properties, const SvgStyle& style, SvgRectangle* taken) const;
  bool Outline(const SvgStyle& style, SvgRectangle* taken) const;
  void LeaveOut(SvgNote note) { ++picture_.leftOut[static_cast<std::size_t>(note)]; }

  SvgTree tree_;
  SvgStyles styles_;
  SvgPicture picture_;
  std::vector<const SvgElement*> used_;  // that are being drawn for elements that use them
  std::size_t visited_ = 0;
  std::optional<Text> why_;
};

void Note(SvgNote note, SvgRectangle* taken) { taken->differs.set(static_cast<std::size_t>(note)); }

bool Reader::StartPicture(SvgStyle* style) {
  const SvgElement& element = *tree_.root;
  std::vector<double> box;
  const bool hasBox = TakeBox(element.Get("viewBox"), &box);
  const AGSize usual = hasBox ? AGSize{box[2], box[3]} : AGSize{300, 150};
  const AGSize size{SvgLength(element.Get("width"), usual.width).value_or(usual.width),
                    SvgLength(element.Get("height"), usual.height).value_or(usual.height)};
  const bool isFair = size.width > 0 && size.height > 0 && size.width < kLargest && size.height < kLargest;
  if (!isFair) {
    why_ = N_("the picture has no size");
    return false;
  }
  picture_.size = {size.width * kMapUnitsAPixel, size.height * kMapUnitsAPixel};
  style->whole = hasBox ? usual : size;
  if (hasBox) style->toPicture = FitBox(box, size, element.Get("preserveAspectRatio"));
  return true;
}

// A picture within the picture, or a symbol: `size` has its width and height where they are not its own.
void Reader::StartInner(const SvgProperties& properties, const SvgProperties& size, SvgStyle* style) {
  const auto side = [&](std::string_view name, double whole) {
    const std::string_view text = size.Get(name).empty() ? properties.Get(name) : size.Get(name);
    return text.empty() || text == "auto" ? whole : style->Length(text, whole);
  };
  const AGSize place{side("width", style->whole.width), side("height", style->whole.height)};
  const AGPoint corner{style->Length(properties.Get("x"), style->whole.width),
                       style->Length(properties.Get("y"), style->whole.height)};
  style->shown = style->shown && place.width > 0 && place.height > 0;
  style->toPicture = AGAffineTransformConcat(AGAffineTransformTranslation(corner.x, corner.y), style->toPicture);
  const std::string_view overflow = properties.Get("overflow");
  if (overflow != "visible" && overflow != "auto") {
    style->clips.push_back({style->toPicture, {0, 0, place.width, place.height}});
  }
  std::vector<double> box;
  style->whole = place;
  if (!TakeBox(properties.Get("viewBox"), &box)) return;
  style->whole = {box[2], box[3]};
  style->toPicture =
      AGAffineTransformConcat(FitBox(box, place, properties.Get("preserveAspectRatio")), style->toPicture);
}

void Reader::Visit(const SvgElement& element, const SvgStyle& inherited, const SvgElement* user) {
  const bool isInner = (element.name == "svg" && &element != tree_.root.get()) || element.name == "symbol";
  if (used_.size() >= kDeepestUse) why_ = N_("its elements use each other more than 16 deep");
  if (++visited_ > kMostVisited) why_ = N_("it has more than a million elements");
  if (why_ || (element.name == "symbol" && user == nullptr)) return;
  SvgStyle style = inherited;
  const SvgProperties properties = styles_.Of(element);
  ApplyProperties(tree_, properties, &style);
  if (isInner) StartInner(properties, user == nullptr ? SvgProperties() : styles_.Of(*user), &style);
  if (element.name == "switch") style.understood = false;  // which of its parts is shown is the viewer's choice
  if (!style.shown) return;
  if (element.name == "use") return Use(element, properties, std::move(style));
  if (isInner || IsOneOf(element.name, kHolding)) return VisitAll(element, style);
  if (style.isVisible && IsOneOf(element.name, kDrawing)) Draw(element, properties, &style);
}

void Reader::VisitAll(const SvgElement& element, const SvgStyle& style) {
  for (const auto& child : element.children) Visit(*child, style, nullptr);
}

// What uses itself, and what is nowhere, is not drawn; what lies in other files can't be.
void Reader::Use(const SvgElement& element, const SvgProperties& properties, SvgStyle style) {
  const std::string_view href = element.Get("href").empty() ? element.Get("xlink:href") : element.Get("href");
  const SvgElement* const found = tree_.Find(href);
  if (found == nullptr) {
    if (href.empty() || href.starts_with('#')) return;
    ++picture_.elements;
    return LeaveOut(SvgNote::kNotUnderstood);
  }
  if (std::ranges::find(used_, found) != used_.end()) return;
  const AGPoint by{style.Length(properties.Get("x"), style.whole.width),
                   style.Length(properties.Get("y"), style.whole.height)};
  style.toPicture = AGAffineTransformConcat(AGAffineTransformTranslation(by.x, by.y), style.toPicture);
  used_.push_back(found);
  Visit(*found, style, &element);
  used_.pop_back();
}

void Reader::Draw(const SvgElement& element, const SvgProperties& properties, SvgStyle* style) {
  bool isSheared = false;
  std::optional<SvgRectangle> taken;
  if (element.name == "rect") {
    taken = Placed(properties, style, &isSheared);
    if (!taken && style->understood && !isSheared) return;  // nothing of it is to be seen
  }
  if (++picture_.elements > kMostDrawn) {
    why_ = N_("it has more than 100,000 elements");
    return;
  }
  if (element.name != "rect") return LeaveOut(SvgNote::kNoRectangle);
  if (!style->understood) return LeaveOut(SvgNote::kNotUnderstood);
  if (isSheared) return LeaveOut(SvgNote::kSheared);
  if (style->isClipped) return LeaveOut(SvgNote::kClipped);
  if (!Paint(properties, *style, &*taken) || !Outline(*style, &*taken)) return LeaveOut(SvgNote::kNotUnderstood);
  picture_.rectangles.push_back(std::move(*taken));
}

// Whether a box shows all of a rectangle with these corners.
bool Holds(const SvgClip& clip, const AGPoint (&corners)[4]) {
  constexpr double kSlack = 1e-6;
  if (!(std::fabs(clip.toPicture.Determinant()) > 0)) return false;
  const AGAffineTransform back = AGAffineTransformInverse(clip.toPicture);
  const double slack = kSlack * (1 + clip.box.Width() + clip.box.Height());
  return std::ranges::all_of(corners, [&](const AGPoint& corner) {
    const AGPoint at = back.Apply(corner);
    return at.x >= clip.box.x0 - slack && at.x <= clip.box.x1 + slack && at.y >= clip.box.y0 - slack &&
           at.y <= clip.box.y1 + slack;
  });
}

// A rectangle without its paint; none for what draws nothing, is sheared, or not understood.
std::optional<SvgRectangle> Reader::Placed(const SvgProperties& properties, SvgStyle* style, bool* isSheared) {
  const double width = style->Length(properties.Get("width"), style->whole.width);
  const double height = style->Length(properties.Get("height"), style->whole.height);
  const double x = style->Length(properties.Get("x"), style->whole.width);
  const double y = style->Length(properties.Get("y"), style->whole.height);
  const AGAffineTransform& map = style->toPicture;
  const AGPoint along = map.ApplyLinear({width, 0});
  const AGPoint up = map.ApplyLinear({0, height});
  const double w = std::hypot(along.x, along.y) * kMapUnitsAPixel;
  const double h = std::hypot(up.x, up.y) * kMapUnitsAPixel;
  const AGPoint middle = map.Apply({x + width / 2, y + height / 2});
  const AGPoint center{middle.x * kMapUnitsAPixel, picture_.size.height - middle.y * kMapUnitsAPixel};
  if (!style->understood || !(width > 0) || !(height > 0) || w == 0 || h == 0) return std::nullopt;
  *isSheared =
      std::fabs(along.x * up.x + along.y * up.y) > 1e-6 * std::hypot(along.x, along.y) * std::hypot(up.x, up.y);
  style->understood = w < kLargest && h < kLargest && std::fabs(center.x) < kLargest && std::fabs(center.y) < kLargest;
  if (!style->understood || *isSheared) return std::nullopt;

  SvgRectangle taken;
  taken.bounds = {center.x - w / 2, center.y - h / 2, center.x + w / 2, center.y + h / 2};
  taken.angle = -std::atan2(along.y, along.x);
  const auto rx = SvgLength(properties.Get("rx"), style->whole.width);
  const auto ry = SvgLength(properties.Get("ry"), style->whole.height);
  const double radiusX = std::clamp(rx.value_or(ry.value_or(0)), 0.0, width / 2) * w / width;
  const double radiusY = std::clamp(ry.value_or(rx.value_or(0)), 0.0, height / 2) * h / height;
  taken.rounding = std::min(1.0, 2 * std::min(radiusX, radiusY) / std::min(w, h));
  if (taken.rounding > 0 && std::fabs(radiusX - radiusY) > kUneven * radiusX) Note(SvgNote::kCorners, &taken);
  const AGPoint corners[] = {map.Apply({x, y}), map.Apply({x + width, y}), map.Apply({x, y + height}),
                             map.Apply({x + width, y + height})};
  style->isClipped =
      style->isClipped || !std::ranges::all_of(style->clips, [&](const SvgClip& clip) { return Holds(clip, corners); });
  return taken;
}

bool Reader::Paint(const SvgProperties& properties, const SvgStyle& style, SvgRectangle* taken) const {
  taken->opacity = style.opacity;
  taken->brush.SetStyleNone();
  if (style.fill.color) taken->brush.SetStyleSolid(SvgFaded(*style.fill.color, style.fillOpacity));
  if (style.fill.gradient == nullptr) return true;
  const auto length = [&](const char* name, double whole) {
    return SvgLength(properties.Get(name), whole).value_or(0);
  };
  const AGPoint corner{length("x", style.whole.width), length("y", style.whole.height)};
  const SvgFilled filled{{corner.x, corner.y, corner.x + length("width", style.whole.width),
                          corner.y + length("height", style.whole.height)},
                         {taken->bounds.Width(), taken->bounds.Height()},
                         style.toPicture.Determinant() < 0,
                         style.whole};
  const auto made = BrushOfGradient(tree_, styles_, *style.fill.gradient, filled, style.fillOpacity);
  if (!made) return false;
  taken->brush = made->brush;
  if (!made->isExact) Note(SvgNote::kGradient, taken);
  return true;
}

bool Reader::Outline(const SvgStyle& style, SvgRectangle* taken) const {
  const double along = std::hypot(style.toPicture.a, style.toPicture.b);
  const double across = std::hypot(style.toPicture.c, style.toPicture.d);
  const double scale = style.keepsWidth ? 1 : std::sqrt(along * across);
  taken->strokeWidth = style.strokeWidth * scale * kMapUnitsAPixel;
  taken->pen.SetStyleNone();
  if (style.stroke.IsNone() || !(style.strokeWidth > 0)) return true;
  if (!(taken->strokeWidth > 0 && taken->strokeWidth < kLargest)) return false;
  auto color = style.stroke.color ? std::optional(SvgFaded(*style.stroke.color, style.strokeOpacity))
                                  : FirstColor(tree_, styles_, *style.stroke.gradient, style.strokeOpacity);
  if (!color) return true;
  taken->pen.SetStyleSolid(*color, 1);
  taken->pen.SetLineCap(style.cap);
  taken->pen.SetLineJoin(style.join);
  for (const double length : style.dashes) taken->dashes.push_back(length / style.strokeWidth);
  const bool areDashes = taken->dashes.empty() || AreDashes(taken->dashes);
  if (!areDashes) taken->dashes.clear();
  const bool isUneven = !style.keepsWidth && std::fabs(along - across) > kUneven * along;
  const bool coversOutline = style.strokesFirst && !style.fill.IsNone();
  if (!areDashes || isUneven || coversOutline || style.stroke.gradient != nullptr) Note(SvgNote::kOutline, taken);
  return true;
}

Result<SvgPicture> Reader::Read() {
  SvgStyle style;
  if (StartPicture(&style)) Visit(*tree_.root, style, nullptr);
  if (why_) return Problem(*why_);
  picture_.leftOut[static_cast<std::size_t>(SvgNote::kRules)] = styles_.NotUnderstood();
  return std::move(picture_);
}

}  // namespace

Result<SvgPicture> ReadSvg(const std::string& text) {
  auto tree = ReadSvgTree(text);
  if (!tree) return tree.Why();
  return Reader(std::move(*tree)).Read();
}

bool LooksLikeMarkup(const std::string& text) {
  const std::size_t first = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  return first != std::string::npos && text[first] == '<';
}

}  // namespace host
