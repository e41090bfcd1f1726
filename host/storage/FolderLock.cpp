#include "host/storage/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <thread>

#include "host/storage/WholeFiles.h"

namespace host {

FolderLock::FolderLock(const std::string& path, std::chrono::milliseconds patience) {
  std::error_code failed;
  const std::filesystem::path file = std::filesystem::weakly_canonical(path, failed);
  if (failed || path.empty()) return;
  descriptor_ = OpenRetrying(file.parent_path().string(), O_RDONLY | O_DIRECTORY);
  if (descriptor_ < 0) return;
  const auto end = std::chrono::steady_clock::now() + patience;
  while (flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
    if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() >= end) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
}

FolderLock::~FolderLock() {
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace host
