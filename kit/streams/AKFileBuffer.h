// AKFileBuffer: buffered reading and writing on one descriptor.
//
// The buffer keeps one window of the file and a position of its own; the descriptor's position is not used. Bytes that
// were written and not yet passed to the system form one dirty range of the window. A window is dropped only after its
// dirty range has been written, and what could not be written stays dirty, so that the next attempt is made with it:
// nothing is lost silently, and reads go around it meanwhile. A descriptor that cannot seek (a pipe, a terminal) is not
// buffered at all.
//
// The descriptor is borrowed. Failures leave the reason in errno, 0 at the end of the file. Positions are in bytes.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>

class AKFileBuffer {
 public:
  /// What became of a read or write; after the last two errno tells why.
  enum class Result {
    kDone,         ///< all bytes
    kReadFailed,   ///< fewer, or none
    kWriteFailed,  ///< what was to be written first could not be
  };

  /// Without a descriptor.
  AKFileBuffer() = default;
  AKFileBuffer(const AKFileBuffer&) = delete;
  AKFileBuffer& operator=(const AKFileBuffer&) = delete;

  /// Begins at position 0 of `descriptor`.
  void Attach(int descriptor);
  /// Forgets the descriptor and, with it, what Flush did not write.
  void Detach();

  /// Reads within the window; false when the bytes are not all there. `count` is at least 1.
  bool TryRead(void* target, std::uint64_t count) {
    const std::uint64_t at = position_ - start_;
    if (at > filled_ || count > filled_ - at) return false;
    std::memcpy(target, bytes_.get() + at, count);
    position_ += count;
    return true;
  }
  /// Writes into or right behind the dirty range; false when that has no room. `count` is at least 1.
  bool TryWrite(const void* source, std::uint64_t count) {
    const std::uint64_t at = position_ - start_;
    if (at - dirtyBegin_ > dirtyEnd_ - dirtyBegin_ || count > writeCapacity_ || at > writeCapacity_ - count)
      return false;
    std::memcpy(bytes_.get() + at, source, count);
    position_ += count;
    const auto end = static_cast<std::uint32_t>(at + count);
    if (end > dirtyEnd_) dirtyEnd_ = end;
    if (end > filled_) filled_ = end;
    return true;
  }

  ///@{
  /// Any read or write of at least one byte. On failure the position is behind the bytes that made it.
  Result Read(void* target, std::uint64_t count);
  Result Write(const void* source, std::uint64_t count);
  ///@}

  /// Writes the dirty range; false on failure.
  bool Flush();
  /// Flushes and forgets the window, whose bytes may no longer be those of the file.
  bool Drop();
  /// Forgets what lies at or beyond `size`, where the file now ends.
  void Cut(std::uint64_t size);
  /// With `on`, every write reaches the system before it returns: somebody looks at the file by another way.
  void SetWriteThrough(bool on);

  /// False for a pipe, a terminal or another descriptor without positions.
  bool CanSeek() const { return canSeek_; }
  ///@{
  /// Where the next read or write begins; setting it touches nothing else and may lie beyond the end.
  std::uint64_t Position() const { return position_; }
  void SetPosition(std::uint64_t position) { position_ = position; }
  ///@}
  /// How many bytes can be read from the position without asking the system.
  std::uint64_t Available() const {
    const std::uint64_t at = position_ - start_;
    return at > filled_ ? 0 : filled_ - at;
  }
  /// Where the file ends at least once everything is flushed: behind the dirty range, 0 when there is none.
  std::uint64_t UnwrittenEnd() const { return IsDirty() ? start_ + dirtyEnd_ : 0; }
  /// The size that the file has once everything is flushed; false on failure.
  bool GetSize(std::uint64_t* size) const;

 private:
  Result ReadAround(unsigned char* target, std::uint64_t count);
  Result ReadDirect(unsigned char* target, std::uint64_t count);
  Result ReadThroughWindow(unsigned char* target, std::uint64_t count);
  Result WriteDirect(const unsigned char* source, std::uint64_t count);
  bool IsDirty() const { return dirtyBegin_ != dirtyEnd_; }
  void StartWindow();
  void AllocateBytes();

  std::unique_ptr<unsigned char[]> bytes_;
  std::uint64_t position_ = 0;
  std::uint64_t start_ = 0;  // position of the window's first byte
  std::uint32_t filled_ = 0;
  std::uint32_t dirtyBegin_ = 0;
  std::uint32_t dirtyEnd_ = 0;
  std::uint32_t writeCapacity_ = 0;  // 0 keeps writes out of the window
  int descriptor_ = -1;
  bool writeThrough_ = false;
  bool canSeek_ = false;
};
