#include <copyfile.h>
#include <fcntl.h>
#include <unistd.h>

#include "kit/os/AKFileAttributes_p.h"

namespace {

// Of access control list and extended attributes what `what` names; false when it could not be copied whole.
bool Copy(const std::string& path, int descriptor, copyfile_flags_t what) {
  const int source = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (source < 0) return false;
  const bool done = ::fcopyfile(source, descriptor, nullptr, what) == 0;
  ::close(source);
  return done;
}

}  // namespace

bool AKFileKeepAttributes(const std::string& path, const struct stat& status, int descriptor) {
  struct stat own;
  if (::fstat(descriptor, &own) != 0) return false;
  constexpr uid_t kSameUser = static_cast<uid_t>(-1);
  constexpr gid_t kSameGroup = static_cast<gid_t>(-1);
  const bool hasGroup = own.st_gid == status.st_gid || ::fchown(descriptor, kSameUser, status.st_gid) == 0;
  const bool hasList = hasGroup && Copy(path, descriptor, COPYFILE_ACL);
  Copy(path, descriptor, COPYFILE_XATTR);
  mode_t mode = status.st_mode & 01777;
  if (!hasGroup) {
    const mode_t both = mode >> 3 & mode & 7;
    mode = (mode & 01700) | both << 3 | both;
  } else if (!hasList) {
    mode &= 01700;
  }
  if (::fchmod(descriptor, mode) != 0) return false;
  if (own.st_uid == status.st_uid) return true;
  static_cast<void>(::fchown(descriptor, status.st_uid, kSameGroup) == 0);  // last: it may take the right to do more
  return true;
}
