// The objects of each group of a document.
#pragma once

#include <set>
#include <unordered_map>

#include "host/model/DocumentObject.h"

namespace host {

class GroupIndex {
 public:
  /// Those of inner groups, too; none for an unknown group.
  const std::set<ObjectID>& Members(GroupID group) const {
    static const std::set<ObjectID> none;
    const auto found = members_.find(group);
    return found == members_.end() ? none : found->second;
  }
  /// A group that no object was ever in.
  GroupID NewGroup() { return ++last_; }

  void Add(const DocumentObject& object) {
    for (const GroupID group : object.marks.groups) {
      members_[group].insert(object.id);
      if (group > last_) last_ = group;
    }
  }
  void Remove(const DocumentObject& object) {
    for (const GroupID group : object.marks.groups) {
      const auto found = members_.find(group);
      found->second.erase(object.id);
      if (found->second.empty()) members_.erase(found);
    }
  }

 private:
  std::unordered_map<GroupID, std::set<ObjectID>> members_;
  GroupID last_ = kNoGroupID;
};

}  // namespace host
