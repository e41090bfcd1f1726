// The conversions between character sets. The first byte chooses a pair of sets, the rest is the text.
#include <cstdint>
#include <cstdlib>

#include "kit/text/AKStringEncoding.h"
#include "kit/text/AKUniString.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const AKStringEncoding from = data[0] % 4;
  const AKStringEncoding to = data[0] / 4 % 4;
  const AKString text(reinterpret_cast<const char*>(data) + 1, static_cast<unsigned int>(size - 1));
  const AKString converted = AKStringCopyWithEncoding(text, from, to);
  // An 8-bit text has no character that UTF-8 lacks, and a text that came out of UTF-8 is one of the target's own.
  const bool lossless = from == kAKStringEncodingMacRoman || from == kAKStringEncodingWindowsLatin1;
  if (lossless && to == kAKStringEncodingUTF8 && AKStringCopyWithEncoding(converted, to, from) != text) std::abort();
  if (from == kAKStringEncodingUTF8 && to != 0 && converted.Length() > text.Length()) std::abort();
  const AKUniChars units = AKUniStringFromAsciiString(text);
  if (AKAsciiStringFromUniString(units) != text) std::abort();
  char cut[5];
  AKAsciiStringFromUniString(cut, sizeof(cut), units.Data(), units.Count());
  return 0;
}
