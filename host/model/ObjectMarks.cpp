#include "host/model/ObjectMarks.h"

#include <algorithm>
#include <numeric>

namespace host {

bool AreDashes(const std::vector<double>& lengths) {
  constexpr double kLeast = 0.01;  // of all together
  constexpr double kMost = 1e6;
  const auto isLength = [](double length) { return length >= 0 && length <= kMost; };
  return !lengths.empty() && lengths.size() <= ObjectLook::kMostDashes && lengths.size() % 2 == 0 &&
         std::ranges::all_of(lengths, isLength) && std::accumulate(lengths.begin(), lengths.end(), 0.0) >= kLeast;
}

bool ObjectMarks::operator==(const ObjectMarks& other) const {
  const bool sameLabel = label == other.label || (label != nullptr && other.label != nullptr && *label == *other.label);
  return sameLabel && hidden == other.hidden && locked == other.locked && groups == other.groups && look == other.look;
}

}  // namespace host
