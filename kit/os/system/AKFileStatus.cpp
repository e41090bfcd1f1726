#include <fcntl.h>
#include <sys/stat.h>

#include "kit/os/AKFileStatus_p.h"

namespace {

void Fill(const struct stat& found, AKFileStatus* status) {
  status->isRegular = S_ISREG(found.st_mode);
  status->size = static_cast<unsigned long long>(found.st_size);
  status->created = static_cast<unsigned long long>(found.st_birthtimespec.tv_sec);
  status->modified = static_cast<unsigned long long>(found.st_mtimespec.tv_sec);
}

}  // namespace

bool AKGetFileStatus(const char* path, AKFileStatus* status) {
  struct stat found = {};
  if (::stat(path, &found) != 0) return false;
  Fill(found, status);
  return true;
}

bool AKGetFileStatus(int descriptor, AKFileStatus* status) {
  struct stat found = {};
  if (::fstat(descriptor, &found) != 0) return false;
  Fill(found, status);
  return true;
}

const int kAKOpenFolder = O_SEARCH | O_DIRECTORY | O_CLOEXEC;
