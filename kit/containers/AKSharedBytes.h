// The storage of AKString and AKMemoryBlock: a handle to a shared, reference-counted, copy-on-write byte buffer.
//
// A handle is one pointer. It leads to a header (AKSharedBuffer) that malloc returned, followed by the bytes and one
// terminating NUL that no length counts. Copies share the buffer; the first modification through one of several owners
// makes a private copy, and the last owner frees the buffer. Counts are atomic, so handles may be copied between
// threads; one handle is not to be modified from two threads at once.
//
// The empty handle leads to a static buffer that is never counted, freed or written. A program and the bundles that it
// loads each have such a buffer of their own, so it is known by the mark in its header, never by its address. Copying
// an empty handle takes the copier's own buffer; a handle that a bundle has emptied is to be copied or dropped before
// that bundle is unloaded.
//
// Lengths are 32-bit. A length beyond kMaxLength throws std::bad_alloc, as the allocator does; nothing else throws.
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

/// What stands in front of the bytes of a buffer.
struct AKSharedBuffer {
  /// The mark of a buffer that malloc returned.
  static constexpr std::uint32_t kHeapMark = 0;
  /// The mark of a static empty buffer, of whichever copy of the kit.
  static constexpr std::uint32_t kStaticMark = 0x53544154;

  std::uint32_t length;                       ///< bytes in use
  std::uint32_t capacity;                     ///< bytes that fit, the terminator not counted
  mutable std::atomic<std::uint32_t> owners;  ///< handles to the buffer
  std::uint32_t mark;                         ///< one of the two above
};

/// The static empty buffer: a header and its terminating NUL.
struct AKEmptySharedBuffer {
  AKSharedBuffer header;  ///< with the static mark and a length of 0
  char terminator;        ///< the NUL that CStr() of an empty string shows
};
/// This copy of the kit's.
extern const AKEmptySharedBuffer kAKEmptySharedBuffer;

class AKSharedBytes {
 public:
  /// The largest length in bytes.
  static constexpr unsigned int kMaxLength = 0xFFFFFFFE;

  /// The empty handle; takes nothing from the allocator.
  constexpr AKSharedBytes() noexcept : buffer_(EmptyBuffer()) {}
  /// Shares the other handle's buffer.
  AKSharedBytes(const AKSharedBytes& other) noexcept : buffer_(Retained(other.buffer_)) {}
  /// Takes the other handle's buffer, which is empty then.
  AKSharedBytes(AKSharedBytes&& other) noexcept : buffer_(other.IsStatic() ? EmptyBuffer() : other.buffer_) {
    other.buffer_ = EmptyBuffer();
  }
  /// The last owner frees the buffer.
  ~AKSharedBytes() { Release(buffer_); }

  ///@{
  /// As copying and moving do; the old buffer is released.
  AKSharedBytes& operator=(const AKSharedBytes& other) noexcept {
    AKSharedBytes copy(other);  // before the old buffer goes, which `other` may die with
    Swap(&copy);
    return *this;
  }
  AKSharedBytes& operator=(AKSharedBytes&& other) noexcept {
    AKSharedBytes taken(std::move(other));
    Swap(&taken);
    return *this;
  }
  ///@}
  /// Exchanges the buffers of two handles.
  void Swap(AKSharedBytes* other) noexcept { std::swap(buffer_, other->buffer_); }

  /// Bytes in use.
  unsigned int Length() const { return buffer_->length; }
  /// Bytes that fit without a new buffer.
  unsigned int Capacity() const { return buffer_->capacity; }
  /// True for a length of 0.
  bool IsEmpty() const { return buffer_->length == 0; }
  /// The bytes and their terminating NUL; never null.
  const char* Data() const { return reinterpret_cast<const char*>(buffer_ + 1); }

  /// The bytes after making them private. With length 0 there is nothing behind the pointer to write to.
  char* Writable() {
    if (!IsPrivate()) MakePrivate(Length());
    return Bytes();
  }

  /// Replaces the content by `length` bytes, which may be part of this handle's own. Null or 0 drops the buffer.
  void Assign(const void* data, unsigned int length);
  /// Adds `length` bytes, which may be part of this handle's own, growing geometrically.
  void Append(const void* data, unsigned int length);
  /// Makes the content private and `length` bytes long. Old bytes are kept, new ones are NUL.
  void Resize(unsigned int length);
  /// Makes the content private with room for at least `capacity` bytes.
  void Reserve(unsigned int capacity);
  /// Removes `count` bytes from `start`; both must lie within the content.
  void Erase(unsigned int start, unsigned int count);
  /// Replaces the buffer by one without spare room.
  void Shrink();
  /// Length 0; a private buffer is kept.
  void Clear();
  /// Length 0 and the buffer is released.
  void Free() { AKSharedBytes().Swap(this); }

  /// Content of `length` bytes whose values are not set, for a caller that writes them all.
  static AKSharedBytes Uninitialized(unsigned int length);

  /// Adds one byte.
  void AppendByte(char byte) {
    AKSharedBuffer* const buffer = buffer_;
    const unsigned int length = buffer->length;
    // The static buffer has no room, so that a buffer with room and one owner is private.
    if (length >= buffer->capacity || buffer->owners.load(std::memory_order_acquire) != 1) {
      GrowAndAppendByte(byte);
      return;
    }
    char* const end = reinterpret_cast<char*>(buffer + 1) + length;
    end[0] = byte;
    end[1] = '\0';
    buffer->length = length + 1;
  }

 private:
  static constexpr AKSharedBuffer* EmptyBuffer() { return const_cast<AKSharedBuffer*>(&kAKEmptySharedBuffer.header); }

  static AKSharedBuffer* Retained(AKSharedBuffer* buffer) {
    if (buffer->mark == AKSharedBuffer::kStaticMark) return EmptyBuffer();
    buffer->owners.fetch_add(1, std::memory_order_relaxed);
    return buffer;
  }
  static void Release(AKSharedBuffer* buffer) {
    if (buffer->mark == AKSharedBuffer::kStaticMark) return;
    if (buffer->owners.fetch_sub(1, std::memory_order_acq_rel) == 1) FreeBuffer(buffer);
  }
  static void FreeBuffer(AKSharedBuffer* buffer);
  static AKSharedBuffer* NewBuffer(unsigned int length, unsigned int capacity);

  bool IsStatic() const { return buffer_->mark == AKSharedBuffer::kStaticMark; }
  bool IsPrivate() const { return !IsStatic() && buffer_->owners.load(std::memory_order_acquire) == 1; }
  char* Bytes() { return reinterpret_cast<char*>(buffer_ + 1); }
  void SetPrivateLength(unsigned int length) {
    buffer_->length = length;
    Bytes()[length] = '\0';
  }
  bool Owns(const char* data) const;
  void MakePrivate(unsigned int capacity);
  void GrowTo(unsigned int length);
  void GrowAndAppendByte(char byte);

  AKSharedBuffer* buffer_;
};
