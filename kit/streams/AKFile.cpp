#include "kit/streams/AKFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "kit/files/AKDescriptor_p.h"
#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileMmap.h"

namespace {

constexpr unsigned int kOpenBits = AKFile::kFlagRead | AKFile::kFlagWrite;
constexpr unsigned long long kMaxOffset = std::numeric_limits<long long>::max();

unsigned int sPreferredCacheMode = AKFile::kModeTemporary;

unsigned int CacheModeOf(unsigned int mode) {
  if ((mode & AKFile::kModePreferredCache) != 0) return sPreferredCacheMode;
  return mode & (AKFile::kModeTemporary | AKFile::kModeMemory);
}

// Without O_NONBLOCK opening a pipe to read would wait for a writer. Reads wait as they always do.
int Open(const char* path, int flags) {
  const bool reads = (flags & O_ACCMODE) == O_RDONLY;
  const int descriptor = AKOpenRetrying(AT_FDCWD, path, flags | (reads ? O_NONBLOCK : 0), 0644);
  if (descriptor >= 0 && reads) ::fcntl(descriptor, F_SETFL, 0);
  return descriptor;
}

}  // namespace

AKFile::AKFile(unsigned int mode) : flags_(kEndianLittle | CacheModeOf(mode)) {}

AKFile::AKFile(const AKFilePath& path, unsigned int mode) : flags_(kEndianLittle | (mode & kModeTemporary)) {
  if (IsTemporary()) return;
  path_ = path;
  name_ = path.FileName();
}

AKFile::~AKFile() { Close(); }

void AKFile::SetPreferedModeCache(unsigned int mode) {
  if (mode == kModeTemporary || mode == kModeMemory) sPreferredCacheMode = mode;
}

void AKFile::SetEndianness(unsigned int endian) {
  if (endian == kEndianBig || endian == kEndianLittle) flags_ = (flags_ & ~3U) | endian;
}

int AKFile::OpenForRead() {
  if (IsMemoryStream()) return OpenMemory(kFlagRead);
  return OpenDisk(O_RDONLY, kFlagRead);
}

int AKFile::OpenForReadWrite() {
  if (IsMemoryStream()) return OpenMemory(kOpenBits);
  return OpenDisk(O_RDWR, kOpenBits);
}

int AKFile::CreateForReadWrite() {
  if (IsMemoryStream()) return OpenMemory(kOpenBits);
  if (IsTemporary()) return CreateTemporary();
  return OpenDisk(O_RDWR | O_CREAT | O_TRUNC, kOpenBits);
}

int AKFile::OpenDisk(int systemFlags, unsigned int openBits) {
  errno = 0;
  if (IsDiskOpen()) return AKFileLogFailure(*this, kAKFileStatusAlreadyOpened);
  const int descriptor = Open(AKFileUtils::GetAsSystemPath(path_).CStr(), systemFlags);
  if (descriptor < 0) return AKFileLogFailure(*this, kAKFileStatusOpenFailed);
  AttachDescriptor(descriptor, openBits);
  return 0;
}

int AKFile::CreateTemporary() {
  errno = 0;
  if (IsDiskOpen()) return AKFileLogFailure(*this, kAKFileStatusAlreadyOpened);
  const int descriptor = AKFileUtils::CreateUnusedFileInTemporaryDir(&path_);
  if (descriptor < 0) return AKFileLogFailure(*this, kAKFileStatusOpenFailed);
  name_ = path_.FileName();
  AttachDescriptor(descriptor, kOpenBits);
  return 0;
}

void AKFile::AttachDescriptor(int descriptor, unsigned int openBits) {
  descriptor_ = descriptor;
  flags_ |= openBits;
  buffer_.Attach(descriptor);
}

int AKFile::Close() {
  if (!IsMemoryStream()) return CloseDisk(true);
  CloseMemory();
  return 0;
}

int AKFile::CloseDisk(bool flush) {
  if (!IsDiskOpen()) return 0;
  map_.reset();
  int status = flush ? Flush() : 0;
  buffer_.Detach();
  const bool written = (flags_ & kFlagWrite) != 0;
  errno = 0;
  // A descriptor is gone even when close fails. For a file that was only read the failure means nothing.
  const bool closed = ::close(descriptor_) == 0 || errno == EINTR;
  if (!closed && written && status == 0) status = AKFileLogFailure(*this, kAKFileStatusWriteFailed);
  descriptor_ = -1;
  flags_ &= ~kOpenBits;
  if (!IsTemporary()) return status;
  const int deleted = DeleteFile();
  return status != 0 ? status : deleted;
}

