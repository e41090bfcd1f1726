// The record of UTF-16 text.
#include "fuzz/RecordFuzz.h"
#include "kit/streams/AKFileRecords.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return record_fuzz::RoundTrip<AKUniChars>(
      data, size, [](const AKFile& file, AKUniChars* record) { return AKFileReadAKUniChars(file, record); },
      [](AKFile& file, const AKUniChars& record) { return AKFileWriteAKUniChars(file, record); },
      [](const AKUniChars& first, const AKUniChars& second) { return first == second; });
}
