#include <sys/xattr.h>

#include <cerrno>
#include <cstring>

#include "kit/os/AKFileAttributes_p.h"

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kCapability = "security.capability";

// The sizes that the system allows for one attribute and for the list of their names.
constexpr std::size_t kMaxSize = 65536;

bool IsNoAttribute(int reason) { return reason == ENODATA || reason == EOPNOTSUPP || reason == ENOSYS; }

bool CopyAttribute(const std::string& path, const char* name, int descriptor) {
  std::string value(kMaxSize, '\0');
  const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
  return size >= 0 && ::fsetxattr(descriptor, name, value.data(), static_cast<std::size_t>(size), 0) == 0;
}

}  // namespace

bool AKFileHasAccessList(const std::string& path) { return ::getxattr(path.c_str(), kAccessList, nullptr, 0) >= 0; }

bool AKFileCopyAccessList(const std::string& path, int descriptor) {
  if (AKFileHasAccessList(path)) return CopyAttribute(path, kAccessList, descriptor);
  if (!IsNoAttribute(errno)) return false;
  return ::fremovexattr(descriptor, kAccessList) == 0 || IsNoAttribute(errno);
}

void AKFileRemoveAccessList(int descriptor) { ::fremovexattr(descriptor, kAccessList); }

void AKFileCopyExtendedAttributes(const std::string& path, int descriptor) {
  std::string names(kMaxSize, '\0');
  const ssize_t size = ::listxattr(path.c_str(), names.data(), names.size());
  if (size <= 0) return;
  names.resize(static_cast<std::size_t>(size));
  for (std::size_t at = 0; at < names.size(); at += std::strlen(names.c_str() + at) + 1) {
    const char* const name = names.c_str() + at;
    if (std::strcmp(name, kAccessList) == 0 || std::strcmp(name, kCapability) == 0) continue;
    CopyAttribute(path, name, descriptor);  // the system keeps some of them to itself
  }
}
