// The fields of a brush and a pen, one by one: what several objects have in common, and what differs among them.
#pragma once

#include <bitset>
#include <optional>
#include <vector>

#include "host/model/Document.h"
#include "host/model/EditRules.h"

namespace host {

enum class BrushField { kStyle, kColor, kColor2, kPattern, kBlend, kAngle, kCenterX, kCenterY, kFillMode };
enum class PenField { kSize, kSizeMode, kCap, kJoin, kRatio, kAngle };
using BrushFields = std::bitset<9>;  ///< by the numbers of BrushField
using PenFields = std::bitset<6>;

/// `to` gets the field of `from`; nothing else of it changes, but for colours that a new style would leave unseen: one
/// that was never chosen is transparent, and becomes black, or white as the second.
void TakeField(BrushField field, const AGBrush& from, AGBrush* to);
void TakeField(PenField field, const AGPen& from, AGPen* to);

/// Whether two brushes, or pens, paint alike: in what their style uses.
bool LookAlike(const AGBrush& a, const AGBrush& b);
bool LookAlike(const AGPen& a, const AGPen& b);

/// The style of the first object, and the fields of brush and pen that others have differently.
struct SharedStyle {
  AGBrush brush;
  AGPen pen;
  double opacity = 1;          ///< as ObjectLook has it
  std::vector<double> dashes;  ///< likewise
  BrushFields brushDiffers;
  BrushFields penBrushDiffers;
  PenFields penDiffers;
};

/// Placeholders, which can't be changed, are passed over; nothing when there are no others.
std::optional<SharedStyle> StyleOf(const Document& document, const ObjectIDs& ids);

}  // namespace host
