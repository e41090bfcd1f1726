// What users set of an object beside what it looks like: whether it is hidden or locked, and the groups that it is in.
//
// A group has no existence of its own: it is there as long as an object names it. The objects of a group stand together
// in one layer.
#pragma once

#include <cstdint>
#include <vector>

namespace host {

/// Names a group for as long as its document lives, as IDs of objects do. Not part of files.
using GroupID = std::uint64_t;
inline constexpr GroupID kNoGroupID = 0;

/// Groups lie no deeper in each other than this.
inline constexpr std::size_t kMostGroups = 64;

struct ObjectMarks {
  bool hidden = false;
  bool locked = false;
  std::vector<GroupID> groups;  ///< that the object is in, the outermost first

  bool operator==(const ObjectMarks&) const = default;
  bool IsPlain() const { return !hidden && !locked && groups.empty(); }
  /// The group at a depth, 0 for the outermost; kNoGroupID when there are fewer.
  GroupID GroupAt(std::size_t depth) const { return depth < groups.size() ? groups[depth] : kNoGroupID; }
};

}  // namespace host
