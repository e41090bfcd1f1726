// Files in one piece: looked at, read, replaced whole or not at all, and bitmaps as PNG files.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "graphics/bitmaps/AGBitmap.h"
#include "host/text/Problem.h"
#include "kit/streams/AKFile.h"

namespace host {

/// What tells one state of a file from another: who it is, how long, and when it was changed last.
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

/// open with O_CLOEXEC, repeated while a signal interrupts it: a descriptor for the caller to close, -1 and errno on
/// failure.
int OpenRetrying(const std::string& path, int flags);

/// The files of a folder whose names end in `extension` (with its dot), in the order of their paths. `*error` says why
/// where not all could be found; a folder that does not exist has none.
std::vector<std::string> FilesOf(const std::string& folder, const char* extension, std::error_code* error);

/// Puts the whole file into `*bytes`. Fails when it can't be read.
Result<> ReadWholeFile(const std::string& path, std::string* bytes);

/// Puts bytes into a file: whole, or not at all.
Result<> ReplaceFile(const std::string& path, const void* data, std::size_t size);
/// The same from a function that writes and returns a status. With a `model` the file gets the owner, permissions and
/// access control list of that file instead of its own; of one that does not exist, those of a private file.
Result<> ReplaceFileBy(const std::string& path, const std::function<int(AKFile&)>& write,
                       const std::optional<std::string>& model = std::nullopt);

/// Makes the folder; one that is there already, and the empty path, are fine.
Result<> MakeFolder(const std::string& path);

/// The bitmap as a PNG file in memory; false, and no bytes, when it is empty or can't be encoded.
bool EncodePNG(const AGBitmap& bitmap, std::vector<unsigned char>* png);
/// Writes the bitmap as a PNG file, whole or not at all.
Result<> SavePNG(const AGBitmap& bitmap, const std::string& path);

}  // namespace host
