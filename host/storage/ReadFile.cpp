#include "host/storage/ReadFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace host {

Result<> ReadWholeFile(const std::string& path, std::string* bytes) {
  bytes->clear();
  const std::unique_ptr<std::FILE, decltype(&std::fclose)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
  if (!file) {
    return Problem(N_("can't open \"%s\": %s"), {path, std::strerror(errno)});
  }
  char buffer[65536];
  std::size_t count = 0;
  errno = 0;
  while ((count = std::fread(buffer, 1, sizeof(buffer), file.get())) != 0) bytes->append(buffer, count);
  if (std::ferror(file.get()) == 0) return {};
  return Problem(N_("can't read \"%s\": %s"), {path, std::strerror(errno)});
}

}  // namespace host
