// Chunks and signatures.
//
//   offset  size  field
//        0     4  signature: four ASCII characters in reading order, always big-endian
//        4     4  size of the body in bytes, in the file's default order
//        8  size  body
//
// The size is not known while the body is written: it stands as 0 until the chunk is complete. Each function returns
// the status of the file; an unexpected signature is logged and gives -880.
#pragma once

#include <cstdint>

#include "kit/streams/AKFile.h"

/// A chunk that is being written, or whose header was read.
struct AKFileChunk {
  std::uint32_t signature = 0;  ///< on entry to a check: the expected one
  std::uint32_t size = 0;       ///< bytes behind the header
  std::uint64_t pos = 0;        ///< of the header's first byte
};

/// "LITE" as a signature.
inline constexpr std::uint32_t kAKChunkSignatureEndianHost = 0x4C495445;

/// Bytes in front of the body.
inline constexpr unsigned int kAKFileChunkHeaderSize = 8;

/// The header operations on chunks.
class AKFileChunkSetter {
 public:
  /// Writes chunk.signature and a size of 0, and notes where.
  static int WriteChunkHeader(AKFile& file, AKFileChunk& chunk);
  /// Called behind the body: writes its size into the header. An empty body leaves the 0 that stands there; a body of
  /// 4 GiB or more fails with -881.
  static int WriteChunkComplete(AKFile& file, AKFileChunk& chunk);
  /// Reads a header of any signature and notes where it stands; the position is then at the body.
  static int ReadChunkHeader(const AKFile& file, AKFileChunk* chunk);
  /// Reads a header that must have chunk->signature, which then holds the one found.
  static int CheckChunkHeader(const AKFile& file, AKFileChunk* chunk);
};

///@{
/// The functions of AKFileChunkSetter by other names.
inline int AKFileWriteChunkHeader(AKFile& file, AKFileChunk& chunk) {
  return AKFileChunkSetter::WriteChunkHeader(file, chunk);
}
inline int AKFileWriteChunkComplete(AKFile& file, AKFileChunk& chunk) {
  return AKFileChunkSetter::WriteChunkComplete(file, chunk);
}
inline int AKFileReadChunkHeader(const AKFile& file, AKFileChunk* chunk) {
  return AKFileChunkSetter::ReadChunkHeader(file, chunk);
}
inline int AKFileCheckChunkHeader(const AKFile& file, AKFileChunk* chunk) {
  return AKFileChunkSetter::CheckChunkHeader(file, chunk);
}
///@}
/// Moves the position to the chunk's body.
int AKFileGotoChunkBegin(const AKFile& file, const AKFileChunk& chunk);
/// Moves the position behind the chunk's body. That may lie beyond the end of a damaged disk file; reading there fails.
int AKFileGotoChunkEnd(const AKFile& file, const AKFileChunk& chunk);

///@{
/// Four bytes, always big-endian, so that the characters stand in reading order.
int AKFileWriteSignat32(AKFile& file, std::uint32_t signature);
int AKFileReadSignat32(const AKFile& file, std::uint32_t* signature);
///@}
/// Whether the next four bytes are `signature`. Always false when four bytes or fewer are left. With `rewind` the
/// position is put back, whatever was found.
bool AKFileIsSignat32(const AKFile& file, std::uint32_t signature, bool rewind);
/// Reads a signature that must be `signature`; `found`, which may be null, receives the one that was read.
int AKFileCheckSignat32(const AKFile& file, std::uint32_t signature, std::uint32_t* found);
