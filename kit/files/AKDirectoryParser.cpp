#include "kit/files/AKDirectoryParser.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "kit/files/AKFileUtils.h"

namespace {

struct DirectoryCloser {
  void operator()(DIR* directory) const { ::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, DirectoryCloser>;

bool IsDots(const char* name) { return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0; }

}  // namespace

bool AKDirectoryParser::Parse(const AKFilePath& folder, bool recursive) {
  files_.Clear();
  folders_.Clear();
  others_.Clear();
  unrepresentable_.Clear();
  const bool complete = ParseFolder(folder, recursive);
  const int reason = errno;
  files_.Sort();
  folders_.Sort();
  others_.Sort();
  std::sort(unrepresentable_.begin(), unrepresentable_.end());
  errno = reason;
  return complete;
}

bool AKDirectoryParser::ParseFolder(const AKFilePath& folder, bool recursive) {
  const Directory directory(::opendir(AKFileUtils::GetAsSystemPath(folder).CStr()));
  if (directory == nullptr) return false;
  bool complete = true;
  int reason = 0;
  for (;;) {
    errno = 0;
    const dirent* const entry = ::readdir(directory.get());
    if (entry == nullptr) break;
    if (IsDots(entry->d_name) || AddEntry(folder, entry->d_name, recursive)) continue;
    complete = false;
    reason = errno;
  }
  if (errno == 0) errno = reason;
  return complete && errno == 0;
}

bool AKDirectoryParser::AddEntry(const AKFilePath& folder, const char* name, bool recursive) {
  AKFilePath entry;
  if (!AKFileUtils::GetFromSystemPath(name, &entry)) {
    AKString path = AKFileUtils::GetAsSystemPath(folder);
    if (!path.EndsWith("/")) path.Append('/');
    unrepresentable_.Append(path.Append(name));
    return true;
  }
  const AKFilePath path = folder / entry;
  const AKString systemPath = AKFileUtils::GetAsSystemPath(path);
  struct stat status;
  const bool known = ::stat(systemPath.CStr(), &status) == 0;
  if (!known || !(S_ISREG(status.st_mode) || S_ISDIR(status.st_mode))) {
    others_.Append(path);
    return true;
  }
  if (S_ISREG(status.st_mode)) {
    files_.Append(path);
    return true;
  }
  folders_.Append(path);
  struct stat link;
  const bool isLink = ::lstat(systemPath.CStr(), &link) == 0 && S_ISLNK(link.st_mode);
  return !recursive || isLink || ParseFolder(path, recursive);
}
