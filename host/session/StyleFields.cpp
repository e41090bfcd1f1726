#include "host/session/StyleFields.h"

namespace host {
namespace {

void TakeStyle(const AGBrush& from, AGBrush* to) {
  const AGBrushStyle style = from.Style();
  if (style == to->Style()) return;
  to->SetStyle(style);
  if (style != kAGBrushStyleNone && to->Color().Alpha() == 0) to->SetColor(kAGColorBlack);
  if (style > kAGBrushStyleSolid && to->Color2().Alpha() == 0) to->SetColor2(kAGColorWhite);
}

void NoteDifferences(const AGBrush& a, const AGBrush& b, BrushFields* differs) {
  const bool each[] = {a.Style() != b.Style(),
                       !(a.Color() == b.Color()),
                       !(a.Color2() == b.Color2()),
                       a.PatternIndex() != b.PatternIndex(),
                       a.GradientBlend() != b.GradientBlend(),
                       a.GradientAngle() != b.GradientAngle(),
                       a.GradientCenterX() != b.GradientCenterX(),
                       a.GradientCenterY() != b.GradientCenterY(),
                       a.FillMode() != b.FillMode()};
  for (std::size_t i = 0; i < std::size(each); ++i) differs->set(i, differs->test(i) || each[i]);
}

void NoteDifferences(const AGPen& a, const AGPen& b, PenFields* differs) {
  const bool each[] = {a.Size() != b.Size(),         a.SizeMode() != b.SizeMode(), a.LineCap() != b.LineCap(),
                       a.LineJoin() != b.LineJoin(), a.Ratio() != b.Ratio(),       a.Angle() != b.Angle()};
  for (std::size_t i = 0; i < std::size(each); ++i) differs->set(i, differs->test(i) || each[i]);
}

template <typename Fields, typename... Used>
Fields FieldsOf(Used... used) {
  Fields fields;
  (fields.set(static_cast<std::size_t>(used)), ...);
  return fields;
}

BrushFields FieldsUsedBy(AGBrushStyle style) {
  using enum BrushField;
  switch (style) {
    case kAGBrushStyleNone:
      return FieldsOf<BrushFields>(kStyle);
    case kAGBrushStyleSolid:
      return FieldsOf<BrushFields>(kStyle, kColor);
    case kAGBrushStylePattern:
      return FieldsOf<BrushFields>(kStyle, kColor, kColor2, kPattern);
    case kAGBrushStyleLinearGradient:
      return FieldsOf<BrushFields>(kStyle, kColor, kColor2, kBlend, kAngle);
    case kAGBrushStyleRadialGradient:
      return FieldsOf<BrushFields>(kStyle, kColor, kColor2, kBlend, kCenterX, kCenterY);
    default:
      return BrushFields().set();
  }
}

}  // namespace

bool LookAlike(const AGBrush& a, const AGBrush& b) {
  BrushFields differs;
  NoteDifferences(a, b, &differs);
  return (differs & FieldsUsedBy(a.Style())).none();
}

bool LookAlike(const AGPen& a, const AGPen& b) {
  PenFields differs;
  NoteDifferences(a, b, &differs);
  const bool isNone = a.Brush().Style() == kAGBrushStyleNone;
  return LookAlike(a.Brush(), b.Brush()) && (isNone || differs.none());
}

void TakeField(BrushField field, const AGBrush& from, AGBrush* to) {
  switch (field) {
    case BrushField::kStyle:
      return TakeStyle(from, to);
    case BrushField::kColor:
      return to->SetColor(from.Color());
    case BrushField::kColor2:
      return to->SetColor2(from.Color2());
    case BrushField::kPattern:
      return to->SetPatternIndex(from.PatternIndex());
    case BrushField::kBlend:
      return to->SetGradientBlend(from.GradientBlend());
    case BrushField::kAngle:
      return to->SetGradientAngle(from.GradientAngle());
    case BrushField::kCenterX:
      return to->SetGradientCenterX(from.GradientCenterX());
    case BrushField::kCenterY:
      return to->SetGradientCenterY(from.GradientCenterY());
    case BrushField::kFillMode:
      return to->SetFillMode(from.FillMode());
  }
}

void TakeField(PenField field, const AGPen& from, AGPen* to) {
  switch (field) {
    case PenField::kSize:
      return to->SetSize(from.Size());
    case PenField::kSizeMode:
      return to->SetSizeMode(from.SizeMode());
    case PenField::kCap:
      return to->SetLineCap(from.LineCap());
    case PenField::kJoin:
      return to->SetLineJoin(from.LineJoin());
    case PenField::kRatio:
      return to->SetRatio(from.Ratio());
    case PenField::kAngle:
      return to->SetAngle(from.Angle());
  }
}

std::optional<SharedStyle> StyleOf(const Document& document, const ObjectIDs& ids) {
  std::optional<SharedStyle> shared;
  for (const ObjectID id : ids) {
    const DocumentObject* object = document.Find(id);
    if (object == nullptr || object->IsPlaceholder()) continue;
    if (!shared) {
      const ObjectLook& look = object->marks.look;
      shared = SharedStyle{object->brush, object->pen, look.opacity, look.dashes, {}, {}, {}};
    }
    NoteDifferences(shared->brush, object->brush, &shared->brushDiffers);
    NoteDifferences(shared->pen.Brush(), object->pen.Brush(), &shared->penBrushDiffers);
    NoteDifferences(shared->pen, object->pen, &shared->penDiffers);
  }
  return shared;
}

}  // namespace host
