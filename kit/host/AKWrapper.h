// The common part of the kit's wrappers around host objects (handlers, panels, controls).
#pragma once

#include <type_traits>

#include "kit/host/AKHostCall.h"

/// Holds exactly one field, the pointer to the host object, null until the host's constructor entry has filled it.
/// `Derived` has a static `sWrapper`, the host's table. Without a table or a host object a call does nothing and
/// returns a value-initialised result.
template <typename Derived>
class AKWrapper {
 public:
  AKWrapper(const AKWrapper&) = delete;
  AKWrapper& operator=(const AKWrapper&) = delete;

  void* HostObject() const { return hostObject_; }
  /// For hosts: their constructor entry stores the object that they made.
  void SetHostObject(void* object) { hostObject_ = object; }

 protected:
  AKWrapper() = default;
  ~AKWrapper() = default;

  template <typename Result, typename... Parameters>
  Result Call(std::size_t offset, Parameters... arguments) const {
    if (Derived::sWrapper == nullptr || hostObject_ == nullptr) {
      if constexpr (std::is_void_v<Result>) {
        return;
      } else {
        return Result{};
      }
    }
    return AKHostCallMember<Result, Parameters...>(Derived::sWrapper, offset, hostObject_, arguments...);
  }

 private:
  void* hostObject_ = nullptr;
};

/// Byte offsets of the plain entries that make and end the host object of any wrapper.
inline constexpr std::size_t kAKWrapperConstructorOffset = 32;
inline constexpr std::size_t kAKWrapperDestructorOffset = 40;
