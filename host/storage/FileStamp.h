// What tells one state of a file from another: who it is, how long, and when it was changed last.
#pragma once

#include <cstdint>
#include <string>

namespace host {

struct FileStamp {
  bool exists = false;
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t size = 0;
  std::int64_t seconds = 0;  ///< of the last modification, since 1970
  std::int64_t nanoseconds = 0;

  bool operator==(const FileStamp&) const = default;

  /// As the file is now; one that can't be looked at does not exist.
  static FileStamp Of(const std::string& path);
};

}  // namespace host
