// A walk over chunks, by the kit and by the dumper, which must agree on where the chunks of a sound file are.
#include <algorithm>

#include "fuzz/RecordFuzz.h"
#include "host/listings/ChunkDump.h"
#include "kit/streams/AKFileChunk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const record_fuzz::Input input(data, size);
  const AKFile& file = input.File();
  std::size_t longest = 0;
  const host::ChunkDamage damage =
      host::DumpChunks({reinterpret_cast<const char*>(data), size},
                       [&longest](const std::string& line) { longest = std::max(longest, line.size()); });
  if (longest > 8192) std::abort();
  if (damage.found && damage.offset > size) std::abort();
  AKFileChunk chunk;
  std::uint64_t end = 0;
  while (end < size && AKFileReadChunkHeader(file, &chunk) == 0 && AKFileGotoChunkEnd(file, chunk) == 0) {
    end = chunk.pos + 8 + chunk.size;
    AKFileIsSignat32(file, chunk.signature, true);
  }
  if (!damage.found && end != size) std::abort();
  return 0;
}
