#include "host/storage/FileStamp.h"

#include <sys/stat.h>

namespace host {

FileStamp FileStamp::Of(const std::string& path) {
  struct stat info {};
  if (path.empty() || stat(path.c_str(), &info) != 0) return {};
  return {true, info.st_dev, info.st_ino, info.st_size, info.st_mtim.tv_sec, info.st_mtim.tv_nsec};
}

}  // namespace host
