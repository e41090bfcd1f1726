// What users set of an object that its class knows nothing of: whether it is hidden or locked, the groups that it is
// in, how the host shows what the class draws, and the text that it draws above it.
//
// A group has no existence of its own: it is there as long as an object names it. The objects of a group stand together
// in one layer.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/labels/ObjectLabel.h"

namespace host {

/// Names a group for as long as its document lives, as IDs of objects do. Not part of files.
using GroupID = std::uint64_t;
inline constexpr GroupID kNoGroupID = 0;

/// Groups lie no deeper in each other than this.
inline constexpr std::size_t kMostGroups = 64;

/// How what an object's class draws is shown.
struct ObjectLook {
  double opacity = 1;  ///< of all of it as one, 0 to 1
  // Mirrored images: what the class would draw with the angle at which it is the image, with left and right, or top and
  // bottom, exchanged about the middle of the bounds.
  bool flippedX = false;
  bool flippedY = false;
  /// Lengths of strokes and gaps in turn, in widths of the pen; empty for lines without gaps.
  std::vector<double> dashes;

  static constexpr std::size_t kMostDashes = 16;

  bool operator==(const ObjectLook&) const = default;
  bool IsPlain() const { return opacity == 1 && !flippedX && !flippedY && dashes.empty(); }
  bool IsFlipped() const { return flippedX || flippedY; }
};

/// Whether lengths can be those of dashes: an even number of them, none below 0, together at least 0.01.
bool AreDashes(const std::vector<double>& lengths);

struct ObjectMarks {
  bool hidden = false;
  bool locked = false;
  std::vector<GroupID> groups;  ///< that the object is in, the outermost first

  ObjectLook look{};
  std::shared_ptr<const ObjectLabel> label{};  ///< null for none; copies share it

  bool operator==(const ObjectMarks& other) const;
  /// Neither hidden nor locked nor in a group.
  bool IsLoose() const { return !hidden && !locked && groups.empty(); }
  bool IsPlain() const { return IsLoose() && look.IsPlain() && label == nullptr; }
  /// The group at a depth, 0 for the outermost; kNoGroupID when there are fewer.
  GroupID GroupAt(std::size_t depth) const { return depth < groups.size() ? groups[depth] : kNoGroupID; }
};

}  // namespace host
