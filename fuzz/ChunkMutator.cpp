// Mutates files of the host's chunks and then puts the sizes and counts right, without which hardly a mutation would be
// looked into. Every eighth mutation stays as it is. Linked with libFuzzer alone.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

struct Kind {
  std::string_view signature;
  int level;                // a chunk ends where the next of its level or a lower one begins
  std::ptrdiff_t countsAt;  // where in its body it counts the chunks of the kind `counts`; -1 for nowhere
  std::string_view counts;
};
constexpr Kind kKinds[] = {{"HRcv", 0, -1, ""}, {"HDoc", 1, 24, "HLay"}, {"HClp", 1, 4, "HObj"}, {"HLay", 2, 4, "HObj"},
                           {"HObj", 3, -1, ""}, {"HRec", 4, -1, ""},     {"HMrk", 3, -1, ""}};

struct Chunk {
  const Kind* kind;
  std::size_t at;
};

void Put(std::uint8_t* data, std::size_t size, std::size_t at, std::size_t number) {
  const auto value = static_cast<std::uint32_t>(number);
  if (at + sizeof(value) <= size) std::memcpy(data + at, &value, sizeof(value));
}

std::vector<Chunk> FindChunks(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::vector<Chunk> chunks;
  for (std::size_t at = 0; at + 8 <= size; ++at) {
    for (const Kind& kind : kKinds) {
      if (bytes.substr(at, 4) == kind.signature) chunks.push_back({&kind, at});
    }
  }
  return chunks;
}

void Repair(std::uint8_t* data, std::size_t size) {
  const std::vector<Chunk> chunks = FindChunks(data, size);
  for (auto chunk = chunks.begin(); chunk != chunks.end(); ++chunk) {
    std::size_t end = size;
    std::size_t count = 0;
    for (auto next = chunk + 1; next != chunks.end(); ++next) {
      if (next->kind->level <= chunk->kind->level) {
        end = next->at;
        break;
      }
      if (next->kind->signature == chunk->kind->counts) ++count;
    }
    Put(data, size, chunk->at + 4, end - chunk->at - 8);
    if (chunk->kind->countsAt >= 0) {
      // A document of the first version counts objects where the later ones count layers.
      Put(data, size, chunk->at + 8 + static_cast<std::size_t>(chunk->kind->countsAt), count);
    }
  }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
  const std::size_t mutated = LLVMFuzzerMutate(data, size, maxSize);
  if (seed % 8 != 0) Repair(data, mutated);
  return mutated;
}
