// The record of a dictionary. A NaN differs from itself, so only the counts are compared.
#include "fuzz/RecordFuzz.h"
#include "kit/values/AKDictionary.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return record_fuzz::RoundTrip<AKDictionary>(
      data, size, [](const AKFile& file, AKDictionary* record) { return record->ReadFromFile(file); },
      [](AKFile& file, const AKDictionary& record) { return record.WriteToFile(file); },
      [](const AKDictionary& first, const AKDictionary& second) { return first.Count() == second.Count(); });
}
