#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <unistd.h>

#include <climits>
#include <cstdio>

#include "kit/os/AKFileAttributes_p.h"
#include "kit/os/AKFileStatus_p.h"
#include "kit/streams/AKFileRewrite_p.h"
#include "kit/streams/AKFileTarget_p.h"

namespace {

constexpr int kMaxLinks = 40;  // as many as the system follows
constexpr int kMaxNameAttempts = 100;

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

std::string TemporaryName(unsigned long long number) {
  char name[32];
  std::snprintf(name, sizeof(name), ".tmp_%016llX", number);
  return name;
}

// The same for every replacement of a file, so that the next one comes across what a killed one left (FNV-1a).
unsigned long long NumberOf(const std::string& name) {
  unsigned long long number = 0xCBF29CE484222325ULL;
  for (const char byte : name) number = (number ^ static_cast<unsigned char>(byte)) * 0x100000001B3ULL;
  return number;
}

unsigned long long RandomNumber() {
  unsigned long long number = 0;
  if (::getentropy(&number, sizeof(number)) != 0) number = static_cast<unsigned long long>(::getpid());
  return number;
}

// Refusals of a folder, or of its file system, that say nothing about the file in it.
bool IsRefusalOfTheFolder(int reason) {
  return reason == EACCES || reason == EPERM || reason == EROFS || reason == EBUSY || reason == EXDEV ||
         reason == ENAMETOOLONG;
}

// True as well where the file system has no locks.
bool Lock(int descriptor) { return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

bool IsSameFile(const struct stat& first, const struct stat& second) {
  return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

}  // namespace

bool AKFileTarget::Find(const std::string& path) {
  path_ = path;
  const bool exists = ::stat(path_.c_str(), &status_) == 0;
  if (!exists && (errno != ENOENT || path_.empty())) return false;
  kind_ = !exists ? Kind::kMissing : S_ISREG(status_.st_mode) ? Kind::kRegular : Kind::kOther;
  if (kind_ == Kind::kOther) return true;
  if (!FollowLinks()) return false;
  if (kind_ == Kind::kOther) return true;
  errno = 0;
  // Renaming needs no right to write to the old file; somebody who took that right away meant it.
  if (exists && ::faccessat(AT_FDCWD, path_.c_str(), W_OK, AT_EACCESS) != 0) return false;
  const std::string folder = FolderOf(path_);
  name_ = path_.substr(folder.size());
  folder_.Replace(AKOpenRetrying(AT_FDCWD, folder.empty() ? "." : folder.c_str(), kAKOpenFolder));
  return folder_.IsOpen();
}

// Only the last name is followed: links above it are followed by every system call, and to spell the whole path out may
// take rights that nobody needs to open the file.
bool AKFileTarget::FollowLinks() {
  std::string path = path_;
  struct stat status;
  for (int links = 0;; ++links) {
    const bool known = ::lstat(path.c_str(), &status) == 0;
    if (!known && errno != ENOENT) return false;
    if (!known || !S_ISLNK(status.st_mode)) break;
    char leadsTo[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), leadsTo, sizeof(leadsTo));
    if (length < 0) return false;
    if (links == kMaxLinks) {
      errno = ELOOP;
      return false;
    }
    const std::string next(leadsTo, static_cast<std::size_t>(length));
    path = next.starts_with('/') ? next : FolderOf(path).append(next);
  }
  // Some links of the system's own spell no path.
  if (kind_ == Kind::kRegular && (::stat(path.c_str(), &status) != 0 || !IsSameFile(status, status_))) {
    kind_ = Kind::kOther;
  } else {
    path_ = path;
  }
  return true;
}

int AKFileTarget::Stage() {
  int descriptor = StageBeside();
  if (descriptor < 0 && kind_ == Kind::kRegular && IsRefusalOfTheFolder(errno)) descriptor = AKFileOpenNameless();
  if (descriptor < 0) return -1;
  staged_.Replace(descriptor);
  return ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
}

void AKFileTarget::SetModel(const std::string& path) {
  hasModel_ = true;
  model_ = ::stat(path.c_str(), &modelStatus_) == 0 ? path : std::string();
}

bool AKFileTarget::GiveAttributes(int descriptor) const {
  if (hasModel_) return model_.empty() || AKFileKeepAttributes(model_, modelStatus_, descriptor);
  return kind_ == Kind::kMissing || AKFileKeepAttributes(path_, status_, descriptor);
}

int AKFileTarget::StageBeside() {
  const std::string usual = TemporaryName(NumberOf(name_));
  stagedName_ = usual;
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    errno = 0;
    AKDescriptor file(OpenBeside(stagedName_));
    if (file.IsOpen()) {
      if (!GiveAttributes(file.Number())) {
        const int reason = errno;
        ::unlinkat(folder_.Number(), stagedName_.c_str(), 0);
        errno = reason;
        break;
      }
      return file.Release();
    }
    if (errno != EEXIST) break;
    if (attempt == 0) RemoveAbandoned();
    if (attempt > 0) stagedName_ = TemporaryName(RandomNumber());
  }
  stagedName_.clear();
  return -1;
}

// A new file is locked as long as it is written: who finds one without a lock knows that its writer is gone. A file of
// the old one's rights is nobody's but the user's until it has them.
int AKFileTarget::OpenBeside(const std::string& name) const {
  const mode_t mode = kind_ == Kind::kMissing && !hasModel_ ? 0644 : 0600;
  const int descriptor = AKOpenRetrying(folder_.Number(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
  if (descriptor < 0 || Lock(descriptor)) return descriptor;
  ::close(descriptor);
  errno = EEXIST;  // somebody took it for abandoned
  return -1;
}

void AKFileTarget::RemoveAbandoned() const {
  const AKDescriptor file(AKOpenRetrying(folder_.Number(), stagedName_.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
  struct stat status;
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if (::flock(file.Number(), LOCK_EX | LOCK_NB) == 0) ::unlinkat(folder_.Number(), stagedName_.c_str(), 0);
}

bool AKFileTarget::Put() {
  if (stagedName_.empty()) return WriteInPlace();
  if (::renameat(folder_.Number(), stagedName_.c_str(), folder_.Number(), name_.c_str()) != 0) {
    return kind_ == Kind::kRegular && IsRefusalOfTheFolder(errno) && WriteInPlace();
  }
  stagedName_.clear();
  // The rename is complete by now; what this adds is that it also survives a power failure. Not every file system can
  // do it, so its failure is no failure of the replacement.
  const AKDescriptor folder(AKOpenRetrying(folder_.Number(), ".", O_RDONLY | O_DIRECTORY));
  if (folder.IsOpen()) AKSyncRetrying(folder.Number());
  return true;
}

bool AKFileTarget::WriteInPlace() const {
  const AKDescriptor target(AKOpenRetrying(folder_.Number(), name_.c_str(), O_WRONLY));
  if (!target.IsOpen()) return false;
  const AKDescriptor old(AKOpenRetrying(folder_.Number(), name_.c_str(), O_RDONLY));
  if (!old.IsOpen() && errno != EACCES) return false;
  if (!AKFileRewrite(target.Number(), staged_.Number(), old.Number())) return false;
  constexpr mode_t kSetIdBits = S_ISUID | S_ISGID;
  if ((status_.st_mode & kSetIdBits) != 0) ::fchmod(target.Number(), status_.st_mode & 01777);
  return true;
}

void AKFileTarget::Discard() {
  const int reason = errno;
  if (!stagedName_.empty()) ::unlinkat(folder_.Number(), stagedName_.c_str(), 0);
  stagedName_.clear();
  errno = reason;
}
