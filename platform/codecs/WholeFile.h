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
/// disk and renamed over it, with the old file's permissions. A link is followed. A file without the right to write is
/// left alone. What is no regular file (a device, a pipe) is written in place.
bool ReplaceWholeFile(const std::string& path, const void* data, std::size_t size);

}  // namespace platform
