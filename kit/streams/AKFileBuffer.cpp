#include "kit/streams/AKFileBuffer.h"

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr std::uint32_t kWindowSize = 65536;
// The first read after a jump: a reader that picks numbers here and there should not load a whole window for each.
constexpr std::uint32_t kSmallRead = 4096;

// read or pread, repeated while a signal interrupts it.
ssize_t ReadSome(int descriptor, bool atPosition, void* target, std::uint64_t count, std::uint64_t position) {
  for (;;) {
    const ssize_t got = atPosition ? ::pread(descriptor, target, count, static_cast<off_t>(position))
                                   : ::read(descriptor, target, count);
    if (got >= 0 || errno != EINTR) return got;
    errno = 0;
  }
}

ssize_t WriteSome(int descriptor, bool atPosition, const void* source, std::uint64_t count, std::uint64_t position) {
  for (;;) {
    const ssize_t put = atPosition ? ::pwrite(descriptor, source, count, static_cast<off_t>(position))
                                   : ::write(descriptor, source, count);
    if (put >= 0 || errno != EINTR) return put;
    errno = 0;
  }
}

// Writes all bytes unless the system refuses some; returns how many were written. A short write is carried on, so that
// the refusal that follows it gives its reason.
std::uint64_t WriteAll(int descriptor, bool atPosition, const unsigned char* source, std::uint64_t count,
                       std::uint64_t position) {
  std::uint64_t done = 0;
  while (done < count) {
    const ssize_t put = WriteSome(descriptor, atPosition, source + done, count - done, position + done);
    if (put <= 0) break;
    done += static_cast<std::uint64_t>(put);
  }
  return done;
}

}  // namespace

void AKFileBuffer::Attach(int descriptor) {
  Detach();
  descriptor_ = descriptor;
  canSeek_ = ::lseek(descriptor, 0, SEEK_CUR) >= 0;
}

void AKFileBuffer::Detach() {
  bytes_.reset();
  position_ = 0;
  start_ = 0;
  filled_ = dirtyBegin_ = dirtyEnd_ = writeCapacity_ = 0;
  descriptor_ = -1;
  writeThrough_ = canSeek_ = false;
}

bool AKFileBuffer::Flush() {
  if (!IsDirty()) return true;
  dirtyBegin_ += static_cast<std::uint32_t>(
      WriteAll(descriptor_, true, bytes_.get() + dirtyBegin_, dirtyEnd_ - dirtyBegin_, start_ + dirtyBegin_));
  if (IsDirty()) return false;
  dirtyBegin_ = dirtyEnd_ = 0;
  return true;
}

bool AKFileBuffer::Drop() {
  if (!Flush()) return false;
  filled_ = 0;
  return true;
}

void AKFileBuffer::Cut(std::uint64_t size) {
  if (size >= start_ + filled_) return;
  filled_ = size > start_ ? static_cast<std::uint32_t>(size - start_) : 0;
  dirtyEnd_ = std::min(dirtyEnd_, filled_);
  if (dirtyBegin_ >= dirtyEnd_) dirtyBegin_ = dirtyEnd_ = 0;
}

void AKFileBuffer::SetWriteThrough(bool on) {
  writeThrough_ = on;
  if (on) writeCapacity_ = 0;
}

bool AKFileBuffer::GetSize(std::uint64_t* size) const {
  const off_t onDisk = ::lseek(descriptor_, 0, SEEK_END);
  if (onDisk < 0) return false;
  *size = std::max(static_cast<std::uint64_t>(onDisk), UnwrittenEnd());
  return true;
}

void AKFileBuffer::AllocateBytes() {
  if (bytes_ == nullptr) bytes_.reset(new unsigned char[kWindowSize]);  // not zeroed: no byte is used before it is set
}

void AKFileBuffer::StartWindow() {
  AllocateBytes();
  start_ = position_;
  filled_ = dirtyBegin_ = dirtyEnd_ = 0;
}

