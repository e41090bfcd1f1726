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

// Text that is not valid in its set converts to nothing.
bool IsUtf8(std::string_view text) { return text.empty() || !ToMacRoman(text).IsEmpty(); }

// Further signatures in text that is UTF-8 are those of a path's names.
std::string WithoutSignatures(std::string_view utf8) {
  std::string text(utf8);
  for (std::size_t at = 0; (at = text.find(kSignature, at)) != std::string::npos;) text.erase(at, kSignature.size());
  return text;
}

}  // namespace

std::string DisplayText(const AKString& text) {
  std::string_view rest = ViewOf(text);
  std::string shown;
  for (;;) {
    const std::size_t signature = rest.find(kSignature);
    shown += FromMacRoman(rest.substr(0, signature));
    if (signature == std::string_view::npos) return shown;
    rest.remove_prefix(signature + kSignature.size());
    if (IsUtf8(rest)) return shown + WithoutSignatures(rest);
    const std::string_view name = rest.substr(0, rest.find('/'));
    shown += IsUtf8(name) ? std::string(name) : FromMacRoman(kSignature) + FromMacRoman(name);
    rest.remove_prefix(name.size());
  }
}

AKString TextForBundles(std::string_view utf8) {
  AKString roman = ToMacRoman(utf8);
  // A character that Mac OS Roman lacks became a "?": the way back tells.
  if (FromMacRoman(ViewOf(roman)) == utf8) return roman;
  return ToString(std::string(kSignature) + std::string(utf8));
}

}  // namespace host
