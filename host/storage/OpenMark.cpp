#include "host/storage/OpenMark.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "kit/files/AKFileUtils.h"
#include "kit/files/AKStandardFolders.h"
#include "kit/text/AKTextConversions.h"

namespace host {
namespace {

// The same for all paths of a document, and for the file that a save puts in its place. Empty when there is none.
std::string MarkOf(const std::string& path) {
  const AKFilePath data = AKStandardFolderGetPath(AKStandardFolder::kApplicationSupport);
  std::error_code failed;
  const std::string document = std::filesystem::weakly_canonical(path, failed).string();
  if (path.empty() || data.IsEmpty() || failed) return "";
  const std::string folder = std::string(AKFileUtils::GetAsSystemPath(data).CStr()) + "/objecthost/open";
  std::filesystem::create_directories(folder, failed);
  char name[32];
  std::snprintf(name, sizeof(name), "/%016llx", AKStringComputeHashCode64(AKString(document.c_str())));
  return failed ? "" : folder + name;
}

// Who closes the last mark removes the file: another one may have the name by now.
bool HasName(int descriptor, const std::string& file) {
  struct stat own {};
  struct stat named {};
  return fstat(descriptor, &own) == 0 && stat(file.c_str(), &named) == 0 && own.st_dev == named.st_dev &&
         own.st_ino == named.st_ino;
}

}  // namespace

// The first one gets the lock for itself alone; then all hold it together, so that each later one sees any of them.
OpenMark::OpenMark(const std::string& path) : file_(MarkOf(path)) {
  while (!file_.empty()) {
    descriptor_ = open(file_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor_ < 0) return;
    wasOpen_ = flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    flock(descriptor_, LOCK_SH | LOCK_NB);
    if (HasName(descriptor_, file_)) return;
    close(descriptor_);
  }
}

OpenMark::~OpenMark() {
  if (descriptor_ < 0) return;
  if (flock(descriptor_, LOCK_EX | LOCK_NB) == 0 && HasName(descriptor_, file_)) unlink(file_.c_str());
  close(descriptor_);
}

}  // namespace host
