// The sessions of the process, as the handlers of plug-ins find them.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

class AKObject;

namespace host {

class DocumentSession;

class SessionRegistry {
 public:
  /// The session that handlers of plug-ins act on: the one made current last; null when there is none.
  DocumentSession* Current() const { return current_; }
  void MakeCurrent(DocumentSession& session) { current_ = &session; }
  /// Null when that session is gone.
  DocumentSession* Find(std::uint64_t serial) const;
  /// True when the instance is in one of their documents.
  bool Has(const AKObject* instance) const;

  /// While one lives no session is the current one: a bundle starts, which has no document yet.
  class NoCurrent {
   public:
    explicit NoCurrent(SessionRegistry& registry)
        : registry_(registry), before_(std::exchange(registry.current_, nullptr)) {}
    NoCurrent(const NoCurrent&) = delete;
    NoCurrent& operator=(const NoCurrent&) = delete;
    ~NoCurrent() { registry_.current_ = before_; }

   private:
    SessionRegistry& registry_;
    DocumentSession* before_;
  };

  /// A session adds itself, and gets its number.
  std::uint64_t Add(DocumentSession& session);
  void Remove(DocumentSession& session);

 private:
  std::vector<DocumentSession*> sessions_;
  DocumentSession* current_ = nullptr;
  std::uint64_t last_ = 0;
};

}  // namespace host
