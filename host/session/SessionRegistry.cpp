#include "host/session/SessionRegistry.h"

#include <algorithm>

#include "host/session/DocumentSession.h"

namespace host {

DocumentSession* SessionRegistry::Find(std::uint64_t serial) const {
  for (DocumentSession* session : sessions_) {
    if (session->Serial() == serial) return session;
  }
  return nullptr;
}

bool SessionRegistry::Has(const AKObject* instance) const {
  return std::any_of(sessions_.begin(), sessions_.end(), [instance](DocumentSession* session) {
    return session->Doc().FindByInstance(instance) != nullptr;
  });
}

std::uint64_t SessionRegistry::Add(DocumentSession& session) {
  sessions_.push_back(&session);
  return ++last_;
}

void SessionRegistry::Remove(DocumentSession& session) {
  std::erase(sessions_, &session);
  if (current_ == &session) current_ = nullptr;
}

}  // namespace host
