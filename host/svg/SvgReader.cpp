#include <glib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "host/svg/SvgRectangle.h"
#include "host/svg/SvgValues.h"
#include "host/text/Utf8Check.h"

namespace host {
namespace {

constexpr std::size_t kDeepest = 256;
constexpr std::size_t kMostElements = 100000;
constexpr double kMapUnitsAPixel = 72.0 / 96;
constexpr double kLargest = 1e9;  // map units: beyond, nothing could be seen of it

// What elements have of those that they are in.
struct Style {
  AGAffineTransform toPicture = kAGAffineTransformIdentity;  // pixels, y down
  std::optional<AGColor> fill = kAGColorBlack;
  std::optional<AGColor> stroke;
  double strokeWidth = 1;
  double opacity = 1;  // of all that it is in together
  double fillOpacity = 1;
  double strokeOpacity = 1;
  bool shown = true;       // is drawn at all
  bool isVisible = true;   // may be seen again within
  bool understood = true;  // paint and transforms
};

constexpr const char* kDrawing[] = {"rect", "circle", "ellipse", "line", "polyline",     "polygon",
                                    "path", "text",   "image",   "use",  "foreignObject"};
// What is in these is only drawn elsewhere, or not at all.
constexpr const char* kNotDrawn[] = {"defs",           "symbol",         "clipPath", "mask",  "pattern",
                                     "marker",         "linearGradient", "filter",   "style", "metadata",
                                     "radialGradient", "script",         "title",    "desc"};

template <typename Names>
bool IsOneOf(std::string_view name, const Names& names) {
  return std::any_of(std::begin(names), std::end(names), [name](const char* each) { return name == each; });
}

void SetPaint(std::string_view text, std::optional<AGColor>* paint, bool* understood) {
  if (text == "none" || text == "inherit") {
    if (text == "none") paint->reset();
    return;
  }
  const auto color = SvgColor(text == "currentColor" ? "black" : text);
  color ? static_cast<void>(*paint = color) : static_cast<void>(*understood = false);
}

void SetProperty(std::string_view name, std::string_view value, double whole, Style* style) {
  if (name == "fill") SetPaint(value, &style->fill, &style->understood);
  if (name == "stroke") SetPaint(value, &style->stroke, &style->understood);
  if (name == "stroke-width") style->strokeWidth = SvgLength(value, whole).value_or(style->strokeWidth);
  if (name == "opacity") style->opacity *= SvgFraction(value).value_or(1);
  if (name == "fill-opacity") style->fillOpacity = SvgFraction(value).value_or(style->fillOpacity);
  if (name == "stroke-opacity") style->strokeOpacity = SvgFraction(value).value_or(style->strokeOpacity);
  if (name == "display" && value == "none") style->shown = false;
  if (name == "visibility") style->isVisible = value == "visible" || (value == "inherit" && style->isVisible);
}

std::optional<AGColor> Faded(const std::optional<AGColor>& color, double opacity) {
  if (!color) return color;
  const double alpha = std::clamp(color->Alpha() * opacity, 0.0, 255.0);
  return AGColor(color->Red(), color->Green(), color->Blue(), static_cast<unsigned char>(std::lround(alpha)));
}

class Reader {
 public:
  Result<SvgPicture> Read(const std::string& text);

 private:
  // The attributes of an element, as the parser gives them.
  struct Element {
    const char** names;
    const char** values;

    std::string_view Get(std::string_view name) const {
      for (std::size_t i = 0; names[i] != nullptr; ++i) {
        if (name == names[i]) return values[i];
      }
      return {};
    }
  };

  static void OnStart(GMarkupParseContext* context, const char* name, const char** names, const char** values,
                      void* self, GError** error);
  static void OnEnd(GMarkupParseContext*, const char*, void* self, GError**) {
    static_cast<Reader*>(self)->styles_.pop_back();
  }
  static void OnOther(GMarkupParseContext*, const char* text, gsize length, void* self, GError** error);

  bool Start(std::string_view name, const Element& element);
  bool StartPicture(const Element& element, Style* style);
  void Inherit(const Element& element, Style* style) const;
  void TakeRectangle(const Element& element, const Style& style);
  double LengthOf(const Element& element, const char* name, double whole) const {
    return SvgLength(element.Get(name), whole).value_or(0);
  }

