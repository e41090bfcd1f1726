// The memory-stream side of AKFile.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileMmap.h"

namespace {

constexpr unsigned long long kMaxMemorySize = 0xFFFFFFFF;
constexpr unsigned int kFirstCapacity = 2048;

}  // namespace

AKFile::AKFile(const void* data, unsigned int size) : flags_(kEndianLittle | kModeMemory) {
  if (data == nullptr || size == 0) return;
  memory_.Grow(size);
  std::memcpy(memory_.data(), data, size);
  memorySize_ = size;
}

AKFile::AKFile(const AKMemoryBlock& data) : AKFile(data.Data(), data.Size()) {}

int AKFile::OpenMemory(unsigned int openBits) {
  if (memoryOpened_) return AKFileLogFailure(*this, kAKFileStatusAlreadyOpened);
  memoryOpened_ = true;
  memoryPosition_ = 0;
  flags_ |= openBits;
  if ((openBits & kFlagWrite) != 0) ReserveMemory(kFirstCapacity);
  return 0;
}

void AKFile::CloseMemory() {
  if (!memoryOpened_) return;
  map_.reset();
  memoryOpened_ = false;
  memoryPosition_ = 0;
  memorySize_ = 0;
  memory_.Free();
  flags_ &= ~(kFlagRead | kFlagWrite);
}

// Read serves what is there; what comes here is refused.
int AKFile::RefuseMemoryRead(unsigned long long count) const {
  const bool tooBig = count > kMaxMemorySize - memoryPosition_;
  return AKFileLogFailure(*this, tooBig ? kAKFileStatusTooBig : kAKFileStatusReadFailed);
}

int AKFile::WriteMemory(const void* data, unsigned long long count) {
  if (count > kMaxMemorySize - memoryPosition_) return AKFileLogFailure(*this, kAKFileStatusTooBig);
  const unsigned long long end = memoryPosition_ + count;
  const auto* bytes = static_cast<const unsigned char*>(data);
  const std::less<const unsigned char*> before;  // the plain operator is undefined for pointers into different blocks
  const bool own = !before(bytes, memory_.data()) && before(bytes, memory_.data() + memory_.size());
  const std::ptrdiff_t offset = own ? bytes - memory_.data() : 0;
  ReserveMemory(std::min(2 * end, kMaxMemorySize));
  if (own) bytes = memory_.data() + offset;
  return Write(bytes, count);
}

void AKFile::ReserveMemory(unsigned long long capacity) { memory_.Grow(static_cast<std::size_t>(capacity)); }

bool AKFile::SeekMemory(long long offset, AKFileWhence whence) const {
  const auto size = static_cast<long long>(memorySize_);
  long long target = offset;
  if (whence == kAKFileWhenceCurrent && __builtin_add_overflow(memoryPosition_, offset, &target)) return false;
  if (whence == kAKFileWhenceEnd && __builtin_sub_overflow(size, offset, &target)) return false;
  if (target < 0 || target > size) return false;
  memoryPosition_ = static_cast<unsigned int>(target);
  return true;
}

int AKFile::SetMemorySize(unsigned long long size) {
  if (size > kMaxMemorySize) return AKFileLogFailure(*this, kAKFileStatusTooBig);
  ReserveMemory(size);
  // What a smaller size cut off is not to come back.
  if (size > memorySize_) std::memset(memory_.data() + memorySize_, 0, static_cast<std::size_t>(size) - memorySize_);
  memorySize_ = static_cast<unsigned int>(size);
  memoryPosition_ = std::min(memoryPosition_, static_cast<unsigned int>(size));
  return 0;
}

int AKFile::GetMemoryStreamDataPtr(const void** data, unsigned long long* size) const {
  *data = nullptr;
  *size = 0;
  if (!IsMemoryStream()) {
    errno = 0;
    return AKFileLogFailure(*this, kAKFileStatusGetSizeFailed);
  }
  if (memorySize_ != 0) *data = memory_.data();
  *size = memorySize_;
  return 0;
}

int AKFile::GetMemoryStreamDataBlock(AKMemoryBlock* block) const {
  const void* data = nullptr;
  unsigned long long size = 0;
  const int status = GetMemoryStreamDataPtr(&data, &size);
  block->Assign(data, static_cast<unsigned int>(size));
  return status;
}
