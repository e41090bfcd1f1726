// The memory-stream side of AKFile.
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "kit/AKFile.h"
#include "kit/AKFileErrors.h"
#include "kit/AKFileMmap.h"

namespace {

constexpr unsigned long long kMaxMemorySize = 0xFFFFFFFF;
constexpr unsigned int kFirstCapacity = 2048;

}  // namespace

AKFile::AKFile(const void* data, unsigned int size) : flags_(kEndianLittle | kModeMemory) {
  if (data == nullptr || size == 0) return;
  const auto* bytes = static_cast<const unsigned char*>(data);
  memory_.assign(bytes, bytes + size);
}

AKFile::AKFile(const AKMemoryBlock& data) : AKFile(data.Data(), data.Size()) {}

int AKFile::OpenMemory(unsigned int openBits) {
  if (memoryOpened_) return AKFileLogFailure(*this, kAKFileStatusAlreadyOpened);
  memoryOpened_ = true;
  memoryPosition_ = 0;
  flags_ |= openBits;
  if ((openBits & kFlagWrite) != 0) memory_.reserve(kFirstCapacity);
  return 0;
}

void AKFile::CloseMemory() {
  if (!memoryOpened_) return;
  map_.reset();
  memoryOpened_ = false;
  memoryPosition_ = 0;
  std::vector<unsigned char>().swap(memory_);
  flags_ &= ~(kFlagRead | kFlagWrite);
}

int AKFile::ReadMemory(void* buffer, unsigned long long count) const {
  if (count > kMaxMemorySize - memoryPosition_) return AKFileLogFailure(*this, kAKFileStatusTooBig);
  if (count > memory_.size() - memoryPosition_) return AKFileLogFailure(*this, kAKFileStatusReadFailed);
  std::memcpy(buffer, memory_.data() + memoryPosition_, count);
  memoryPosition_ += static_cast<unsigned int>(count);
  return 0;
}

int AKFile::WriteMemory(const void* data, unsigned long long count) {
  if (count > kMaxMemorySize - memoryPosition_) return AKFileLogFailure(*this, kAKFileStatusTooBig);
  const auto* bytes = static_cast<const unsigned char*>(data);
  const std::size_t end = memoryPosition_ + count;
  if (end > memory_.capacity()) memory_.reserve(static_cast<std::size_t>(std::min(2ULL * end, kMaxMemorySize)));
  const std::size_t inside = std::min<std::size_t>(count, memory_.size() - memoryPosition_);
  std::memcpy(memory_.data() + memoryPosition_, bytes, inside);
  memory_.insert(memory_.end(), bytes + inside, bytes + count);
  memoryPosition_ = static_cast<unsigned int>(end);
  return 0;
}

bool AKFile::SeekMemory(long long offset, AKFileWhence whence) const {
  const auto size = static_cast<long long>(memory_.size());
  long long target = offset;
  if (whence == kAKFileWhenceCurrent && __builtin_add_overflow(memoryPosition_, offset, &target)) return false;
  if (whence == kAKFileWhenceEnd && __builtin_sub_overflow(size, offset, &target)) return false;
  if (target < 0 || target > size) return false;
  memoryPosition_ = static_cast<unsigned int>(target);
  return true;
}

int AKFile::SetMemorySize(unsigned long long size) {
  if (size > kMaxMemorySize) return AKFileLogFailure(*this, kAKFileStatusTooBig);
  memory_.resize(size);
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
  if (!memory_.empty()) *data = memory_.data();
  *size = memory_.size();
  return 0;
}

int AKFile::GetMemoryStreamDataBlock(AKMemoryBlock* block) const {
  const void* data = nullptr;
  unsigned long long size = 0;
  const int status = GetMemoryStreamDataPtr(&data, &size);
  block->Assign(data, static_cast<unsigned int>(size));
  return status;
}
