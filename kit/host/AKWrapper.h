// The common part of the kit's wrappers around host objects (handlers, panels, controls).
#pragma once

#include <type_traits>

#include "kit/host/AKHostTables.h"

/// What outputs are given when nobody fills them: 0, where they are not null.
template <typename... Numbers>
void AKSetNeutral(Numbers*... outputs) {
  (..., (outputs == nullptr ? void() : void(*outputs = 0)));
}

/// Holds exactly one field, the pointer to the host object, null until the host's `construct` entry has filled it.
/// `Derived` has a static `sWrapper`, the host's table. Without a table or a host object a call does nothing and
/// returns a value-initialised result.
template <typename Derived>
class AKWrapper {
 public:
  AKWrapper(const AKWrapper&) = delete;
  AKWrapper& operator=(const AKWrapper&) = delete;

  /// The host's object, null before it is made; not the caller's.
  void* HostObject() const { return hostObject_; }
  /// For hosts: their `construct` entry stores the object that they made.
  void SetHostObject(void* object) { hostObject_ = object; }

 protected:
  /// Without a host object.
  AKWrapper() = default;
  ~AKWrapper() = default;

  /// True when there are a table and a host object to call.
  bool IsHosted() const { return Derived::sWrapper != nullptr && hostObject_ != nullptr; }

  /// Calls an entry of the table on the host object.
  template <typename Table, typename Result, typename... Parameters>
  Result Call(AKHostMember<Result(Parameters...)> Table::*entry, std::type_identity_t<Parameters>... arguments) const {
    if (!IsHosted()) return Result();
    return (Derived::sWrapper->*entry).Call(hostObject_, arguments...);
  }

 private:
  void* hostObject_ = nullptr;
};
