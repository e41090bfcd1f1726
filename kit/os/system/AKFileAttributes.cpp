#include <copyfile.h>
#include <fcntl.h>
#include <sys/acl.h>
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

bool AKFileHasAccessList(const std::string& path) {
  const acl_t list = ::acl_get_file(path.c_str(), ACL_TYPE_EXTENDED);
  if (list == nullptr) return false;
  ::acl_free(list);
  return true;
}

bool AKFileCopyAccessList(const std::string& path, int descriptor) { return Copy(path, descriptor, COPYFILE_ACL); }

void AKFileRemoveAccessList(int descriptor) {
  const acl_t none = ::acl_init(0);
  if (none == nullptr) return;
  ::acl_set_fd_np(descriptor, none, ACL_TYPE_EXTENDED);
  ::acl_free(none);
}

void AKFileCopyExtendedAttributes(const std::string& path, int descriptor) { Copy(path, descriptor, COPYFILE_XATTR); }
