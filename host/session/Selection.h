// The selected objects of a session, in the order in which they were selected: the first one is what an inspector is
// filled from.
#pragma once

#include <unordered_set>
#include <vector>

#include "host/model/DocumentObject.h"

namespace host {

class Selection {
 public:
  const std::vector<ObjectID>& IDs() const { return order_; }
  bool IsEmpty() const { return order_.empty(); }
  std::size_t Count() const { return order_.size(); }
  bool Contains(ObjectID id) const { return set_.count(id) != 0; }

  void Reserve(std::size_t count) {
    order_.reserve(count);
    set_.reserve(count);
  }
  /// An ID that is there already stays where it is. False then.
  bool Add(ObjectID id) {
    if (!set_.insert(id).second) return false;
    order_.push_back(id);
    return true;
  }
  /// Removes every ID for which `test` is true; says whether there were any.
  template <typename Test>
  bool RemoveIf(Test test) {
    const auto removed = std::erase_if(order_, test);
    if (removed != 0) set_ = {order_.begin(), order_.end()};
    return removed != 0;
  }
  void Clear() {
    order_.clear();
    set_.clear();
  }

  bool operator==(const Selection& other) const { return order_ == other.order_; }

 private:
  std::vector<ObjectID> order_;
  std::unordered_set<ObjectID> set_;
};

}  // namespace host
