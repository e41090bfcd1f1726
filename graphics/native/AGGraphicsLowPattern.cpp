// Two-colour patterns.
#include <algorithm>
#include <cstring>
#include <memory>

#include "CoreGraphics/CGContext.h"
#include "graphics/native/AGGraphicsLow.h"
#include "graphics/native/AGGraphicsLowPaint.h"
#include "graphics/native/AGGraphicsLowSupport.h"

namespace AGGraphicsLow {
namespace {

constexpr int kCellSide = 8;

// Fills the squares of one colour; those of a row that follow each other are filled at once.
void FillSquares(CGContextRef context, const PatternRecord& record, bool ofColor1) {
  for (int y = 0; y < kCellSide; ++y) {
    const unsigned int bits = ofColor1 ? record.rows[y] : ~record.rows[y] & 0xFFU;
    const auto isSet = [bits](int x) { return (bits >> (7 - x) & 1) != 0; };
    for (int x = 0; x < kCellSide; ++x) {
      if (!isSet(x)) continue;
      const int first = x;
      while (x + 1 < kCellSide && isSet(x + 1)) ++x;
      CGContextFillRect(context, CGRectMake(first, y, x + 1 - first, 1));
    }
  }
}

void DeleteRecord(void* record) { delete static_cast<PatternRecord*>(record); }

}  // namespace

PatternRecord MakePatternRecord(const AGBrush& brush, double colorFactor) {
  // A record read from a file may hold any index.
  const unsigned int index = std::clamp(brush.PatternIndex(), 1U, AGBrush::kPatternCount);
  PatternRecord record{ApplyColorFactor(brush.Color(), colorFactor), ApplyColorFactor(brush.Color2(), colorFactor), {}};
  std::memcpy(record.rows, kAGBrushPatterns[index - 1], sizeof(record.rows));
  return record;
}

void _LowCGPatternCallback(void* info, CGContext* context) {
  const auto& record = *static_cast<const PatternRecord*>(info);
  SetFillColor(context, record.color2);
  if (record.color.Alpha() == 255) {
    CGContextFillRect(context, CGRectMake(0, 0, kCellSide, kCellSide));  // colour 1 covers its squares wholly
  } else {
    FillSquares(context, record, false);
  }
  SetFillColor(context, record.color);
  FillSquares(context, record, true);
}

CGPatternRef NewPattern(const PatternRecord& record) {
  const CGPatternCallbacks callbacks{0, &_LowCGPatternCallback, &DeleteRecord};
  auto copy = std::make_unique<PatternRecord>(record);
  CGPatternRef pattern = CGPatternCreate(copy.get(), CGRectMake(0, 0, kCellSide, kCellSide), CGAffineTransformIdentity,
                                         kCellSide, kCellSide, kCGPatternTilingConstantSpacing, true, &callbacks);
  if (pattern != nullptr) static_cast<void>(copy.release());  // it has the copy now
  return pattern;
}

}  // namespace AGGraphicsLow
