#include "kit/files/AKDirectoryParser.h"

#include <dirent.h>
#include <sys/stat.h>

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
  pending_.Clear();
  int reason = 0;
  bool complete = ParseFolder(folder);
  if (!complete) reason = errno;
  while (recursive && !pending_.IsEmpty()) {
    const AKFilePath next = pending_[pending_.Count() - 1];
    pending_.RemoveLast();
    if (ParseFolder(next)) continue;
    complete = false;
    reason = errno;
  }
  files_.Sort();
  folders_.Sort();
  others_.Sort();
  pending_.Free();
  errno = reason;
  return complete;
}

bool AKDirectoryParser::ParseFolder(const AKFilePath& folder) {
  const Directory directory(::opendir(AKFileUtils::GetAsSystemPath(folder).CStr()));
  if (directory == nullptr) return false;
  for (;;) {
    errno = 0;
    const dirent* const entry = ::readdir(directory.get());
    if (entry == nullptr) return errno == 0;
    if (!IsDots(entry->d_name)) AddEntry(folder, entry->d_name);
  }
}

void AKDirectoryParser::AddEntry(const AKFilePath& folder, const char* name) {
  AKFilePath entry;
  AKFileUtils::GetFromSystemPath(name, &entry);
  const AKFilePath path = folder / entry;
  const AKString systemPath = AKFileUtils::GetAsSystemPath(path);
  struct stat status;
  const bool known = ::stat(systemPath.CStr(), &status) == 0;
  if (known && S_ISREG(status.st_mode)) {
    files_.Append(path);
  } else if (known && S_ISDIR(status.st_mode)) {
    folders_.Append(path);
    struct stat link;
    const bool isLink = ::lstat(systemPath.CStr(), &link) == 0 && S_ISLNK(link.st_mode);
    if (!isLink) pending_.Append(path);
  } else {
    others_.Append(path);
  }
}
