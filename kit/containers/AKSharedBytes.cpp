#include "kit/containers/AKSharedBytes.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>

constinit const AKEmptySharedBuffer kAKEmptySharedBuffer{{0, 0, 1, AKSharedBuffer::kStaticMark}, '\0'};

AKSharedBuffer* AKSharedBytes::NewBuffer(unsigned int length, unsigned int capacity) {
  if (capacity > kMaxLength) throw std::bad_alloc();
  void* memory = std::malloc(sizeof(AKSharedBuffer) + std::size_t{capacity} + 1);
  if (memory == nullptr) throw std::bad_alloc();
  auto* buffer = new (memory) AKSharedBuffer{length, capacity, 1, AKSharedBuffer::kHeapMark};
  reinterpret_cast<char*>(buffer + 1)[length] = '\0';
  return buffer;
}

void AKSharedBytes::FreeBuffer(AKSharedBuffer* buffer) { std::free(buffer); }

AKSharedBytes AKSharedBytes::Uninitialized(unsigned int length) {
  AKSharedBytes bytes;
  if (length != 0) bytes.buffer_ = NewBuffer(length, length);
  return bytes;
}

bool AKSharedBytes::Owns(const char* data) const {
  const std::less<const char*> before;  // the plain operator is undefined for pointers into different blocks
  return !before(data, Data()) && before(data, Data() + Length());
}

void AKSharedBytes::MakePrivate(unsigned int capacity) {
  const unsigned int length = Length();
  capacity = std::max(capacity, length);
  if (capacity == 0) return;  // the static empty buffer serves
  if (IsPrivate()) {
    if (capacity <= Capacity()) return;
    void* memory = std::realloc(buffer_, sizeof(AKSharedBuffer) + std::size_t{capacity} + 1);
    if (memory == nullptr) throw std::bad_alloc();
    buffer_ = static_cast<AKSharedBuffer*>(memory);
    buffer_->capacity = capacity;
    return;
  }
  AKSharedBuffer* const old = buffer_;
  buffer_ = NewBuffer(length, capacity);
  std::memcpy(Bytes(), old + 1, length);
  Release(old);
}

void AKSharedBytes::GrowTo(unsigned int length) {
  if (length <= Capacity()) {
    MakePrivate(length);
    return;
  }
  // Small texts double; large ones grow by a half, which wastes less and is as linear.
  constexpr unsigned int kSmallest = 63;
  constexpr unsigned int kLarge = 1U << 20;
  const std::uint64_t old = Capacity();
  const std::uint64_t grown = old < kLarge ? 2 * old + 1 : old + old / 2;
  MakePrivate(static_cast<unsigned int>(std::clamp<std::uint64_t>(grown, std::max(length, kSmallest), kMaxLength)));
}

void AKSharedBytes::Assign(const void* data, unsigned int length) {
  if (data == nullptr || length == 0) {
    Free();
    return;
  }
  const char* const source = static_cast<const char*>(data);
  if (IsPrivate() && length <= Capacity()) {
    std::memmove(Bytes(), source, length);
    SetPrivateLength(length);
    return;
  }
  AKSharedBytes copy = Uninitialized(length);  // the old buffer lives until the copy is made: `data` may lie in it
  std::memcpy(copy.Bytes(), source, length);
  Swap(&copy);
}

void AKSharedBytes::Append(const void* data, unsigned int length) {
  if (data == nullptr || length == 0) return;
  const unsigned int oldLength = Length();
  if (length > kMaxLength - oldLength) throw std::bad_alloc();
  const char* source = static_cast<const char*>(data);
  const bool own = Owns(source);
  const std::ptrdiff_t offset = own ? source - Data() : 0;
  GrowTo(oldLength + length);
  if (own) source = Data() + offset;
  std::memcpy(Bytes() + oldLength, source, length);
  SetPrivateLength(oldLength + length);
}

// By value, so that the quick path of AppendByte keeps its byte in a register.
void AKSharedBytes::GrowAndAppendByte(char byte) { Append(&byte, 1); }

void AKSharedBytes::Resize(unsigned int length) {
  const unsigned int oldLength = Length();
  if (length == 0) {
    Clear();
    return;
  }
  if (length > kMaxLength) throw std::bad_alloc();
  if (length <= oldLength && !IsPrivate()) {
    Assign(Data(), length);
    return;
  }
  MakePrivate(length);
  if (length > oldLength) std::memset(Bytes() + oldLength, 0, length - oldLength);
  SetPrivateLength(length);
}

void AKSharedBytes::Reserve(unsigned int capacity) {
  if (capacity > kMaxLength) throw std::bad_alloc();
  MakePrivate(capacity);
}

void AKSharedBytes::Erase(unsigned int start, unsigned int count) {
  if (count == 0) return;
  const unsigned int length = Length() - count;
  if (length == 0) {
    Clear();
    return;
  }
  MakePrivate(Length());
  std::memmove(Bytes() + start, Bytes() + start + count, length - start);
  SetPrivateLength(length);
}

void AKSharedBytes::Shrink() {
  if (IsStatic() || Capacity() == Length()) return;
  if (IsEmpty()) {
    Free();
    return;
  }
  AKSharedBytes copy = Uninitialized(Length());
  std::memcpy(copy.Bytes(), Data(), Length());
  Swap(&copy);
}

void AKSharedBytes::Clear() {
  if (IsPrivate()) {
    SetPrivateLength(0);
  } else {
    Free();
  }
}
