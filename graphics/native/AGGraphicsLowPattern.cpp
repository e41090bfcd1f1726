// Two-colour patterns.
#include <algorithm>
#include <cstring>

#include "CoreGraphics/CGContext.h"
#include "graphics/native/AGGraphicsLow.h"
#include "graphics/native/AGGraphicsLowPaint.h"
#include "graphics/native/AGGraphicsLowSupport.h"

namespace AGGraphicsLow {
namespace {

constexpr double kCellSide = 8;

}  // namespace

PatternRecord MakePatternRecord(AGBrush const& brush, double colorFactor) {
  // A record read from a file may hold any index.
  const unsigned int index = std::clamp(brush.PatternIndex(), 1U, AGBrush::kPatternCount);
  PatternRecord record{ApplyColorFactor(brush.Color(), colorFactor), ApplyColorFactor(brush.Color2(), colorFactor), {}};
  std::memcpy(record.rows, kAGBrushPatterns[index - 1], sizeof(record.rows));
  return record;
}

// The squares of a row that follow each other in one colour are filled at once.
void _LowCGPatternCallback(void* info, CGContext* context) {
  auto const& record = *static_cast<PatternRecord const*>(info);
  for (int y = 0; y < 8; ++y) {
    const unsigned int bits = record.rows[y];
    const auto isSet = [bits](int x) { return (bits >> (7 - x) & 1) != 0; };
    for (int x = 0, end = 0; x < 8; x = end) {
      while (end < 8 && isSet(end) == isSet(x)) ++end;
      SetFillColor(context, isSet(x) ? record.color : record.color2);
      CGContextFillRect(context, CGRectMake(x, y, end - x, 1));
    }
  }
}

CGPatternRef NewPattern(PatternRecord* record) {
  const CGPatternCallbacks callbacks{0, &_LowCGPatternCallback, nullptr};
  return CGPatternCreate(record, CGRectMake(0, 0, kCellSide, kCellSide), CGAffineTransformIdentity, kCellSide,
                         kCellSide, kCGPatternTilingConstantSpacing, true, &callbacks);
}

}  // namespace AGGraphicsLow
