// A native value object that a function made and has to release. Private to the bridge.
#pragma once

#include <utility>

#include "CoreFoundation/CFBase.h"

namespace AGGraphicsLow {

/// Owns one reference, or holds null. `Ref` is a native type such as CTLineRef.
template <typename Ref>
class Owned {
 public:
  Owned() = default;
  explicit Owned(Ref object) : object_(object) {}
  Owned(Owned&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Owned() {
    if (object_ != nullptr) CFRelease(object_);
  }

  Ref Get() const { return object_; }
  /// Leaves the reference to the caller.
  Ref Leave() { return std::exchange(object_, nullptr); }

 private:
  Ref object_ = nullptr;
};

}  // namespace AGGraphicsLow
