#include <algorithm>

#include "kit/files/AKPathText_p.h"
#include "kit/text/AKCharacterSets_p.h"
#include "kit/text/AKStringEncoding.h"

namespace {

constexpr std::string_view kSignature = "\xEF\xBB\xBF";

std::string_view ViewOf(const AKString& text) { return {text.CStr(), text.Length()}; }

AKString StringOf(std::string_view text) { return {text.data(), static_cast<unsigned int>(text.size())}; }

bool IsAscii(std::string_view text) {
  const auto length = static_cast<unsigned int>(text.size());
  return akcharset::AsciiPrefix(text.data(), length) == length;
}

bool HasSignature(std::string_view text) { return text.find(kSignature) != std::string_view::npos; }

AKString RomanToUtf8(std::string_view roman) {
  return AKStringCopyWithEncoding(StringOf(roman), kAKStringEncodingMacRoman, kAKStringEncodingUTF8);
}

AKString NameToSystem(std::string_view name) {
  const std::size_t signature = name.find(kSignature);
  AKString bytes = RomanToUtf8(name.substr(0, signature));
  if (signature != std::string_view::npos) bytes += StringOf(name.substr(signature + kSignature.size()));
  return bytes;
}

AKString NameFromSystem(std::string_view bytes) {
  const AKString given = StringOf(bytes);
  AKString roman = AKStringCopyWithEncoding(given, kAKStringEncodingUTF8, kAKStringEncodingMacRoman);
  // What Mac OS Roman lacks became a "?", and what is no UTF-8 nothing: the way back tells.
  if (!HasSignature(ViewOf(roman)) && RomanToUtf8(ViewOf(roman)) == given) return roman;
  return StringOf(kSignature) + given;
}

template <typename Convert>
AKString ForEachName(std::string_view path, Convert convert) {
  if (IsAscii(path)) return StringOf(path);
  AKString result;
  for (std::size_t start = 0;;) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    result += convert(path.substr(start, end - start));
    if (end == path.size()) return result;
    result.Append('/');
    start = end + 1;
  }
}

}  // namespace

AKString akpath::ToSystem(std::string_view text) { return ForEachName(text, NameToSystem); }

AKString akpath::FromSystem(std::string_view bytes) { return ForEachName(bytes, NameFromSystem); }

AKString akpath::Canonical(std::string_view name) {
  return HasSignature(name) ? NameFromSystem(ViewOf(NameToSystem(name))) : StringOf(name);
}
