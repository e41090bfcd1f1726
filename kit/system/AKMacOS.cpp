#include "kit/system/AKMacOS.h"

#include "kit/files/AKFileUtils.h"
#include "kit/text/AKCharacterSets_p.h"

AKStringEncoding AKMacOS::AKStringEncodingConvert(CFStringEncoding encoding) {
  switch (encoding) {
    case kCFStringEncodingMacRoman:
      return kAKStringEncodingMacRoman;
    case kCFStringEncodingWindowsLatin1:
      return kAKStringEncodingWindowsLatin1;
    case kCFStringEncodingUTF8:
      return kAKStringEncodingUTF8;
    default:
      return kAKStringEncodingNone;
  }
}

CFStringEncoding AKMacOS::CFStringEncodingConvert(AKStringEncoding encoding) {
  switch (encoding) {
    case kAKStringEncodingMacRoman:
      return kCFStringEncodingMacRoman;
    case kAKStringEncodingWindowsLatin1:
      return kCFStringEncodingWindowsLatin1;
    case kAKStringEncodingUTF8:
      return kCFStringEncodingUTF8;
    default:
      return kCFStringEncodingInvalidId;
  }
}

AKString AKMacOS::AKStringConvert(CFStringRef text, CFStringEncoding encoding) {
  const AKStringEncoding to = AKStringEncodingConvert(encoding);
  if (text == nullptr || to == kAKStringEncodingNone) return {};
  AKUniChars units(static_cast<unsigned int>(CFStringGetLength(text)));
  if (units.IsEmpty()) return {};
  CFStringGetCharacters(text, CFRangeMake(0, units.Count()), units.Data());
  return akcharset::FromUtf16(units.Data(), units.Count(), to);
}

CFStringRef AKMacOS::CFStringConvert(const AKString& text, CFStringEncoding encoding) {
  const AKStringEncoding from = AKStringEncodingConvert(encoding);
  AKUniChars units;
  if (text.IsEmpty() || from == kAKStringEncodingNone) return nullptr;
  if (!akcharset::ToUtf16(text.CStr(), text.Length(), from, &units)) return nullptr;
  return CFStringCreateWithCharacters(kCFAllocatorDefault, units.Data(), units.Count());
}

AKFilePath AKMacOS::AKFilePathConvert(CFURLRef url, bool asFolder) {
  if (url == nullptr) return {};
  CFStringRef native = CFURLCopyFileSystemPath(url, kCFURLPOSIXPathStyle);
  if (native == nullptr) return {};
  AKString text = AKStringConvert(native, kCFStringEncodingUTF8);
  CFRelease(native);
  if (asFolder && text[text.Length() - 1] != '/') text += '/';
  AKFilePath path;
  AKFileUtils::GetFromSystemPath(text.CStr(), &path);
  return path;
}

CFURLRef AKMacOS::CFURLConvert(const AKFilePath& path, bool isFolder) {
  CFStringRef native = CFStringConvert(AKFileUtils::GetAsSystemPath(path), kCFStringEncodingUTF8);
  if (native == nullptr) return nullptr;
  CFURLRef url = CFURLCreateWithFileSystemPath(kCFAllocatorDefault, native, kCFURLPOSIXPathStyle, isFolder);
  CFRelease(native);
  return url;
}
