// The record of an array of values. A NaN differs from itself, so only the counts are compared.
#include "fuzz/RecordFuzz.h"
#include "kit/values/AKValueArray.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return record_fuzz::RoundTrip<AKValueArray>(
      data, size, [](const AKFile& file, AKValueArray* record) { return record->ReadFromFile(file); },
      [](AKFile& file, const AKValueArray& record) { return record.WriteToFile(file); },
      [](const AKValueArray& first, const AKValueArray& second) { return first.Count() == second.Count(); });
}
