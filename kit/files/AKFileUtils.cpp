#include "kit/files/AKFileUtils.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "kit/text/AKStringEncoding.h"

namespace {

constexpr const char* kTemporaryNamePattern = "tmp_XXXXXX";

bool GetStatus(const AKFilePath& path, struct stat* status) {
  return ::stat(AKFileUtils::GetAsSystemPath(path).CStr(), status) == 0;
}

bool HasAccess(const AKFilePath& path, int mode) {
  return ::access(AKFileUtils::GetAsSystemPath(path).CStr(), mode) == 0;
}

AKFilePath TemporaryPattern() {
  AKFilePath path = AKFileUtils::GetTemporaryDir();
  return path.Append(AKFilePath(kTemporaryNamePattern));
}

}  // namespace

AKString AKFileUtils::GetAsSystemPath(const AKFilePath& path) {
  const AKString& text = path.Text();
  if (std::memchr(text.CStr(), 0, text.Length()) != nullptr) return {};
  return AKStringCopyWithEncoding(text, kAKStringEncodingMacRoman, kAKStringEncodingUTF8);
}

bool AKFileUtils::GetFromSystemPath(const char* systemPath, AKFilePath* path) {
  const AKString given(systemPath);
  path->SetText(AKStringCopyWithEncoding(given, kAKStringEncodingUTF8, kAKStringEncodingMacRoman));
  return GetAsSystemPath(*path) == given;
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
  struct statx status = {};
  if (::statx(AT_FDCWD, GetAsSystemPath(path).CStr(), 0, STATX_BASIC_STATS | STATX_BTIME, &status) != 0) return false;
  if (!S_ISREG(status.stx_mode)) return false;
  const auto& creation = (status.stx_mask & STATX_BTIME) != 0 ? status.stx_btime : status.stx_mtime;
  if (size != nullptr) *size = status.stx_size;
  if (created != nullptr) *created = static_cast<unsigned long long>(creation.tv_sec);
  if (modified != nullptr) *modified = static_cast<unsigned long long>(status.stx_mtime.tv_sec);
  return true;
}

bool AKFileUtils::CreateFolder(const AKFilePath& path) {
  if (IsFolder(path)) return true;
  AKFilePath folder = path;
  if (folder.FileName().IsEmpty()) folder = folder.Folder();  // "a/b/" means "a/b"
  const AKFilePath parent = folder.Folder();
  if (!parent.IsEmpty() && parent != folder && !CreateFolder(parent)) return false;
  return ::mkdir(GetAsSystemPath(folder).CStr(), 0777) == 0 || (errno == EEXIST && IsFolder(folder));
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
