// Texts that cross between host and bundles, and how they are shown: UTF-8 comes back as it was, everything else
// becomes UTF-8, and what is printed has neither ends of lines nor other control characters.
#include <algorithm>

#include "fuzz/HostFuzz.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
#include "host/text/Printable.h"
#include "host/text/Utf8Check.h"
#include "kit/text/AKStringEncoding.h"

namespace {

constexpr const char* kSignature = "\xEF\xBB\xBF";

// By the kit's conversion, which knows nothing of the check and gives nothing for text that is not UTF-8.
bool IsUtf8(const std::string& text) {
  return text.empty() ||
         !AKStringCopyWithEncoding(AKString(text), kAKStringEncodingUTF8, kAKStringEncodingWindowsLatin1).IsEmpty();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using host_fuzz::Require;
  std::string text(reinterpret_cast<const char*>(data), size);
  std::replace(text.begin(), text.end(), '\0', ' ');
  const std::string shown = host::DisplayText(AKString(text));
  Require(host::FindInvalidUtf8(shown) == shown.size());
  const std::size_t good = host::FindInvalidUtf8(text);
  Require(good == text.size() ? IsUtf8(text) : good < text.size() && IsUtf8(text.substr(0, good)) && !IsUtf8(text));
  if (good == text.size() && text.find(kSignature) == std::string::npos) {
    Require(host::DisplayText(host::TextForBundles(text)) == text);
  }
  const std::string printed = host::Printable(text);
  Require(host::FindInvalidUtf8(printed) == printed.size() && host::Printable(printed) == printed);
  Require(std::none_of(printed.begin(), printed.end(), [](char c) { return (c >= 0 && c < 32) || c == 127; }));
  const std::string filled = host::Filled(text, {"%s", "b"});
  Require(filled.size() <= text.size() && filled.size() + 2 >= text.size());
  return 0;
}