int AKFile::DeleteFile() {
  if (path_.IsEmpty()) return 0;
  errno = 0;
  int status = 0;
  if (::unlink(AKFileUtils::GetAsSystemPath(path_).CStr()) != 0) {
    status = AKFileLogFailure(*this, kAKFileStatusWriteFailed);
  }
  if (IsTemporary()) {
    path_.Clear();
    name_.Free();
  }
  return status;
}

int AKFile::Remove() {
  if (IsMemoryStream()) return Close();
  const int closed = CloseDisk(false);
  const int deleted = DeleteFile();
  return closed != 0 ? closed : deleted;
}

int AKFile::CheckIsOpened() const {
  if (IsMemoryStream() ? memoryOpened_ : IsDiskOpen()) return 0;
  errno = 0;
  return AKFileLogFailure(*this, kAKFileStatusNotOpened);
}

int AKFile::CheckIsOpenedForRead() const {
  if ((flags_ & kFlagRead) != 0) return 0;
  errno = 0;
  return AKFileLogFailure(*this, kAKFileStatusNotOpened);
}

int AKFile::CheckIsOpenedForWrite() const {
  if ((flags_ & kOpenBits) == kOpenBits) return 0;
  errno = 0;
  return AKFileLogFailure(*this, kAKFileStatusNotOpened);
}

int AKFile::ReadUnbuffered(void* buffer, unsigned long long count) const {
  if (count == 0) return 0;
  if (const int status = CheckIsOpenedForRead(); status != 0) return status;
  if (IsMemoryStream()) return RefuseMemoryRead(count);
  switch (ReadBuffered(buffer, count)) {
    case AKFileBuffer::Result::kDone:
      return 0;
    case AKFileBuffer::Result::kReadFailed:
      return AKFileLogFailure(*this, kAKFileStatusReadFailed);
    default:
      return AKFileLogFailure(*this, kAKFileStatusWriteFailed);
  }
}

AKFileBuffer::Result AKFile::ReadBuffered(void* buffer, unsigned long long count) const {
  errno = 0;
  return buffer_.Read(buffer, count);
}

int AKFile::ReadUpTo(void* buffer, unsigned long long count, unsigned long long* got) const {
  *got = 0;
  if (const int status = CheckIsOpenedForRead(); status != 0) return status;
  if (IsMemoryStream()) {
    *got = std::min<unsigned long long>(count, memorySize_ - memoryPosition_);
    return Read(buffer, *got);
  }
  if (count == 0) return 0;
  const std::uint64_t before = buffer_.Position();
  const AKFileBuffer::Result result = ReadBuffered(buffer, count);
  *got = buffer_.Position() - before;
  const bool ended = result == AKFileBuffer::Result::kReadFailed && errno == 0;
  if (ended || result == AKFileBuffer::Result::kDone) return 0;
  return AKFileLogFailure(*this, kAKFileStatusReadFailed);
}

int AKFile::WriteUnbuffered(const void* data, unsigned long long count) {
  if (count == 0) return 0;
  if (const int status = CheckIsOpenedForWrite(); status != 0) return status;
  if (IsMemoryStream()) return WriteMemory(data, count);
  errno = 0;
  if (buffer_.Write(data, count) == AKFileBuffer::Result::kDone) return 0;
  return AKFileLogFailure(*this, kAKFileStatusWriteFailed);
}

int AKFile::Flush() const {
  errno = 0;
  return buffer_.Drop() ? 0 : AKFileLogFailure(*this, kAKFileStatusWriteFailed);
}

int AKFile::Sync() {
  if (const int status = CheckIsOpenedForWrite(); status != 0) return status;
  if (IsMemoryStream()) return 0;
  if (const int status = Flush(); status != 0) return status;
  errno = 0;
  return AKSyncRetrying(descriptor_) ? 0 : AKFileLogFailure(*this, kAKFileStatusWriteFailed);
}

int AKFile::GetPos(unsigned long long* pos) const {
  *pos = 0;
  if (const int status = CheckIsOpened(); status != 0) return status;
  if (IsMemoryStream()) {
    *pos = memoryPosition_;
    return 0;
  }
  if (!buffer_.CanSeek()) {
    errno = ESPIPE;
    return AKFileLogFailure(*this, kAKFileStatusGetPosFailed);
  }
  *pos = buffer_.Position();
  return 0;
}

int AKFile::Seek(long long offset, AKFileWhence whence) const {
  if (const int status = CheckIsOpened(); status != 0) return status;
  errno = 0;
  if (IsMemoryStream() ? SeekMemory(offset, whence) : SeekDisk(offset, whence)) return 0;
  return AKFileLogFailure(*this, kAKFileStatusSetPosFailed);
}

