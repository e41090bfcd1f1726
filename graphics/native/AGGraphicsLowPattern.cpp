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

void _LowCGPatternCallback(void* info, CGContext* context) {
  auto const& record = *static_cast<PatternRecord const*>(info);
  for (int y = 0; y < 8; ++y) {
    unsigned int bits = record.rows[y];
    for (int x = 7; x >= 0; --x, bits >>= 1) {
      SetFillColor(context, (bits & 1) != 0 ? record.color : record.color2);
      CGContextFillRect(context, CGRectMake(x, y, 1, 1));
    }
  }
}

CGPatternRef NewPattern(PatternRecord* record) {
  const CGPatternCallbacks callbacks{0, &_LowCGPatternCallback, nullptr};
  return CGPatternCreate(record, CGRectMake(0, 0, kCellSide, kCellSide), CGAffineTransformIdentity, kCellSide,
                         kCellSide, kCGPatternTilingConstantSpacing, true, &callbacks);
}

}  // namespace AGGraphicsLow
