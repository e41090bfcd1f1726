#include <fcntl.h>
#include <sys/stat.h>

#include "kit/os/AKFileStatus_p.h"

namespace {

bool GetStatus(int folder, const char* path, int flags, AKFileStatus* status) {
  struct statx found = {};
  if (::statx(folder, path, flags, STATX_BASIC_STATS | STATX_BTIME, &found) != 0) return false;
  const auto& creation = (found.stx_mask & STATX_BTIME) != 0 ? found.stx_btime : found.stx_mtime;
  status->isRegular = S_ISREG(found.stx_mode);
  status->size = found.stx_size;
  status->created = static_cast<unsigned long long>(creation.tv_sec);
  status->modified = static_cast<unsigned long long>(found.stx_mtime.tv_sec);
  return true;
}

}  // namespace

bool AKGetFileStatus(const char* path, AKFileStatus* status) { return GetStatus(AT_FDCWD, path, 0, status); }
bool AKGetFileStatus(int descriptor, AKFileStatus* status) { return GetStatus(descriptor, "", AT_EMPTY_PATH, status); }

const int kAKOpenFolder = O_PATH | O_DIRECTORY | O_CLOEXEC;
