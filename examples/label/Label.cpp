#include "Label.h"

#include <algorithm>
#include <cmath>

#include "CrossingText.h"
#include "graphics/geometry/AGGeometry.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/text/AKArgs.h"
#include "kit/text/AKTextConversions.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueHelpers.h"

namespace {

constexpr unsigned int kReservedBytes = 16;
constexpr AGFontStyle kStyles = kAGFontStyleBold | kAGFontStyleItalic;

// Text is laid out in this size and then scaled to the bounds.
constexpr double kLayoutSize = 100;
// What stays free around it, as a part of the shorter side.
constexpr double kMargin = 0.05;

const AKValueEnums kAlignments[] = {
    {kAGTextAlignmentLeft, "Left"}, {kAGTextAlignmentCenter, "Center"}, {kAGTextAlignmentRight, "Right"}, {0, ""}};

const AKString kKey_Text("Text");
const AKString kKey_Font("Font");
const AKString kKey_Bold("Bold");
const AKString kKey_Italic("Italic");
const AKString kKey_Alignment("Alignment");
const AKString kKey_Paper("Paper");

// A record's string ends at its first NUL, so that no text has one.
AKString Cut(const AKString& text, unsigned int length) {
  AKString cut(text.CStr());
  cut.SetMaxLength(length);
  return cut;
}

// What the text covers, its own height included, so that "x" is not drawn as high as "X".
AGRect BoxOf(const AKUniChars& text, const AGFont& font, AGTextAlignment alignment) {
  AGPath outlines;
  outlines.AddUText(text, font, {0, 0}, alignment);
  const AGSize extent = font.GetUTextExtent(text);
  const double left = alignment == kAGTextAlignmentLeft ? 0 : alignment == kAGTextAlignmentRight ? -1 : -0.5;
  AGRect box{left * extent.width, font.GetAscent() - extent.height, (left + 1) * extent.width, font.GetAscent()};
  if (outlines.IsEmpty()) return box;
  const AGRect painted = outlines.GetBoundingBox();
  return {std::min(box.x0, painted.x0), std::min(box.y0, painted.y0), std::max(box.x1, painted.x1),
          std::max(box.y1, painted.y1)};
}

// The map that fits the box into the bounds, on the side that the alignment asks for.
AGAffineTransform FitInto(const AGRect& bounds, const AGRect& box, AGTextAlignment alignment) {
  const double scale = std::min(bounds.Width() / box.Width(), bounds.Height() / box.Height());
  const double room = bounds.Width() - scale * box.Width();
  const double left = alignment == kAGTextAlignmentLeft ? 0 : alignment == kAGTextAlignmentRight ? room : room / 2;
  const double below = (bounds.Height() - scale * box.Height()) / 2;
  return {scale, 0, 0, scale, bounds.x0 + left - scale * box.x0, bounds.y0 + below - scale * box.y0};
}

bool IsFinite(const AGRect& rect) {
  return std::isfinite(rect.x0) && std::isfinite(rect.y0) && std::isfinite(rect.Width()) &&
         std::isfinite(rect.Height());
}

}  // namespace

void Label::SetText(const AKString& text) { text_ = Cut(text, kLongestText); }
void Label::SetFontName(const AKString& name) { fontName_ = Cut(name, kLongestFontName); }

int Label::akmInitWithArgs(const AKArgs& args) {
  if (args.IsParam("-text:")) SetText(args.GetParam("-text:"));
  if (args.IsParam("-font:")) SetFontName(args.GetParam("-font:"));
  SetStyleBit(kAGFontStyleBold, args.IsParam("-bold"));
  SetStyleBit(kAGFontStyleItalic, args.IsParam("-italic"));
  AKValue word;
  word.SetasAKString(args.GetParam("-align:"));
  AKValueGetasEnum(word, &alignment_, kAlignments);
  strGetasAGColorHex(args.GetParam("-paper:").CStr(), &paper_, paper_);
  return 0;
}

