// Documents. What is read takes memory in proportion, and is written and read again as the same.
#include "fuzz/AllocationCounter.h"
#include "fuzz/HostFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  host_fuzz::Start();
  const allocation::Peak peak;
  const auto document = host_fuzz::Read(data, size);
  host_fuzz::Require(peak.Size() <= allocation::LimitFor(size));
  if (!document) {
    host_fuzz::Require(document.Why().English().find('\n') == std::string::npos);
    return 0;
  }
  host_fuzz::CheckDocument(**document);
  return 0;
}
