// The record of a block of bytes.
#include "fuzz/RecordFuzz.h"
#include "kit/containers/AKMemoryBlock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return record_fuzz::RoundTrip<AKMemoryBlock>(
      data, size, [](const AKFile& file, AKMemoryBlock* record) { return record->ReadFromFile(file); },
      [](AKFile& file, const AKMemoryBlock& record) { return record.WriteToFile(file); },
      [](const AKMemoryBlock& first, const AKMemoryBlock& second) { return first == second; });
}
