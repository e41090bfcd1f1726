// Who is told of a session.
#pragma once

#include <vector>

#include "host/model/Document.h"
#include "host/session/SessionObserver.h"

namespace host {

class SessionObservers {
 public:
  explicit SessionObservers(Document& document) : document_(document) {}

  void Add(SessionObserver* observer) {
    observers_.push_back(observer);
    document_.AddObserver(observer);
  }
  void Remove(SessionObserver* observer) {
    std::erase(observers_, observer);
    document_.RemoveObserver(observer);
  }
  /// An observer may remove itself, or another one, meanwhile.
  template <typename Call>
  void Notify(Call call) const {
    for (std::size_t i = observers_.size(); i > 0; --i) {
      if (i <= observers_.size()) call(*observers_[i - 1]);
    }
  }

 private:
  Document& document_;
  std::vector<SessionObserver*> observers_;
};

}  // namespace host