bool AKFile::SeekDisk(long long offset, AKFileWhence whence) const {
  if (!buffer_.CanSeek()) {
    errno = ESPIPE;
    return false;
  }
  std::uint64_t base = whence == kAKFileWhenceCurrent ? buffer_.Position() : 0;
  if (whence == kAKFileWhenceEnd && !buffer_.GetSize(&base)) return false;
  long long target = 0;
  if (__builtin_add_overflow(static_cast<long long>(base), offset, &target) || target < 0) {
    errno = EINVAL;
    return false;
  }
  buffer_.SetPosition(static_cast<std::uint64_t>(target));
  return true;
}

// A count beyond what an offset can hold becomes one that every seek refuses.
int AKFile::SetPos(unsigned long long pos) const {
  return Seek(pos > kMaxOffset ? -1 : static_cast<long long>(pos), kAKFileWhenceBegin);
}

int AKFile::Skip(unsigned long long count) const {
  if (count > kMaxOffset) return Seek(-1, kAKFileWhenceBegin);
  return Seek(static_cast<long long>(count), kAKFileWhenceCurrent);
}

int AKFile::SkipBack(unsigned long long count) const {
  if (count > kMaxOffset) return Seek(-1, kAKFileWhenceBegin);
  return Seek(-static_cast<long long>(count), kAKFileWhenceCurrent);
}

bool AKFile::GetSizeSilently(unsigned long long* size) const {
  if (IsMemoryStream()) {
    *size = memorySize_;
    return memoryOpened_;
  }
  std::uint64_t onDisk = 0;
  if (!IsDiskOpen() || !buffer_.CanSeek() || !buffer_.GetSize(&onDisk)) return false;
  *size = onDisk;
  return true;
}

bool AKFile::IsEndOfFile(unsigned long long count) const {
  unsigned long long size = 0;
  if (!GetSizeSilently(&size)) return true;
  const unsigned long long position = IsMemoryStream() ? memoryPosition_ : buffer_.Position();
  return position >= size || count >= size - position;
}

bool AKFile::HasBytes(unsigned long long count) const {
  if (count == 0 || count <= buffer_.Available()) return true;
  unsigned long long size = 0;
  if (!GetSizeSilently(&size)) return false;
  const unsigned long long position = IsMemoryStream() ? memoryPosition_ : buffer_.Position();
  return position <= size && count <= size - position;
}

int AKFile::SetFileSize(unsigned long long size) {
  if (const int status = CheckIsOpenedForWrite(); status != 0) return status;
  if (IsMemoryStream()) return SetMemorySize(size);
  errno = 0;
  if (size > kMaxOffset) {
    errno = EINVAL;
  } else if (AKTruncateRetrying(descriptor_, static_cast<off_t>(size))) {
    buffer_.Cut(size);
    return 0;
  }
  return AKFileLogFailure(*this, kAKFileStatusSetSizeFailed);
}

int AKFile::GetFileInfo(unsigned long long* size, unsigned long long* created, unsigned long long* modified) const {
  if (IsMemoryStream()) {
    if (size != nullptr) *size = memorySize_;
    if (created != nullptr) *created = 0;
    if (modified != nullptr) *modified = 0;
    return 0;
  }
  errno = 0;
  if (!IsDiskOpen()) {
    if (AKFileUtils::GetFileInfo(path_, size, created, modified)) return 0;
    return AKFileLogFailure(*this, kAKFileStatusGetSizeFailed);
  }
  // The file system is asked, so it should know of everything that was written. What it refuses is not lost by that.
  buffer_.Flush();
  unsigned long long onDisk = 0;
  errno = 0;
  if (!AKFileUtils::GetFileInfo(descriptor_, &onDisk, created, modified)) {
    return AKFileLogFailure(*this, kAKFileStatusGetSizeFailed);
  }
  if (size != nullptr) *size = std::max<unsigned long long>(onDisk, buffer_.UnwrittenEnd());
  return 0;
}

AKFileMmap* AKFile::MemMap() const {
  if (map_ == nullptr) map_ = std::make_unique<AKFileMmap>(this);
  return map_.get();
}

const void* AKFile::MemMapAll(unsigned long long* size) const { return MemMap()->MapAll(size); }

void AKFile::MemUnmapAll() const {
  if (map_ != nullptr) map_->UnmapAll();
}

int AKFile::MemMapLastError() const { return map_ == nullptr ? 0 : map_->LastError(); }
