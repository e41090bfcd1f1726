// Files that are read and written in one piece. Paths are those of system calls.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace platform {

/// The bytes of a regular file into `bytes`. A file whose first `headSize` bytes `isWanted` refuses is not read on.
/// False, with the bytes unspecified, then and on any failure.
bool ReadWholeFile(const std::string& path, std::size_t headSize, bool (*isWanted)(const unsigned char*, std::size_t),
                   std::vector<unsigned char>* bytes);

/// Replaces the file by `size` bytes, whole or not at all: they go to a temporary file beside it, are forced to the
/// disk and renamed over it; one that a killed program left goes with the next replacement of the file. The new file
/// has the old one's owner, group, permissions, access control list and extended attributes as far as the user may give
/// them, and lets in nobody whom the old one did not; set-ID bits go. A link is followed, one that leads nowhere yet
/// too; other hard links keep the old content. A file without the right to write is left alone. Where the folder lets
/// no file be created or renamed, the old one is written in place, and restored when that fails. What is no regular
/// file (a device, a pipe) is written to as it is. False, with errno, on failure.
bool ReplaceWholeFile(const std::string& path, const void* data, std::size_t size);

}  // namespace platform
