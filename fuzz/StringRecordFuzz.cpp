// The record of a string.
#include "fuzz/RecordFuzz.h"
#include "kit/text/AKString.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return record_fuzz::RoundTrip<AKString>(
      data, size, [](const AKFile& file, AKString* record) { return record->ReadFromFile(file); },
      [](AKFile& file, const AKString& record) { return record.WriteToFile(file); },
      [](const AKString& first, const AKString& second) { return first == second; });
}
