// What a native path is made of: verbs, and the points that they use, in two arrays. Private to the native layer.
//
// A move or a line uses one point, a quadratic curve two (control, end), a cubic curve three (control, control, end), a
// close none. A verb other than a move that follows a close continues from the start of the closed subpath. The first
// verb is always a move.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "CoreGraphics/CGPath.h"
#include "platform/foundation/NativeObject.h"
#include "platform/paths/InlineArray.h"

struct CGPath final : platform::NativeObject {
  using Verb = std::uint8_t;  // a CGPathElementType

  /// A rounded rectangle has 10 verbs and 17 points, an ellipse 6 and 13: such shapes stay inside the object.
  static constexpr std::size_t kInlineItems = 24;

  platform::InlineArray<Verb, kInlineItems> verbs;
  platform::InlineArray<CGPoint, kInlineItems> points;
  CGPoint start{0, 0};    ///< where the last subpath begins
  CGPoint current{0, 0};  ///< where the next line begins; without meaning while there are no verbs

  static std::size_t PointCount(Verb verb) {
    constexpr std::size_t kCounts[] = {1, 1, 2, 3, 0};
    return kCounts[verb];
  }

  /// A number that no other path has, nor this one once it is changed; never 0.
  std::uint64_t Identity() const;
  void Changed() { identity_.store(0, std::memory_order_relaxed); }

 private:
  mutable std::atomic<std::uint64_t> identity_{0};  // 0: not asked for since the last change
};
