#include <unistd.h>

#include <cerrno>
#include <vector>

#include "kit/files/AKDescriptor_p.h"
#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFileRewrite_p.h"

namespace {

constexpr std::size_t kPiece = 1 << 20;

bool WriteAll(int descriptor, const char* bytes, std::size_t count, off_t position) {
  while (count > 0) {
    const ssize_t put = ::pwrite(descriptor, bytes, count, position);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    bytes += put;
    count -= static_cast<std::size_t>(put);
    position += put;
  }
  return true;
}

// Makes the content of `to` that of `from`, on the disk.
bool CopyContent(int from, int to) {
  std::vector<char> buffer(kPiece);
  off_t position = 0;
  for (;;) {
    const ssize_t got = ::pread(from, buffer.data(), buffer.size(), position);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) break;
    if (!WriteAll(to, buffer.data(), static_cast<std::size_t>(got), position)) return false;
    position += got;
  }
  return AKTruncateRetrying(to, position) && AKSyncRetrying(to);
}

}  // namespace

int AKFileOpenNameless() {
  AKFilePath path;
  const int descriptor = AKFileUtils::CreateUnusedFileInTemporaryDir(&path);
  if (descriptor >= 0) AKFileUtils::RemoveFile(path);
  return descriptor;
}

bool AKFileRewrite(int target, int content, int old) {
  if (old < 0) return CopyContent(content, target);
  AKFilePath path;
  const AKDescriptor copy(AKFileUtils::CreateUnusedFileInTemporaryDir(&path));
  if (!copy.IsOpen()) return false;
  const bool copied = CopyContent(old, copy.Number());
  const bool written = copied && CopyContent(content, target);
  const int reason = errno;
  if (!copied || written || CopyContent(copy.Number(), target)) AKFileUtils::RemoveFile(path);
  errno = reason;
  return written;
}
