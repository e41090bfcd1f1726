// A counted reference to an object of the native layer.
#pragma once

#include <utility>

namespace platform {

/// Holds one reference of its own, or null.
template <typename T>
class NativeRef {
 public:
  NativeRef() = default;
  explicit NativeRef(T* object) : object_(object) {
    if (object_ != nullptr) object_->Retain();
  }
  NativeRef(const NativeRef& other) : NativeRef(other.object_) {}
  NativeRef(NativeRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  NativeRef& operator=(NativeRef other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~NativeRef() {
    if (object_ != nullptr) object_->Release();
  }

  T* Get() const { return object_; }
  void Reset() { *this = NativeRef(); }

 private:
  T* object_ = nullptr;
};

/// Takes over the reference that the creator of `object` owns; null gives null.
template <typename T>
NativeRef<T> TakeRef(T* object) {
  NativeRef<T> ref(object);
  if (object != nullptr) object->Release();
  return ref;
}

}  // namespace platform
