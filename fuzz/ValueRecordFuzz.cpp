// The record of a value. A NaN differs from itself, so only the types are compared.
#include "fuzz/RecordFuzz.h"
#include "kit/values/AKValue.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return record_fuzz::RoundTrip<AKValue>(
      data, size, [](const AKFile& file, AKValue* record) { return record->ReadFromFile(file); },
      [](AKFile& file, const AKValue& record) { return record.WriteToFile(file); },
      [](const AKValue& first, const AKValue& second) { return first.Type() == second.Type(); });
}
