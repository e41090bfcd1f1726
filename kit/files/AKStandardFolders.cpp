#include "kit/files/AKStandardFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "kit/files/AKFileUtils.h"
#include "kit/os/AKUserFolders_p.h"

namespace {

struct FolderRow {
  const char* name;
  const char* environment;    // variable with an absolute path
  const char* userDirectory;  // key in user-dirs.dirs
};

constexpr FolderRow kFolders[] = {
    {"User", nullptr, nullptr},
    {"Desktop", nullptr, "XDG_DESKTOP_DIR"},
    {"Preferences", "XDG_CONFIG_HOME", nullptr},
    {"ApplicationSupport", "XDG_DATA_HOME", nullptr},
    {"Documents", nullptr, "XDG_DOCUMENTS_DIR"},
    {"Pictures", nullptr, "XDG_PICTURES_DIR"},
    {"Movies", nullptr, "XDG_VIDEOS_DIR"},
    {"Music", nullptr, "XDG_MUSIC_DIR"},
};
static_assert(sizeof(kFolders) / sizeof(kFolders[0]) == kAKStandardFolderCount);
static_assert(sizeof(kAKFoldersBelowHome) / sizeof(kAKFoldersBelowHome[0]) == kAKStandardFolderCount);

const char* FallbackOf(const FolderRow& row) { return kAKFoldersBelowHome[&row - kFolders]; }

// A path as UTF-8, without separators at its end; empty when it is not absolute, as the standard wants.
std::string Absolute(const char* path) {
  std::string result = path != nullptr && path[0] == '/' ? path : "";
  while (result.size() > 1 && result.back() == '/') result.pop_back();
  return result;
}

std::string Home() {
  if (std::string home = Absolute(std::getenv("HOME")); !home.empty()) return home;
  const passwd* const user = ::getpwuid(::getuid());
  const std::string home = user == nullptr ? "" : Absolute(user->pw_dir);
  return home.empty() ? "/" : home;
}

std::string BelowHome(const std::string& name) {
  std::string home = Home();
  if (name.empty()) return home;
  return home == "/" ? home + name : home + "/" + name;
}

std::string BaseDirectory(const FolderRow& row) {
  const std::string configured = Absolute(std::getenv(row.environment));
  return configured.empty() ? BelowHome(FallbackOf(row)) : configured;
}

// The text between the quotes of KEY="text", with backslashes taken off.
std::string Unquoted(const std::string& text) {
  std::string result;
  for (std::size_t i = 1; i < text.size() && text[i] != '"'; ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    result += text[i];
  }
  return result;
}

// A line is KEY="$HOME/folder" or KEY="/folder"; others, comments among them, are ignored. The last of several counts.
std::string UserDirectory(const FolderRow& row) {
  std::ifstream file(BaseDirectory(kFolders[2]) + "/user-dirs.dirs");
  const std::string key = std::string(row.userDirectory) + "=\"";
  const std::string homeVariable = "$HOME";
  std::string found;
  for (std::string line; std::getline(file, line);) {
    const std::size_t start = line.find_first_not_of(" \t");
    if (start == std::string::npos || line.compare(start, key.size(), key) != 0) continue;
    const std::string path = Unquoted(line.substr(start + key.size() - 1));
    if (path.rfind(homeVariable + "/", 0) == 0 || path == homeVariable) {
      found = Absolute((BelowHome("") + path.substr(homeVariable.size())).c_str());
    } else if (!Absolute(path.c_str()).empty()) {
      found = Absolute(path.c_str());
    }
  }
  return found.empty() ? BelowHome(FallbackOf(row)) : found;
}

std::string PathOf(const FolderRow& row) {
  if (row.environment != nullptr) return BaseDirectory(row);
  return row.userDirectory != nullptr ? UserDirectory(row) : BelowHome(FallbackOf(row));
}

}  // namespace

AKString AKStandardFolderGetName(AKStandardFolder folder) {
  const auto index = static_cast<unsigned int>(folder);
  return index < kAKStandardFolderCount ? AKString(kFolders[index].name) : kAKNullString;
}

bool AKStandardFolderFromName(const AKString& name, AKStandardFolder* folder) {
  for (unsigned int i = 0; i < kAKStandardFolderCount; ++i) {
    if (!(name == kFolders[i].name)) continue;
    *folder = static_cast<AKStandardFolder>(i);
    return true;
  }
  return false;
}

AKFilePath AKStandardFolderGetPath(AKStandardFolder folder) {
  AKFilePath path;
  const auto index = static_cast<unsigned int>(folder);
  if (index < kAKStandardFolderCount) AKFileUtils::GetFromSystemPath(PathOf(kFolders[index]).c_str(), &path);
  return path;
}
