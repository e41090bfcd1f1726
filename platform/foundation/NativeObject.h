// The shared base of the native layer's reference-counted objects.
#pragma once

#include <atomic>

namespace platform {

/// Born with one reference, which its creator owns. The last Release deletes the object.
class NativeObject {
 public:
  NativeObject() = default;
  NativeObject(const NativeObject&) = delete;
  NativeObject& operator=(const NativeObject&) = delete;

  void Retain() const { count_.fetch_add(1, std::memory_order_relaxed); }
  void Release() const {
    if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }

 protected:
  virtual ~NativeObject() = default;

 private:
  mutable std::atomic<int> count_{1};
};

}  // namespace platform
