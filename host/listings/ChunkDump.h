// A reader of any chunked file for the eye: an indented tree of its chunks with offsets, sizes and values.
//
// It works on the bytes alone and shares no code with the readers of the kit, so that it tells the truth about files
// that those refuse. Numbers are little-endian. Chunks of values are decoded and checked in every detail; a chunk of
// another kind is shown with its fields if its layout is known, with the chunks that it consists of, or with its first
// bytes.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace host {

/// The first damage of a file.
struct ChunkDamage {
  bool found = false;
  std::uint64_t offset = 0;  ///< bytes from the beginning of the file
  std::string reason;
};

/// Takes a line of the tree, with its line end. What is nested deep makes a hundred times as much text as its file has
/// bytes, so nobody has to keep it all.
using ChunkLines = std::function<void(const std::string& line)>;

/// Looks through the bytes of a file up to the first damage. `take`, which may be empty, receives the tree: a line
/// "OFFSET  kind, N bytes, value" for each chunk, its offset in hexadecimal, indented by its depth.
ChunkDamage DumpChunks(std::string_view bytes, const ChunkLines& take);

/// Prints the tree of a file, and the damage, if there is any, on standard error. Returns 0, or 1 for a file that is
/// damaged or cannot be read.
int DumpChunkFile(const std::string& path);

/// Prints nothing for a sound file; else the damage on standard error. Returns as DumpChunkFile does.
int CheckChunkFile(const std::string& path);

}  // namespace host
