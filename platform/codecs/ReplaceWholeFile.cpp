#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

#include "platform/codecs/Descriptor.h"
#include "platform/codecs/WholeFile.h"

namespace platform {
namespace {

constexpr int kMaxNameAttempts = 100;
constexpr int kMaxLinks = 40;
constexpr std::size_t kMaxTransfer = 1 << 30;  // the system takes no more than 2 GB at a time
constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kCapability = "security.capability";

// Makes the content of a file, and what is on the disk, the given bytes.
bool WriteContent(int descriptor, const void* data, std::size_t size) {
  const auto* bytes = static_cast<const unsigned char*>(data);
  std::size_t done = 0;
  while (done < size) {
    const std::size_t piece = std::min(size - done, kMaxTransfer);
    const ssize_t count = ::pwrite(descriptor, bytes + done, piece, static_cast<off_t>(done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
  }
  while (::ftruncate(descriptor, static_cast<off_t>(size)) != 0) {
    if (errno != EINTR) return false;
  }
  return SyncRetrying(descriptor);
}

bool WriteDevice(const std::string& path, const void* data, std::size_t size) {
  Descriptor file(OpenRetrying(path.c_str(), O_WRONLY));
  if (!file.IsOpen()) return false;
  const auto* bytes = static_cast<const unsigned char*>(data);
  while (size > 0) {
    const ssize_t count = ::write(file.Number(), bytes, std::min(size, kMaxTransfer));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
  return file.Close();
}

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

// Only the last name is followed: to spell the whole path out may take rights that nobody needs to open the file.
bool FollowLinks(std::string* path) {
  struct stat status;
  for (int links = 0; links <= kMaxLinks; ++links) {
    const bool known = ::lstat(path->c_str(), &status) == 0;
    if (!known || !S_ISLNK(status.st_mode)) return known || errno == ENOENT;
    char leadsTo[PATH_MAX];
    const ssize_t length = ::readlink(path->c_str(), leadsTo, sizeof(leadsTo));
    if (length < 0) return false;
    const std::string next(leadsTo, static_cast<std::size_t>(length));
    *path = next.starts_with('/') ? next : FolderOf(*path) + next;
  }
  errno = ELOOP;
  return false;
}

bool CopyAttribute(const std::string& path, const char* name, int descriptor) {
  std::vector<char> value(65536);  // the most that the system allows
  const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
  return size >= 0 && ::fsetxattr(descriptor, name, value.data(), static_cast<std::size_t>(size), 0) == 0;
}

void CopyAttributes(const std::string& path, int descriptor) {
  std::vector<char> names(65536);
  const ssize_t size = ::listxattr(path.c_str(), names.data(), names.size());
  for (ssize_t at = 0; at < size; at += static_cast<ssize_t>(std::strlen(&names[static_cast<std::size_t>(at)])) + 1) {
    const char* const name = &names[static_cast<std::size_t>(at)];
    if (std::strcmp(name, kAccessList) != 0 && std::strcmp(name, kCapability) != 0) {
      CopyAttribute(path, name, descriptor);  // the system keeps some of them to itself
    }
  }
}

// Without the right to the old group its members and all others get what both had; where the access control list
// cannot be kept, nobody but the owner gets anything.
bool KeepAttributes(const std::string& path, const struct stat& old, int descriptor) {
  struct stat own;
  if (::fstat(descriptor, &own) != 0) return false;
  const bool hasGroup = own.st_gid == old.st_gid || ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
  const bool hadList = ::getxattr(path.c_str(), kAccessList, nullptr, 0) >= 0;
  mode_t mode = old.st_mode & 01777;
  if (!hadList) ::fremovexattr(descriptor, kAccessList);  // a folder may give its new files one
  const bool hasList = hasGroup && hadList && CopyAttribute(path, kAccessList, descriptor);
  CopyAttributes(path, descriptor);
  if (hadList && !hasList) {
    mode &= 01700;
  } else if (!hasGroup) {
    const mode_t both = mode >> 3 & mode & 7;
    mode = (mode & 01700) | both << 3 | both;
  }
  if (::fchmod(descriptor, mode) != 0) return false;
  // Last, since it may take the right to do the rest.
  return own.st_uid == old.st_uid || ::fchown(descriptor, old.st_uid, static_cast<gid_t>(-1)) == 0 || errno == EPERM;
}

// The same for every replacement of a file, so that the next one comes across what a killed one left (FNV-1a); the kit
// names and locks its temporary files alike.
unsigned long long NumberOf(const std::string& name) {
  unsigned long long number = 0xCBF29CE484222325ULL;
  for (const char byte : name) number = (number ^ static_cast<unsigned char>(byte)) * 0x100000001B3ULL;
  return number;
}

unsigned long long RandomNumber() {
  unsigned long long number = 0;
  if (::getrandom(&number, sizeof(number), 0) != sizeof(number)) number = static_cast<unsigned long long>(::getpid());
  return number;
}

// A file that is being written is locked: of one without a lock the writer is gone.
void RemoveAbandoned(const std::string& path) {
  const Descriptor file(OpenRetrying(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
  struct stat status;
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if (::flock(file.Number(), LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
}

int CreateBeside(const std::string& target, mode_t mode, std::string* path) {
  const std::string folder = FolderOf(target);
  unsigned long long number = NumberOf(target.substr(folder.size()));
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    char name[32];
    std::snprintf(name, sizeof(name), ".tmp_%016llX", number);
    *path = folder + name;
    const int descriptor = OpenRetrying(path->c_str(), O_WRONLY | O_CREAT | O_EXCL, mode);
    if (descriptor < 0 && errno != EEXIST) return -1;
    if (descriptor >= 0 && (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)) return descriptor;
    if (descriptor >= 0) ::close(descriptor);  // somebody took it for abandoned
    if (attempt == 0) RemoveAbandoned(*path);
    if (attempt > 0) number = RandomNumber();
  }
  return -1;
}

// Opened before the rename, behind which nothing may fail any more.
Descriptor OpenFolderOf(const std::string& path) {
  const std::string folder = FolderOf(path);
  return Descriptor(OpenRetrying(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY));
}

// Removes a file at its end, also when memory lacks on the way there.
struct Removal {
  ~Removal() {
    if (!isWanted) return;
    const int reason = errno;
    ::unlink(path.c_str());
    errno = reason;
  }
  const std::string& path;
  bool isWanted = true;
};

bool ReplaceByRename(const std::string& target, const struct stat* old, const void* data, std::size_t size) {
  const Descriptor folder = OpenFolderOf(target);
  std::string temporary;
  Descriptor file(CreateBeside(target, old == nullptr ? 0644 : 0600, &temporary));
  if (!file.IsOpen()) return false;
  Removal removal{temporary};
  const bool done = (old == nullptr || KeepAttributes(target, *old, file.Number())) &&
                    WriteContent(file.Number(), data, size) && file.Close() &&
                    ::rename(temporary.c_str(), target.c_str()) == 0;
  removal.isWanted = !done;
  // The rename is complete without it; what this adds is that it survives a power failure, where the file system can.
  if (done && folder.IsOpen()) SyncRetrying(folder.Number());
  return done;
}

bool AcceptAll(const unsigned char*, std::size_t) { return true; }

bool RewriteInPlace(const std::string& target, const struct stat& old, const void* data, std::size_t size) {
  std::vector<unsigned char> before;
  const bool hasCopy = ReadWholeFile(target, 0, &AcceptAll, &before);
  if (!hasCopy && errno != EACCES) return false;  // a file that cannot be read is written without a copy
  Descriptor file(OpenRetrying(target.c_str(), O_WRONLY));
  if (!file.IsOpen()) return false;
  const bool written = WriteContent(file.Number(), data, size);
  const int reason = errno;
  if (!written && hasCopy) WriteContent(file.Number(), before.data(), before.size());
  if ((old.st_mode & (S_ISUID | S_ISGID)) != 0) ::fchmod(file.Number(), old.st_mode & 01777);
  errno = reason;
  return written && file.Close();
}

// Refusals of a folder, or of its file system, that say nothing about the file in it.
bool IsRefusalOfTheFolder(int reason) {
  return reason == EACCES || reason == EPERM || reason == EROFS || reason == EBUSY || reason == ENAMETOOLONG;
}

}  // namespace

bool ReplaceWholeFile(const std::string& path, const void* data, std::size_t size) {
  struct stat status;
  const bool exists = ::stat(path.c_str(), &status) == 0;
  if (!exists && errno != ENOENT) return false;
  if (exists && !S_ISREG(status.st_mode)) return WriteDevice(path, data, size);
  std::string target = path;
  if (!FollowLinks(&target)) return false;
  // Renaming needs no right to write to the old file; somebody who took that right away meant it.
  if (exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return false;
  if (ReplaceByRename(target, exists ? &status : nullptr, data, size)) return true;
  return exists && IsRefusalOfTheFolder(errno) && RewriteInPlace(target, status, data, size);
}

}  // namespace platform
