#include "kit/streams/AKFileMmap.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileErrors.h"

const void* AKFileMmap::Map(unsigned long long offset, unsigned long long size) {
  errno = 0;
  const void* address = nullptr;
  const int status = file_->IsMemoryStream() ? FindInMemory(offset, size, &address) : MapDisk(offset, size, &address);
  lastError_ = status == 0 ? 0 : AKFileLogFailure(*file_, status);
  if (status != 0) return nullptr;
  unsigned int index = 0;
  if (FindItemByAddress(address, &index)) {
    items_[index].size = size;
  } else {
    indexes_[address] = items_.Count();
    items_.Append({address, size});
  }
  return address;
}

const void* AKFileMmap::MapAll(unsigned long long* size) {
  errno = 0;
  unsigned long long whole = 0;
  const int status = GetFileSize(&whole);
  if (status != 0) lastError_ = AKFileLogFailure(*file_, status);
  const void* const address = status == 0 ? Map(0, whole) : nullptr;
  if (size != nullptr) *size = address == nullptr ? 0 : whole;
  return address;
}

void AKFileMmap::Unmap(const void* address) {
  unsigned int index = 0;
  if (!FindItemByAddress(address, &index)) return;
  Release(items_[index]);
  indexes_.erase(address);
  for (unsigned int i = index + 1; i < items_.Count(); ++i) {
    items_[i - 1] = items_[i];
    indexes_[items_[i].address] = i - 1;
  }
  items_.RemoveLast();
  if (items_.IsEmpty()) file_->buffer_.SetWriteThrough(false);
}

void AKFileMmap::UnmapAll() {
  while (!items_.IsEmpty()) {
    Release(items_[items_.Count() - 1]);
    items_.RemoveLast();
  }
  indexes_.clear();
  lastError_ = 0;
  file_->buffer_.SetWriteThrough(false);
}

bool AKFileMmap::FindItemByAddress(const void* address, unsigned int* index) const {
  const auto found = indexes_.find(address);
  *index = found == indexes_.end() ? kAKNotFound : found->second;
  return found != indexes_.end();
}

unsigned int AKFileMmap::GetSysPageSize() {
  static const auto pageSize = static_cast<unsigned int>(::getpagesize());
  return pageSize;
}

// The status without a log line, which belongs to the caller.
int AKFileMmap::GetFileSize(unsigned long long* size) const {
  if (file_->IsMemoryStream()) {
    *size = file_->memorySize_;
    return 0;
  }
  if (!file_->IsDiskOpen()) return kAKFileStatusNotOpened;
  // A map shows the file as the system has it, so what is buffered goes there first.
  if (!file_->buffer_.Flush()) return kAKFileStatusWriteFailed;
  struct stat information;
  if (::fstat(file_->descriptor_, &information) != 0) return kAKFileStatusGetSizeFailed;
  *size = static_cast<unsigned long long>(information.st_size);
  return 0;
}

int AKFileMmap::FindInMemory(unsigned long long offset, unsigned long long size, const void** address) const {
  const unsigned long long whole = file_->memorySize_;
  if (size == 0 || offset > whole || size > whole - offset) return kAKFileStatusMapOutOfBounds;
  *address = file_->memory_.data() + offset;
  return 0;
}

int AKFileMmap::MapDisk(unsigned long long offset, unsigned long long size, const void** address) const {
  unsigned long long whole = 0;
  if (const int status = GetFileSize(&whole); status != 0) return status;
  if (size == 0 || offset > whole || size > whole - offset) return kAKFileStatusMapOutOfBounds;
  if (offset % GetSysPageSize() != 0) return kAKFileStatusMapBadOffset;
  void* const mapped = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, file_->descriptor_, static_cast<off_t>(offset));
  if (mapped == MAP_FAILED) return kAKFileStatusMapFailed;
  file_->buffer_.SetWriteThrough(true);
  *address = mapped;
  return 0;
}

void AKFileMmap::Release(const AKMmapItem& item) const {
  if (!file_->IsMemoryStream()) ::munmap(const_cast<void*>(item.address), item.size);
}
