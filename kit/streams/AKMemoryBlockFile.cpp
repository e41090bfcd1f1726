// The record of a memory block in a file: a chunk "bina".
//
//   offset  size  field
//        0     8  chunk header; its size is that of the rest, padding included
//        8     4  n: byte count without padding, in the file's default order
//       12     n  the bytes
//     12+n   0-3  zero bytes up to a multiple of 4
#include "kit/containers/AKMemoryBlock.h"
#include "kit/streams/AKFileChunk.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileNumbers.h"

namespace {

constexpr std::uint32_t kSignature = 0x62696E61;  // "bina"

// A count that does not fit the chunk is refused: the chunk's end lies before the bytes' end then, so a file could have
// the same bytes read over and over.
int ReadBytes(const AKFile& file, const AKFileChunk& chunk, AKMemoryBlock* block) {
  std::uint32_t count = 0;
  if (const int status = AKFileReadUInt32(file, &count); status != 0) return status;
  if (4ULL + count > chunk.size || !file.HasBytes(count)) return AKFileLogMissingBytes(file);
  block->Allocate(count, false);
  return file.Read(block->MutableData(), count);
}

int ReadChunk(const AKFile& file, AKMemoryBlock* block) {
  AKFileChunk chunk{.signature = kSignature};
  if (const int status = AKFileCheckChunkHeader(file, &chunk); status != 0) return status;
  if (const int status = ReadBytes(file, chunk, block); status != 0) return status;
  return AKFileGotoChunkEnd(file, chunk);
}

}  // namespace

int AKMemoryBlock::WriteToFile(AKFile& file) const {
  AKFileChunk chunk{.signature = kSignature};
  if (const int status = AKFileWriteChunkHeader(file, chunk); status != 0) return status;
  if (const int status = AKFileWriteUInt32(file, Size()); status != 0) return status;
  if (const int status = file.Write(Data(), Size()); status != 0) return status;
  if (const int status = AKFileWriteZeros(file, -Size() & 3); status != 0) return status;
  return AKFileWriteChunkComplete(file, chunk);
}

int AKMemoryBlock::ReadFromFile(const AKFile& file) {
  const int status = ReadChunk(file, this);
  if (status != 0) Free();
  return status;
}

int AKMemoryBlock::SkipFromFile(const AKFile& file) {
  AKFileChunk chunk{.signature = kSignature};
  if (const int status = AKFileCheckChunkHeader(file, &chunk); status != 0) return status;
  return AKFileGotoChunkEnd(file, chunk);
}
