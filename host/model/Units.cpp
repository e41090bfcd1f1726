#include "host/model/Units.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace host {

std::vector<Unit> UnitsOf(const Document& document, const ObjectIDs& ids, const std::vector<GroupID>& entered) {
  const ObjectIDs sorted = InDrawingOrder(document, ids);
  const std::unordered_set<ObjectID> known(sorted.begin(), sorted.end());
  std::unordered_map<GroupID, bool> whole;
  for (const GroupID group : entered) whole[group] = false;
  std::unordered_set<GroupID> taken;
  const auto isWhole = [&](GroupID group) {
    const auto [entry, isNew] = whole.try_emplace(group, true);
    if (!isNew) return entry->second;
    const std::set<ObjectID>& members = document.Groups().Members(group);
    return entry->second = std::all_of(members.begin(), members.end(), [&](ObjectID member) {
             return known.contains(member) || !document.Find(member)->IsFree();
           });
  };
  std::vector<Unit> units;
  for (const ObjectID id : sorted) {
    const std::vector<GroupID>& path = document.Find(id)->marks.groups;
    const auto group = std::find_if(path.begin(), path.end(), isWhole);
    const auto depth = static_cast<std::size_t>(group - path.begin());
    if (group == path.end()) {
      units.push_back({{id}, depth});
    } else if (taken.insert(*group).second) {
      const std::set<ObjectID>& members = document.Groups().Members(*group);
      units.push_back({InDrawingOrder(document, {members.begin(), members.end()}), depth});
    }
  }
  return units;
}

std::vector<ObjectIDs> PartsOf(const Document& document, const ObjectIDs& ids, const std::vector<GroupID>& entered) {
  const std::unordered_set<ObjectID> known(ids.begin(), ids.end());
  std::vector<ObjectIDs> parts;
  for (Unit& unit : UnitsOf(document, ids, entered)) {
    std::erase_if(unit.objects, [&known](ObjectID id) { return !known.contains(id); });
    parts.push_back(std::move(unit.objects));
  }
  return parts;
}

GroupID GroupAround(const Document& document, const Unit& unit) {
  return unit.depth == 0 ? kNoGroupID : document.Find(unit.objects[0])->marks.groups[unit.depth - 1];
}

}  // namespace host
