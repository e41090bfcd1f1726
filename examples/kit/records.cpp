// Records: numbers in either order, text, geometry, chunks; and what a file tells when bytes are missing.
#include <unistd.h>

#include <cstdio>

#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileChunk.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileMmap.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/streams/ATNumbersLow.h"

namespace {

constexpr std::uint32_t kPointsChunk = 0x504E5453;  // "PNTS"

int WriteRecord(AKFile& file) {
  // The size of a chunk is written once its body is complete.
  AKFileChunk chunk;
  chunk.signature = kPointsChunk;
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWriteUInt32(file, 7);
  if (status == 0) status = AKFileWriteAGPoint(file, {1, 2});
  if (status == 0) status = AKFileWriteAKString(file, "star");
  return status == 0 ? AKFileChunkSetter::WriteChunkComplete(file, chunk) : status;
}

}  // namespace

int main() {
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  std::printf("%d\n", WriteRecord(file));  // prints: 0

  file.SetPos(0);
  AKFileChunk chunk;
  chunk.signature = kPointsChunk;
  unsigned int points = 0;
  AGPoint center;
  AKString name;
  int status = AKFileCheckChunkHeader(file, &chunk);
  if (status == 0) status = AKFileReadUInt32(file, &points);
  if (status == 0) status = AKFileReadAGPoint(file, &center);
  if (status == 0) status = AKFileReadAKString(file, &name);
  // 4 bytes, 16 bytes, and a string record of a count and 4 bytes.
  std::printf("%u bytes: %u (%g;%g) %s\n", chunk.size, points, center.x, center.y, name.CStr());
  // prints: 28 bytes: 7 (1;2) star

  // What is missing is a status, and the output stays as it was. It is logged, too, where there is a host.
  unsigned long long more = 99;
  status = AKFileReadUInt64(file, &more);
  std::printf("%d %llu\n", status, more);  // prints: -890 99

  // An array of numbers at once, in the order asked for: behind ATNumbersLow stands AKFileWords.
  const unsigned short steps[2] = {1, 0x1234};
  AKFile big(AKFile::kModeMemory);
  big.CreateForReadWrite();
  ATNumbersLow<unsigned short, 0>::WriteToFile(big, steps, 2, 0, AKFile::kEndianBig);
  std::printf("%d\n", AKFileWords::MustSwap(big, AKFile::kEndianBig));  // prints: 1
  const void* bytes = nullptr;
  unsigned long long size = 0;
  big.GetMemoryStreamDataPtr(&bytes, &size);
  std::printf("%02X %02X\n", static_cast<const unsigned char*>(bytes)[2],
              static_cast<const unsigned char*>(bytes)[3]);  // prints: 12 34

  // A file as memory, and a buffer over a descriptor of one's own.
  AKFileMmap* map = big.MemMap();
  std::printf("%d\n", map->MapAll(&size) == bytes);  // prints: 1
  AKFilePath path;
  const int descriptor = AKFileUtils::CreateUnusedFileInTemporaryDir(&path);
  AKFileBuffer buffer;
  buffer.Attach(descriptor);
  const bool written = buffer.Write("abc", 3) == AKFileBuffer::Result::kDone && buffer.Flush();
  std::printf("%d, at %llu\n", written, static_cast<unsigned long long>(buffer.Position()));  // prints: 1, at 3
  buffer.Detach();
  close(descriptor);
  AKFileUtils::RemoveFile(path);
}
