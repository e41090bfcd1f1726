#include "platform/codecs/ByteSink.h"

#include <cstdint>
#include <cstring>

namespace platform {

bool ByteSink::Resize(std::size_t size) {
  if (size > capacity_) {
    if (size > SIZE_MAX / 2) return false;
    const std::size_t capacity = size + size / 2;
    auto* grown = static_cast<unsigned char*>(std::realloc(bytes_.get(), capacity));
    if (grown == nullptr) return false;
    static_cast<void>(bytes_.release());  // realloc has freed it or handed it on
    bytes_.reset(grown);
    capacity_ = capacity;
  }
  size_ = size;
  return true;
}

bool ByteSink::WriteAt(std::size_t position, const void* data, std::size_t count) {
  if (count > SIZE_MAX - position) return false;
  const std::size_t oldSize = size_;
  const std::size_t end = position + count;
  if (end > oldSize && !Resize(end)) return false;
  if (position > oldSize) std::memset(bytes_.get() + oldSize, 0, position - oldSize);
  if (count > 0) std::memcpy(bytes_.get() + position, data, count);
  return true;
}

}  // namespace platform
