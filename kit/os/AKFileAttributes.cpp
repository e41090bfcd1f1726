#include <unistd.h>

#include "kit/os/AKFileAttributes_p.h"

bool AKFileKeepAttributes(const std::string& path, const struct stat& status, int descriptor) {
  struct stat own;
  if (::fstat(descriptor, &own) != 0) return false;
  constexpr uid_t kSameUser = static_cast<uid_t>(-1);
  constexpr gid_t kSameGroup = static_cast<gid_t>(-1);
  const bool hasGroup = own.st_gid == status.st_gid || ::fchown(descriptor, kSameUser, status.st_gid) == 0;
  const bool hasList = hasGroup && AKFileCopyAccessList(path, descriptor);
  AKFileCopyExtendedAttributes(path, descriptor);
  mode_t mode = status.st_mode & 01777;
  if (!hasGroup && !AKFileHasAccessList(path)) {
    const mode_t both = mode >> 3 & mode & 7;
    mode = (mode & 01700) | both << 3 | both;
    AKFileRemoveAccessList(descriptor);
  } else if (!hasList) {
    mode &= 01700;
  }
  if (::fchmod(descriptor, mode) != 0) return false;
  if (own.st_uid == status.st_uid) return true;
  static_cast<void>(::fchown(descriptor, status.st_uid, kSameGroup) == 0);  // last: it may take the right to do more
  return true;
}
