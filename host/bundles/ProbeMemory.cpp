#include "host/bundles/ProbeMemory.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "host/storage/WholeFiles.h"

namespace host {
namespace {

constexpr std::size_t kMostLines = 1000;

// "STATE PROGRAM-STATE PATH"; the path is the rest of the line, and its key is what stands behind the last tabulator.
std::string LineOf(const std::string& state, const std::string& program, const std::string& bundle) {
  return state + "\t" + program + "\t" + std::filesystem::absolute(bundle).string();
}

std::string KeyOf(const std::string& line) { return line.substr(line.rfind('\t') + 1); }

}  // namespace

ProbeMemory::ProbeMemory(std::string file, const std::string& program)
    : file_(std::move(file)), program_(StateOf(program)) {
  std::ifstream stream(file_);
  for (std::string line; lines_.size() < kMostLines && std::getline(stream, line);) lines_.push_back(line);
}

std::string ProbeMemory::DefaultFile() {
  const char* cache = std::getenv("XDG_CACHE_HOME");
  if (cache != nullptr && cache[0] == '/') return std::string(cache) + "/objecthost/tried-bundles";
  const char* home = std::getenv("HOME");
  return home != nullptr && home[0] == '/' ? std::string(home) + "/.cache/objecthost/tried-bundles" : "";
}

std::string ProbeMemory::StateOf(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) return "";
  std::string state;
  for (const long long number :
       {static_cast<long long>(info.st_size), static_cast<long long>(info.st_mtim.tv_sec),
        static_cast<long long>(info.st_mtim.tv_nsec), static_cast<long long>(info.st_ctim.tv_sec),
        static_cast<long long>(info.st_ctim.tv_nsec), static_cast<long long>(info.st_dev),
        static_cast<long long>(info.st_ino)}) {
    state += (state.empty() ? "" : ":") + std::to_string(number);
  }
  return state;
}

bool ProbeMemory::HasPassed(const std::string& bundle) const {
  const std::string state = StateOf(bundle);
  return !state.empty() && !program_.empty() &&
         std::find(lines_.begin(), lines_.end(), LineOf(state, program_, bundle)) != lines_.end();
}

void ProbeMemory::Remember(const std::string& bundle, const std::string& state) {
  const std::string line = LineOf(state, program_, bundle);
  if (file_.empty() || state.empty() || program_.empty() || line.find('\n') != std::string::npos) return;
  std::erase_if(lines_, [key = KeyOf(line)](const std::string& old) { return KeyOf(old) == key; });
  if (lines_.size() == kMostLines) lines_.erase(lines_.begin());
  lines_.push_back(line);
  Save();
}

// Two programs that save at once leave the lines of one: the other's bundles are tried again.
void ProbeMemory::Save() const {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(file_).parent_path(), error);
  std::string text;
  for (const std::string& line : lines_) text += line + '\n';
  static_cast<void>(ReplaceFile(file_, text.data(), text.size()));
}

}  // namespace host
