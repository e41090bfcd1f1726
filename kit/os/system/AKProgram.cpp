#include <CoreFoundation/CFArray.h>
#include <CoreFoundation/CFLocale.h>
#include <CoreFoundation/CFString.h>
#include <mach-o/dyld.h>

#include <climits>
#include <cstdint>
#include <cstdlib>

#include "kit/os/AKProgram_p.h"

namespace {

// Names of languages and regions are ASCII.
std::string Text(CFStringRef text) {
  if (text == nullptr) return {};
  std::string result;
  for (CFIndex i = 0; i < CFStringGetLength(text); ++i) {
    UniChar unit = 0;
    CFStringGetCharacters(text, CFRangeMake(i, 1), &unit);
    result += static_cast<char>(unit);
  }
  return result;
}

// "de" of the first of the user's languages, "de-AT".
std::string Language() {
  CFArrayRef languages = CFLocaleCopyPreferredLanguages();
  if (languages == nullptr) return {};
  std::string language;
  if (CFArrayGetCount(languages) > 0) language = Text(static_cast<CFStringRef>(CFArrayGetValueAtIndex(languages, 0)));
  CFRelease(languages);
  return language.substr(0, language.find_first_of("-_"));
}

std::string Region() {
  CFLocaleRef locale = CFLocaleCopyCurrent();
  if (locale == nullptr) return {};
  std::string region = Text(static_cast<CFStringRef>(CFLocaleGetValue(locale, kCFLocaleCountryCode)));
  CFRelease(locale);
  return region;
}

}  // namespace

std::string AKProgramPath() {
  std::uint32_t size = 0;
  ::_NSGetExecutablePath(nullptr, &size);  // asks for the size
  std::string path(size, '\0');
  char resolved[PATH_MAX];
  if (::_NSGetExecutablePath(path.data(), &size) != 0) return {};
  return ::realpath(path.c_str(), resolved) == nullptr ? std::string() : resolved;
}

// A program lies in Contents/MacOS of its folder, and its files in Contents/Resources.
std::string AKProgramResources() {
  const std::string path = AKProgramPath();
  return path.substr(0, path.rfind('/') + 1) + "../Resources";
}

std::string AKUserLocaleName() {
  const std::string language = Language();
  const std::string region = Region();
  return region.empty() || language.empty() ? language : language + "_" + region;
}