AKFileBuffer::Result AKFileBuffer::Read(void* target, std::uint64_t count) {
  if (TryRead(target, count)) return Result::kDone;
  if (!canSeek_) return ReadDirect(static_cast<unsigned char*>(target), count);
  auto* bytes = static_cast<unsigned char*>(target);
  if (!Flush()) return ReadAround(bytes, count);
  const std::uint64_t buffered = std::min(count, Available());
  if (buffered > 0) std::memcpy(bytes, bytes_.get() + (position_ - start_), buffered);
  position_ += buffered;
  if (count - buffered >= kWindowSize) return ReadDirect(bytes + buffered, count - buffered);
  return ReadThroughWindow(bytes + buffered, count - buffered);
}

// The window stays, since the system refuses what is dirty in it. The file reads as if it had been written.
AKFileBuffer::Result AKFileBuffer::ReadAround(unsigned char* target, std::uint64_t count) {
  errno = 0;
  for (std::uint64_t done = 0; done < count;) {
    std::uint64_t piece = std::min(count - done, Available());
    if (piece > 0) {
      std::memcpy(target + done, bytes_.get() + (position_ - start_), piece);
    } else {
      const bool isBefore = position_ < start_;
      const std::uint64_t room = isBefore ? std::min(count - done, start_ - position_) : count - done;
      const ssize_t got = ReadSome(descriptor_, true, target + done, room, position_);
      if (got < 0 || (got == 0 && !isBefore)) return Result::kReadFailed;
      piece = got == 0 ? room : static_cast<std::uint64_t>(got);
      if (got == 0) std::memset(target + done, 0, piece);  // the file ends before the window
    }
    done += piece;
    position_ += piece;
  }
  return Result::kDone;
}

AKFileBuffer::Result AKFileBuffer::ReadDirect(unsigned char* target, std::uint64_t count) {
  for (std::uint64_t done = 0; done < count;) {
    const ssize_t got = ReadSome(descriptor_, canSeek_, target + done, count - done, position_);
    if (got <= 0) return Result::kReadFailed;
    done += static_cast<std::uint64_t>(got);
    position_ += static_cast<std::uint64_t>(got);
  }
  return Result::kDone;
}

AKFileBuffer::Result AKFileBuffer::ReadThroughWindow(unsigned char* target, std::uint64_t count) {
  const bool continues = position_ == start_ + filled_;
  const std::uint32_t wanted = continues ? kWindowSize : std::max(kSmallRead, static_cast<std::uint32_t>(count));
  StartWindow();
  while (filled_ < count) {
    const ssize_t got = ReadSome(descriptor_, true, bytes_.get() + filled_, wanted - filled_, start_ + filled_);
    if (got <= 0) break;
    filled_ += static_cast<std::uint32_t>(got);
  }
  const std::uint64_t ready = std::min<std::uint64_t>(count, filled_);
  std::memcpy(target, bytes_.get(), ready);
  position_ += ready;
  return ready == count ? Result::kDone : Result::kReadFailed;
}

AKFileBuffer::Result AKFileBuffer::Write(const void* source, std::uint64_t count) {
  if (TryWrite(source, count)) return Result::kDone;
  const auto* bytes = static_cast<const unsigned char*>(source);
  if (!canSeek_) return WriteDirect(bytes, count);
  if (!Flush()) return Result::kWriteFailed;
  if (writeThrough_ || count >= kWindowSize) {
    filled_ = 0;
    return WriteDirect(bytes, count);
  }
  const std::uint64_t at = position_ - start_;
  if (at > filled_ || at > kWindowSize - count) StartWindow();
  AllocateBytes();
  dirtyBegin_ = dirtyEnd_ = static_cast<std::uint32_t>(position_ - start_);
  writeCapacity_ = kWindowSize;
  return TryWrite(source, count) ? Result::kDone : Result::kWriteFailed;
}

AKFileBuffer::Result AKFileBuffer::WriteDirect(const unsigned char* source, std::uint64_t count) {
  const std::uint64_t done = WriteAll(descriptor_, canSeek_, source, count, position_);
  position_ += done;
  return done == count ? Result::kDone : Result::kWriteFailed;
}
