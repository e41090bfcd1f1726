// Paths cut into dashes. Private to the native layer.
#pragma once

#include <vector>

#include "platform/paths/CGPathValue.h"

namespace platform {

/// Appends to `out`, which is empty, the parts of a path that lie on the strokes of dashes: `lengths` are those of
/// strokes and gaps in turn, in units of the path, an even count, together above 0. False, with nothing of use in
/// `out`, where there would be more than 50,000 dashes or a point is no number.
bool AddDashes(const CGPath& path, const std::vector<double>& lengths, CGPath* out);

}  // namespace platform
