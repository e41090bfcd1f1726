#include "kit/streams/AKFileChunk.h"

#include "kit/containers/AKSwapNumber.h"
#include "kit/log/AKLog.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileNumbers.h"

namespace {

// The message names the position 4 bytes back: right for a lone signature, 4 behind the start of a chunk, whose size
// has been read by then.
int LogMismatch(const AKFile& file, std::uint32_t wanted, std::uint32_t found) {
  unsigned long long position = 0;
  file.GetPos(&position);
  const std::uint32_t wantedText = AKSwapNumber32_EndianBigFromHost(wanted);
  const std::uint32_t foundText = AKSwapNumber32_EndianBigFromHost(found);
  return AKLogError(kAKFileStatusChunkMismatch, "In file \"%s\" at pos %u, want chunk [%.4s] but has [%.4s]",
                    AKFileNameInMessages(file), static_cast<unsigned int>(position - 4),
                    reinterpret_cast<const char*>(&wantedText), reinterpret_cast<const char*>(&foundText));
}

}  // namespace

int AKFileChunkSetter::WriteChunkHeader(AKFile& file, AKFileChunk& chunk) {
  unsigned long long position = 0;
  if (const int status = file.GetPos(&position); status != 0) return status;
  chunk.pos = position;
  chunk.size = 0;
  if (const int status = AKFileWriteSignat32(file, chunk.signature); status != 0) return status;
  return AKFileWriteUInt32(file, chunk.size);
}

int AKFileChunkSetter::WriteChunkComplete(AKFile& file, AKFileChunk& chunk) {
  unsigned long long end = 0;
  if (const int status = file.GetPos(&end); status != 0) return status;
  chunk.size = 0;
  if (end <= chunk.pos + kAKFileChunkHeaderSize) return 0;
  const unsigned long long size = end - kAKFileChunkHeaderSize - chunk.pos;
  if (size > 0xFFFFFFFF) return AKFileLogFailure(file, kAKFileStatusTooBig);
  chunk.size = static_cast<std::uint32_t>(size);
  if (const int status = file.SetPos(chunk.pos + 4); status != 0) return status;
  if (const int status = AKFileWriteUInt32(file, chunk.size); status != 0) return status;
  return file.SetPos(end);
}

int AKFileChunkSetter::ReadChunkHeader(const AKFile& file, AKFileChunk* chunk) {
  unsigned long long position = 0;
  if (const int status = file.GetPos(&position); status != 0) return status;
  chunk->pos = position;
  if (const int status = AKFileReadSignat32(file, &chunk->signature); status != 0) return status;
  return AKFileReadUInt32(file, &chunk->size);
}

int AKFileChunkSetter::CheckChunkHeader(const AKFile& file, AKFileChunk* chunk) {
  const std::uint32_t wanted = chunk->signature;
  if (const int status = ReadChunkHeader(file, chunk); status != 0) return status;
  return chunk->signature == wanted ? 0 : LogMismatch(file, wanted, chunk->signature);
}

int AKFileGotoChunkBegin(const AKFile& file, const AKFileChunk& chunk) { return file.SetPos(chunk.pos); }

int AKFileGotoChunkEnd(const AKFile& file, const AKFileChunk& chunk) {
  return file.SetPos(chunk.pos + chunk.size + kAKFileChunkHeaderSize);
}

int AKFileWriteSignat32(AKFile& file, std::uint32_t signature) {
  const std::uint32_t big = AKSwapNumber32_EndianBigFromHost(signature);
  return file.Write(&big, sizeof(big));
}

int AKFileReadSignat32(const AKFile& file, std::uint32_t* signature) {
  std::uint32_t big = 0;
  if (const int status = file.Read(&big, sizeof(big)); status != 0) return status;
  *signature = AKSwapNumber32_EndianHostFromBig(big);
  return 0;
}

bool AKFileIsSignat32(const AKFile& file, std::uint32_t signature, bool rewind) {
  if (file.IsEndOfFile(4)) return false;
  std::uint32_t found = 0;
  if (AKFileReadSignat32(file, &found) != 0) return false;
  if (rewind) file.SkipBack(4);
  return found == signature;
}

int AKFileCheckSignat32(const AKFile& file, std::uint32_t signature, std::uint32_t* found) {
  std::uint32_t read = 0;
  if (const int status = AKFileReadSignat32(file, &read); status != 0) return status;
  if (found != nullptr) *found = read;
  return read == signature ? 0 : LogMismatch(file, signature, read);
}
