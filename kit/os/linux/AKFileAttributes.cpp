#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "kit/os/AKFileAttributes_p.h"

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kCapability = "security.capability";

// The sizes that the system allows for one attribute and for the list of their names.
constexpr std::size_t kMaxSize = 65536;

bool IsNoAttribute(int reason) { return reason == ENODATA || reason == EOPNOTSUPP || reason == ENOSYS; }

bool CopyAttribute(const std::string& path, const char* name, int descriptor, std::string* buffer) {
  buffer->resize(kMaxSize);
  const ssize_t size = ::getxattr(path.c_str(), name, buffer->data(), buffer->size());
  return size >= 0 && ::fsetxattr(descriptor, name, buffer->data(), static_cast<std::size_t>(size), 0) == 0;
}

// True when afterwards the new file has the old one's access control list, or neither has one: a folder may give its
// new files a list of its own.
bool KeepAccessList(const std::string& path, int descriptor, std::string* buffer) {
  if (::getxattr(path.c_str(), kAccessList, nullptr, 0) >= 0)
    return CopyAttribute(path, kAccessList, descriptor, buffer);
  if (!IsNoAttribute(errno)) return false;
  return ::fremovexattr(descriptor, kAccessList) == 0 || IsNoAttribute(errno);
}

void KeepExtendedAttributes(const std::string& path, int descriptor, std::string* buffer) {
  std::string names(kMaxSize, '\0');
  const ssize_t size = ::listxattr(path.c_str(), names.data(), names.size());
  if (size <= 0) return;
  names.resize(static_cast<std::size_t>(size));
  for (std::size_t at = 0; at < names.size(); at += std::strlen(names.c_str() + at) + 1) {
    const char* const name = names.c_str() + at;
    if (std::strcmp(name, kAccessList) == 0 || std::strcmp(name, kCapability) == 0) continue;
    CopyAttribute(path, name, descriptor, buffer);  // the system keeps some of them to itself
  }
}

}  // namespace

bool AKFileKeepAttributes(const std::string& path, const struct stat& status, int descriptor) {
  struct stat own;
  if (::fstat(descriptor, &own) != 0) return false;
  constexpr uid_t kSameUser = static_cast<uid_t>(-1);
  constexpr gid_t kSameGroup = static_cast<gid_t>(-1);
  const bool hasGroup = own.st_gid == status.st_gid || ::fchown(descriptor, kSameUser, status.st_gid) == 0;
  std::string buffer;
  const bool hasList = hasGroup && KeepAccessList(path, descriptor, &buffer);
  KeepExtendedAttributes(path, descriptor, &buffer);
  mode_t mode = status.st_mode & 01777;
  if (!hasGroup && ::getxattr(path.c_str(), kAccessList, nullptr, 0) < 0) {
    const mode_t both = mode >> 3 & mode & 7;
    mode = (mode & 01700) | both << 3 | both;
    ::fremovexattr(descriptor, kAccessList);
  } else if (!hasList) {
    mode &= 01700;
  }
  if (::fchmod(descriptor, mode) != 0) return false;
  if (own.st_uid == status.st_uid) return true;
  static_cast<void>(::fchown(descriptor, status.st_uid, kSameGroup) == 0);  // last: it may take the right to do more
  return true;
}