  std::vector<Style> styles_;
  SvgPicture picture_;
  AGSize whole_{100, 100};  // what percentages are of, in user units
  std::optional<Text> why_;
};

void Reader::OnStart(GMarkupParseContext*, const char* name, const char** names, const char** values, void* self,
                     GError** error) {
  const char* const colon = std::strrchr(name, ':');
  if (static_cast<Reader*>(self)->Start(colon == nullptr ? name : colon + 1, {names, values})) return;
  g_set_error_literal(error, G_MARKUP_ERROR, G_MARKUP_ERROR_INVALID_CONTENT, "refused");
}

// Comments, declarations and types of documents; one with entities in it would be read wrong without them.
void Reader::OnOther(GMarkupParseContext*, const char* text, gsize length, void* self, GError** error) {
  if (std::string_view(text, length).find("<!ENTITY") == std::string_view::npos) return;
  static_cast<Reader*>(self)->why_ = N_("the picture has entities of its own, which are not taken");
  g_set_error_literal(error, G_MARKUP_ERROR, G_MARKUP_ERROR_INVALID_CONTENT, "entities");
}

bool Reader::StartPicture(const Element& element, Style* style) {
  std::vector<double> box;
  const bool hasBox = SvgNumbers(element.Get("viewBox"), &box) && box.size() == 4 && box[2] > 0 && box[3] > 0;
  const AGSize usual = hasBox ? AGSize{box[2], box[3]} : AGSize{300, 150};
  const AGSize size{SvgLength(element.Get("width"), usual.width).value_or(usual.width),
                    SvgLength(element.Get("height"), usual.height).value_or(usual.height)};
  const bool isFair = size.width > 0 && size.height > 0 && size.width < kLargest && size.height < kLargest;
  if (!isFair) {
    why_ = N_("the picture has no size");
    return false;
  }
  picture_.size = {size.width * kMapUnitsAPixel, size.height * kMapUnitsAPixel};
  whole_ = usual;
  if (!hasBox) {
    whole_ = size;
    return true;
  }
  const std::string_view fit = element.Get("preserveAspectRatio");
  double x = size.width / box[2];
  double y = size.height / box[3];
  if (!SvgTrimmed(fit).starts_with("none")) x = y = std::min(x, y);
  style->toPicture = {
      x, 0, 0, y, (size.width - x * box[2]) / 2 - x * box[0], (size.height - y * box[3]) / 2 - y * box[1]};
  return true;
}

void Reader::Inherit(const Element& element, Style* style) const {
  const double whole = std::hypot(whole_.width, whole_.height) / std::sqrt(2.0);
  for (std::size_t i = 0; element.names[i] != nullptr; ++i) {
    SetProperty(element.names[i], SvgTrimmed(element.values[i]), whole, style);
  }
  for (const auto& [name, value] : SvgDeclarations(element.Get("style"))) SetProperty(name, value, whole, style);
  if (element.Get("transform").empty()) return;
  const auto transform = SvgTransform(element.Get("transform"));
  style->understood = style->understood && transform;
  if (transform) style->toPicture = AGAffineTransformConcat(*transform, style->toPicture);
}

bool Reader::Start(std::string_view name, const Element& element) {
  Style style = styles_.empty() ? Style() : styles_.back();
  if (styles_.empty() && name != "svg") why_ = N_("it is no SVG picture");
  if (styles_.size() >= kDeepest) why_ = N_("its elements lie more than 256 deep in each other");
  if (why_) return false;
  if (styles_.empty() && !StartPicture(element, &style)) return false;
  Inherit(element, &style);
  style.shown = style.shown && !IsOneOf(name, kNotDrawn);
  // An inner picture has a box of its own, which is not looked at.
  if (!styles_.empty() && name == "svg") style.understood = false;
  styles_.push_back(style);
  if (!style.shown || !style.isVisible || !IsOneOf(name, kDrawing)) return true;
  if (++picture_.elements > kMostElements) {
    why_ = N_("it has more than 100,000 elements");
    return false;
  }
  if (name == "rect" && style.understood) TakeRectangle(element, style);
  return true;
}

void Reader::TakeRectangle(const Element& element, const Style& style) {
  const double width = LengthOf(element, "width", whole_.width);
  const double height = LengthOf(element, "height", whole_.height);
  const AGAffineTransform& map = style.toPicture;
  const AGPoint along = map.ApplyLinear({width, 0});
  const AGPoint up = map.ApplyLinear({0, height});
  const double w = std::hypot(along.x, along.y) * kMapUnitsAPixel;
  const double h = std::hypot(up.x, up.y) * kMapUnitsAPixel;
  const AGPoint middle =
      map.Apply({LengthOf(element, "x", whole_.width) + width / 2, LengthOf(element, "y", whole_.height) + height / 2});
  const AGPoint center{middle.x * kMapUnitsAPixel, picture_.size.height - middle.y * kMapUnitsAPixel};
  const double slant = std::fabs(along.x * up.x + along.y * up.y);
  const bool isSheared = slant > 1e-6 * std::hypot(along.x, along.y) * std::hypot(up.x, up.y);
  const bool isFair = width > 0 && height > 0 && w > 0 && h > 0 && w < kLargest && h < kLargest &&
                      std::fabs(center.x) < kLargest && std::fabs(center.y) < kLargest;
  if (isSheared || !isFair) return;

  SvgRectangle taken;
  taken.bounds = {center.x - w / 2, center.y - h / 2, center.x + w / 2, center.y + h / 2};
  taken.angle = -std::atan2(along.y, along.x);
  const auto rx = SvgLength(element.Get("rx"), whole_.width);
  const auto ry = SvgLength(element.Get("ry"), whole_.height);
  const double radiusX = std::clamp(rx.value_or(ry.value_or(0)), 0.0, width / 2) * w / width;
  const double radiusY = std::clamp(ry.value_or(rx.value_or(0)), 0.0, height / 2) * h / height;
  taken.rounding = std::min(1.0, 2 * std::min(radiusX, radiusY) / std::min(w, h));
  taken.fill = Faded(style.fill, style.opacity * style.fillOpacity);
  taken.stroke = Faded(style.stroke, style.opacity * style.strokeOpacity);
  taken.strokeWidth = style.strokeWidth * std::sqrt(std::fabs(map.Determinant())) * kMapUnitsAPixel;
  if (!(taken.strokeWidth > 0) || taken.strokeWidth > kLargest) taken.stroke.reset();
  picture_.rectangles.push_back(taken);
}

Result<SvgPicture> Reader::Read(const std::string& text) {
  constexpr std::string_view kByteOrder = "\xEF\xBB\xBF";
  std::string_view body = text;
  if (body.starts_with(kByteOrder)) body.remove_prefix(kByteOrder.size());
  // In comments and declarations the parser would tell of it, go on, and perhaps fail once more.
  if (const std::size_t good = std::min(FindInvalidUtf8(body), body.find('\0')); good < body.size()) {
    return Problem(N_("it is no XML in UTF-8: %s"), {"byte " + std::to_string(good)});
  }
  const GMarkupParser parser{&OnStart, &OnEnd, nullptr, &OnOther, nullptr};
  GMarkupParseContext* const context = g_markup_parse_context_new(&parser, G_MARKUP_TREAT_CDATA_AS_TEXT, this, nullptr);
  GError* error = nullptr;
  const bool isWhole = g_markup_parse_context_parse(context, body.data(), static_cast<gssize>(body.size()), &error) &&
                       g_markup_parse_context_end_parse(context, &error);
  g_markup_parse_context_free(context);
  const std::string said = error == nullptr ? "" : error->message;
  g_clear_error(&error);
  if (why_) return Problem(*why_);
  if (!isWhole) return Problem(N_("it is no XML in UTF-8: %s"), {said});
  return std::move(picture_);
}

}  // namespace

Result<SvgPicture> ReadSvg(const std::string& text) { return Reader().Read(text); }

bool LooksLikeMarkup(const std::string& text) {
  const std::size_t first = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  return first != std::string::npos && text[first] == '<';
}

}  // namespace host
