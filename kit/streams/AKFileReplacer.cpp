#include "kit/streams/AKFileReplacer.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFileErrors.h"

namespace {

constexpr int kMaxNameAttempts = 100;
constexpr char kTemporaryPrefix[] = ".tmp_";
constexpr std::size_t kTemporaryDigits = 16;
constexpr time_t kAbandonedAfter = 3600;  // seconds without a write

// Replaces a path by that of the file it leads to through links; one that leads nowhere stays. False when the system
// cannot tell.
bool FollowLinks(AKFilePath* path) {
  const std::unique_ptr<char, decltype(&std::free)> resolved(
      ::realpath(AKFileUtils::GetAsSystemPath(*path).CStr(), nullptr), &std::free);
  if (resolved == nullptr) return errno == ENOENT;
  AKFilePath result;
  if (AKFileUtils::GetFromSystemPath(resolved.get(), &result)) *path = result;
  return true;
}

AKFilePath TemporaryBeside(const AKFilePath& target) {
  unsigned long long number = 0;
  if (::getrandom(&number, sizeof(number), 0) != sizeof(number)) number = static_cast<unsigned long long>(::getpid());
  AKString name;
  name.Assignf("%s%016llX", kTemporaryPrefix, number);
  AKFilePath path = target;
  path.SetFileName(name);
  return path;
}

bool IsTemporaryName(const char* name) {
  const std::size_t prefix = sizeof(kTemporaryPrefix) - 1;
  return std::strncmp(name, kTemporaryPrefix, prefix) == 0 &&
         std::strspn(name + prefix, "0123456789ABCDEF") == kTemporaryDigits &&
         std::strlen(name) == prefix + kTemporaryDigits;
}

// A program that was killed while it wrote leaves its temporary file. Only names that a replacer makes are looked at.
void RemoveAbandoned(const char* folder) {
  const auto close = [](DIR* entries) { ::closedir(entries); };
  const std::unique_ptr<DIR, decltype(close)> entries(::opendir(folder), close);
  if (entries == nullptr) return;
  const time_t now = ::time(nullptr);
  while (const dirent* entry = ::readdir(entries.get())) {
    struct stat status;
    if (!IsTemporaryName(entry->d_name)) continue;
    if (::fstatat(::dirfd(entries.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
    if (S_ISREG(status.st_mode) && status.st_mtime < now - kAbandonedAfter) {
      ::unlinkat(::dirfd(entries.get()), entry->d_name, 0);
    }
  }
}

// The rename is complete by now; what this adds is that it also survives a power failure. Not every file system can do
// it, so its failure is no failure of the replacement.
void FinishFolder(const AKFilePath& folder) {
  const AKString path = folder.IsEmpty() ? AKString(".") : AKFileUtils::GetAsSystemPath(folder);
  const int descriptor = ::open(path.CStr(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
  RemoveAbandoned(path.CStr());
}

}  // namespace

AKFileReplacer::~AKFileReplacer() {
  if (!file_.has_value()) return;
  if (temporary_.IsEmpty()) {
    file_->Close();
  } else {
    file_->Remove();
  }
}

int AKFileReplacer::Open() {
  if (file_.has_value()) return AKFileLogFailure(*file_, kAKFileStatusAlreadyOpened);
  errno = 0;
  if (!FollowLinks(&target_)) return AKFileLogPathFailure(target_.Text(), kAKFileStatusOpenFailed);
  const AKString systemPath = AKFileUtils::GetAsSystemPath(target_);
  struct stat status;
  const bool exists = ::stat(systemPath.CStr(), &status) == 0;
  if (!exists && errno != ENOENT) return AKFileLogPathFailure(target_.Text(), kAKFileStatusOpenFailed);
  if (exists && !S_ISREG(status.st_mode)) {
    file_.emplace(target_);
    return file_->CreateForReadWrite();
  }
  errno = 0;
  // Renaming needs no right to write to the old file; somebody who took that right away meant it.
  if (exists && ::access(systemPath.CStr(), W_OK) != 0) {
    return AKFileLogPathFailure(target_.Text(), kAKFileStatusOpenFailed);
  }
  if (!CreateBesideTarget(exists ? status.st_mode & 07777 : 0)) {
    return AKFileLogPathFailure(target_.Text(), kAKFileStatusOpenFailed);
  }
  file_.emplace(temporary_);
  return file_->OpenForReadWrite();
}

bool AKFileReplacer::CreateBesideTarget(unsigned int permissions) {
  int descriptor = -1;
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    errno = 0;
    temporary_ = TemporaryBeside(target_);
    const AKString path = AKFileUtils::GetAsSystemPath(temporary_);
    descriptor = ::open(path.CStr(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (descriptor >= 0 || (errno != EEXIST && errno != EINTR)) break;
  }
  if (descriptor < 0) return false;
  const bool done = permissions == 0 || ::fchmod(descriptor, permissions) == 0;
  const int reason = errno;
  ::close(descriptor);
  if (!done) AKFileUtils::RemoveFile(temporary_);
  errno = reason;
  return done;
}

int AKFileReplacer::Commit() {
  if (!file_.has_value()) return AKFileLogPathFailure(target_.Text(), kAKFileStatusNotOpened);
  if (temporary_.IsEmpty()) return file_->Close();
  if (const int synced = file_->Sync(); synced != 0) {
    const int reason = errno;
    file_->Close();
    errno = reason;
    return synced;
  }
  if (const int closed = file_->Close(); closed != 0) return closed;
  errno = 0;
  if (!AKFileUtils::Rename(temporary_, target_)) {
    return AKFileLogPathFailure(target_.Text(), kAKFileStatusWriteFailed);
  }
  file_.reset();  // the destructor has nothing to delete any more
  FinishFolder(target_.Folder());
  return 0;
}