int Label::akmInitFromFile(const AKFile& file, unsigned int) {
  unsigned int style = 0;
  unsigned int alignment = 0;
  AKString font;
  AKString text;
  int status = AKFileReadUInt32(file, &style);
  if (status == 0) status = AKFileReadUInt32(file, &alignment);
  if (status == 0) status = AKFileReadAGColor(file, &paper_);
  if (status == 0) status = AKFileReadAKString(file, &font);
  if (status == 0) status = AKFileReadAKString(file, &text);
  if (status == 0) status = AKFileSkip(file, kReservedBytes);
  if (status != 0) return status;
  style_ = style & kStyles;
  alignment_ = std::clamp(alignment, kAGTextAlignmentLeft, kAGTextAlignmentRight);
  SetFontName(font);
  SetText(text);
  return 0;
}

int Label::akmWriteToFile(AKFile& file) const {
  int status = AKFileWriteUInt32(file, style_);
  if (status == 0) status = AKFileWriteUInt32(file, alignment_);
  if (status == 0) status = AKFileWriteAGColor(file, paper_);
  if (status == 0) status = AKFileWriteAKString(file, fontName_);
  if (status == 0) status = AKFileWriteAKString(file, text_);
  return status == 0 ? AKFileWriteZeros(file, kReservedBytes) : status;
}

int Label::akmSetObjectProperties(const AKDictionary& properties) {
  AKString text;
  if (AKValueGetasAKString(properties.GetValue(kKey_Text), &text, true)) SetText(text);
  if (AKValueGetasAKString(properties.GetValue(kKey_Font), &text, true)) SetFontName(text);
  bool on = false;
  if (AKValueGetasBool(properties.GetValue(kKey_Bold), &on, true)) SetStyleBit(kAGFontStyleBold, on);
  if (AKValueGetasBool(properties.GetValue(kKey_Italic), &on, true)) SetStyleBit(kAGFontStyleItalic, on);
  AKValueGetasEnum(properties.GetValue(kKey_Alignment), &alignment_, kAlignments);
  AKValueGetasAGColor(properties.GetValue(kKey_Paper), &paper_, true);
  return 0;
}

int Label::akmGetObjectProperties(AKDictionary* properties) const {
  properties->SetValue(kKey_Text, AKValueSetasAKString(text_));
  properties->SetValue(kKey_Font, AKValueSetasAKString(fontName_));
  properties->SetValue(kKey_Bold, AKValueSetasBool((style_ & kAGFontStyleBold) != 0));
  properties->SetValue(kKey_Italic, AKValueSetasBool((style_ & kAGFontStyleItalic) != 0));
  properties->SetValue(kKey_Alignment, AKValueSetasEnum(alignment_, kAlignments));
  properties->SetValue(kKey_Paper, AKValueSetasAGColor(paper_));
  return 0;
}

int Label::akmDraw(const AGContext& context, const AKDrawEvent& event) const {
  AGContext copy(context);
  event.SetupContextWithRecommendedBrushAndPen(&copy);
  AGRect bounds = event.bounds;
  bounds.Normalize();
  if (!copy.WouldFillOrStroke() || !IsFinite(bounds) || bounds.IsEmpty()) return 0;
  const AGAffineTransform turn = AGAffineTransformRotation(event.angle, bounds.Center());
  if (paper_.Alpha() != 0) {
    AGContext sheet(copy);
    sheet.brush.SetStyleSolid(paper_);
    sheet.pen.SetStyleNone();
    AGPath path;
    path.AddRect(bounds, true);
    sheet.DrawPath(path, turn);
  }
  DrawText(copy, bounds, turn);
  return 0;
}

// As text, not as outlines: on a PDF page it can be searched and copied.
void Label::DrawText(const AGContext& context, const AGRect& bounds, const AGAffineTransform& turn) const {
  const AKUniChars text = CodeUnitsOf(text_);
  const AGFont font(fontName_, kLayoutSize, style_);
  const AGRect box = BoxOf(text, font, alignment_);
  if (!IsFinite(box) || box.IsEmpty()) return;
  const double margin = kMargin * std::min(bounds.Width(), bounds.Height());
  const AGRect room{bounds.x0 + margin, bounds.y0 + margin, bounds.x1 - margin, bounds.y1 - margin};
  const AGAffineTransform place = AGAffineTransformConcat(FitInto(room, box, alignment_), turn);
  context.DrawUText(text, font, {0, 0}, place, alignment_);
}
