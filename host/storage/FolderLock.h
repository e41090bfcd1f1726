// Lets one program at a time replace documents of a folder.
//
// Whoever saves looks whether the file is still the one that it knows and then replaces it; between the two another
// program must not do the same. The lock is one of the system's on the folder itself, so that it leaves nothing behind
// and goes with its program. It keeps nobody from writing who does not ask for it.
#pragma once

#include <chrono>
#include <string>

namespace host {

class FolderLock {
 public:
  /// Locks the folder that the file of a path lies in, links followed. Waits for other programs, but for `patience` at
  /// most: one that was stopped while it saved must not keep all others from saving. Where the folder can't be locked,
  /// as on some network file systems, there is no lock.
  explicit FolderLock(const std::string& path, std::chrono::milliseconds patience = std::chrono::seconds(10));
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock();

 private:
  int descriptor_ = -1;
};

}  // namespace host
