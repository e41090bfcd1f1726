#include "kit/files/AKFileUtils.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "kit/files/AKDescriptor_p.h"
#include "kit/files/AKPathText_p.h"
#include "kit/os/AKFileStatus_p.h"

namespace {

constexpr const char* kTemporaryNamePattern = "tmp_XXXXXX";

bool GetStatus(const AKFilePath& path, struct stat* status) {
  return ::stat(AKFileUtils::GetAsSystemPath(path).CStr(), status) == 0;
}

bool HasAccess(const AKFilePath& path, int mode) {
  return ::access(AKFileUtils::GetAsSystemPath(path).CStr(), mode) == 0;
}

// Creates the missing folders of a path, each from the one above it: to look a path up anew for each of its folders
// would take a time that grows with the square of their number.
class FolderChain {
 public:
  explicit FolderChain(const AKString& path) : path_(path) {}

  bool Create() {
    char* const bytes = path_.MutableData();
    AKDescriptor folder(AT_FDCWD);
    if (bytes[0] == '/') folder.Replace(::open("/", kAKOpenFolder));
    for (std::size_t end = 0;;) {
      const std::size_t start = end + std::strspn(bytes + end, "/");
      if (bytes[start] == '\0') return true;
      end = start + std::strcspn(bytes + start, "/");
      const char separator = std::exchange(bytes[end], '\0');
      const int next = Enter(folder.Number(), bytes, start, end);
      bytes[end] = separator;
      if (next < 0) return Undo();
      folder.Replace(next);
    }
  }

 private:
  int Enter(int folder, const char* bytes, std::size_t start, std::size_t end) {
    const int existing = ::openat(folder, bytes + start, kAKOpenFolder);
    if (existing >= 0 || errno != ENOENT) return existing;
    if (::mkdirat(folder, bytes + start, 0777) == 0) {
      created_.push_back(end);
    } else if (errno != EEXIST) {  // another process may have been quicker
      return -1;
    }
    return ::openat(folder, bytes + start, kAKOpenFolder);
  }

  bool Undo() {
    const int reason = errno;
    for (; !created_.empty(); created_.pop_back()) {
      path_.Resize(static_cast<unsigned int>(created_.back()));
      ::rmdir(path_.CStr());
    }
    errno = reason;
    return false;
  }

  AKString path_;
  std::vector<std::size_t> created_;  // where the names of the new folders end
};

// Of a regular file; `file` is a path or a descriptor.
template <typename File>
bool GetInfo(File file, unsigned long long* size, unsigned long long* created, unsigned long long* modified) {
  AKFileStatus status;
  if (!AKGetFileStatus(file, &status) || !status.isRegular) return false;
  if (size != nullptr) *size = status.size;
  if (created != nullptr) *created = status.created;
  if (modified != nullptr) *modified = status.modified;
  return true;
}

AKFilePath TemporaryPattern() {
  AKFilePath path = AKFileUtils::GetTemporaryDir();
  return path.Append(AKFilePath(kTemporaryNamePattern));
}

}  // namespace

AKString AKFileUtils::GetAsSystemPath(const AKFilePath& path) {
  const AKString& text = path.Text();
  if (std::memchr(text.CStr(), 0, text.Length()) != nullptr) return {};
  return akpath::ToSystem({text.CStr(), text.Length()});
}

bool AKFileUtils::GetFromSystemPath(const char* systemPath, AKFilePath* path) {
  path->SetText(systemPath == nullptr ? AKString() : akpath::FromSystem(systemPath));
  return systemPath != nullptr;
}

bool AKFileUtils::Exists(const AKFilePath& path) {
  struct stat status;
  return GetStatus(path, &status);
}

bool AKFileUtils::IsFile(const AKFilePath& path) {
  struct stat status;
  return GetStatus(path, &status) && S_ISREG(status.st_mode);
}

bool AKFileUtils::IsFolder(const AKFilePath& path) {
  struct stat status;
  return GetStatus(path, &status) && S_ISDIR(status.st_mode);
}

bool AKFileUtils::IsReadable(const AKFilePath& path) { return HasAccess(path, R_OK); }
bool AKFileUtils::IsWritable(const AKFilePath& path) { return HasAccess(path, W_OK); }
bool AKFileUtils::IsExecutable(const AKFilePath& path) { return HasAccess(path, X_OK); }

bool AKFileUtils::GetFileInfo(const AKFilePath& path, unsigned long long* size, unsigned long long* created,
                              unsigned long long* modified) {
  return GetInfo(GetAsSystemPath(path).CStr(), size, created, modified);
}

bool AKFileUtils::GetFileInfo(int descriptor, unsigned long long* size, unsigned long long* created,
                              unsigned long long* modified) {
  return GetInfo(descriptor, size, created, modified);
}

bool AKFileUtils::CreateFolder(const AKFilePath& path) {
  const AKString systemPath = GetAsSystemPath(path);
  if (systemPath.Length() >= PATH_MAX) {  // no other call could reach it
    errno = ENAMETOOLONG;
    return false;
  }
  if (systemPath.IsEmpty()) errno = ENOENT;
  return !systemPath.IsEmpty() && (IsFolder(path) || FolderChain(systemPath).Create());
}

bool AKFileUtils::RemoveFile(const AKFilePath& path) { return ::unlink(GetAsSystemPath(path).CStr()) == 0; }
bool AKFileUtils::RemoveFolder(const AKFilePath& path) { return ::rmdir(GetAsSystemPath(path).CStr()) == 0; }

bool AKFileUtils::Rename(const AKFilePath& from, const AKFilePath& to) {
  return std::rename(GetAsSystemPath(from).CStr(), GetAsSystemPath(to).CStr()) == 0;
}

AKFilePath AKFileUtils::GetTemporaryDir() {
  AKFilePath path;
  const char* const configured = std::getenv("TMPDIR");
  if (configured != nullptr && GetFromSystemPath(configured, &path) && IsFolder(path)) return path;
  return AKFilePath("/tmp");
}

AKFilePath AKFileUtils::GetUnusedFileNameInTemporaryDir() {
  AKFilePath path;
  const int descriptor = CreateUnusedFileInTemporaryDir(&path);
  if (descriptor < 0) return {};
  ::close(descriptor);
  RemoveFile(path);
  return path;
}

int AKFileUtils::CreateUnusedFileInTemporaryDir(AKFilePath* path) {
  AKString pattern = GetAsSystemPath(TemporaryPattern());
  const int descriptor = ::mkostemp(pattern.MutableData(), O_CLOEXEC);
  if (descriptor < 0 || !GetFromSystemPath(pattern.CStr(), path)) path->Clear();
  return descriptor;
}

bool AKFileUtils::CreateUnusedFolderInTemporaryDir(AKFilePath* path) {
  AKString pattern = GetAsSystemPath(TemporaryPattern());
  const bool created = ::mkdtemp(pattern.MutableData()) != nullptr;
  if (!created || !GetFromSystemPath(pattern.CStr(), path)) path->Clear();
  return created;
}
