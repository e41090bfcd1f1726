#include "host/text/DisplayText.h"

#include "kit/text/AKStringEncoding.h"

namespace host {
namespace {

constexpr std::string_view kSignature = "\xEF\xBB\xBF";

AKString ToString(std::string_view text) { return AKString(text.data(), static_cast<unsigned int>(text.size())); }
std::string_view ViewOf(const AKString& text) { return {text.CStr(), text.Length()}; }

std::string FromMacRoman(std::string_view text) {
  return std::string(
      ViewOf(AKStringCopyWithEncoding(ToString(text), kAKStringEncodingMacRoman, kAKStringEncodingUTF8)));
}

AKString ToMacRoman(std::string_view utf8) {
  return AKStringCopyWithEncoding(ToString(utf8), kAKStringEncodingUTF8, kAKStringEncodingMacRoman);
}

}  // namespace

std::string DisplayText(const AKString& text) {
  const std::string_view bytes = ViewOf(text);
  const std::size_t signature = bytes.find(kSignature);
  if (signature == std::string_view::npos) return FromMacRoman(bytes);
  const std::string_view behind = bytes.substr(signature + kSignature.size());
  // Text that is not valid in its set converts to nothing.
  const bool valid =
      behind.empty() ||
      !AKStringCopyWithEncoding(ToString(behind), kAKStringEncodingUTF8, kAKStringEncodingMacRoman).IsEmpty();
  if (!valid) return FromMacRoman(bytes);
  return FromMacRoman(bytes.substr(0, signature)) + std::string(behind);
}

AKString TextForBundles(std::string_view utf8) {
  AKString roman = ToMacRoman(utf8);
  // A character that Mac OS Roman lacks became a "?": the way back tells.
  if (FromMacRoman(ViewOf(roman)) == utf8) return roman;
  return ToString(std::string(kSignature) + std::string(utf8));
}

}  // namespace host
