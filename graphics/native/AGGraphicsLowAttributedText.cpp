// Attributed text.
#include <algorithm>
#include <cstdint>

#include "CoreFoundation/CFNumber.h"
#include "CoreGraphics/CGColor.h"
#include "CoreText/CTParagraphStyle.h"
#include "CoreText/CTStringAttributes.h"
#include "graphics/native/AGGraphicsLowOwned.h"
#include "graphics/native/AGGraphicsLowText.h"
#include "kit/text/AKUniString.h"

namespace AGGraphicsLow {
namespace {

constexpr double kChannelToUnit = 0.00392156862745098;  // 1/255

bool IsLineBreak(int character) { return character == 10 || character == 13; }

Owned<CFStringRef> NewUtf16(const AKUniChars& text) {
  return Owned<CFStringRef>(CFStringCreateWithCharacters(kCFAllocatorDefault, text.Data(), text.Count()));
}

// Null when both are empty.
Owned<CFStringRef> NewText(const AKString& string, const AKUniChars& text, bool* hasLineBreak) {
  *hasLineBreak = false;
  if (string.IsEmpty()) {
    *hasLineBreak = IsOneAtLeastCharCR(text);
    return text.IsEmpty() ? Owned<CFStringRef>() : NewUtf16(text);
  }
  // A C string ends at its first NUL, and so does the question whether it is ASCII.
  if (std::find(string.begin(), string.end(), '\0') == string.end() && string.IsPureAscii(nullptr)) {
    *hasLineBreak = std::any_of(string.begin(), string.end(), IsLineBreak);
    return Owned<CFStringRef>(CFStringCreateWithCString(kCFAllocatorDefault, string.CStr(), kCFStringEncodingMacRoman));
  }
  const AKUniChars converted = AKUniStringFromAsciiString(string);
  *hasLineBreak = IsOneAtLeastCharCR(converted);
  return NewUtf16(converted);
}

// Sets attributes of a whole text.
class Attributes {
 public:
  explicit Attributes(CFMutableAttributedStringRef text)
      : text_(text), range_(CFRangeMake(0, CFAttributedStringGetLength(text))) {}

  void Set(CFStringRef name, CFTypeRef value) {
    if (value != nullptr) CFAttributedStringSetAttribute(text_, range_, name, value);
  }

  void SetColor(CFStringRef name, AGColor color) {
    if (color.Alpha() == 0) return;
    const CGFloat components[] = {color.Red() * kChannelToUnit, color.Green() * kChannelToUnit,
                                  color.Blue() * kChannelToUnit, color.Alpha() * kChannelToUnit};
    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    const Owned<CGColorRef> native(CGColorCreate(space, components));
    CGColorSpaceRelease(space);
    Set(name, native.Get());
  }

  void SetUnderline() {
    const std::int32_t single = 1;
    const Owned<CFNumberRef> number(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &single));
    Set(kCTUnderlineStyleAttributeName, number.Get());
  }

  void SetAlignment(CTTextAlignment alignment) {
    const CTParagraphStyleSetting setting{kCTParagraphStyleSpecifierAlignment, sizeof(alignment), &alignment};
    const Owned<CTParagraphStyleRef> style(CTParagraphStyleCreate(&setting, 1));
    Set(kCTParagraphStyleAttributeName, style.Get());
  }

 private:
  CFMutableAttributedStringRef text_;
  CFRange range_;
};

}  // namespace

bool IsOneAtLeastCharCR(const AKUniChars& text) { return std::any_of(text.begin(), text.end(), IsLineBreak); }

CFAttributedStringRef _LowCFAttributedStringCreate(const AKString& string, const AKUniChars& text, const AGFont& font,
                                                   AGTextAlignment alignment, AGColor fill, AGColor stroke,
                                                   bool* hasLineBreak) {
  bool breaks = false;
  const Owned<CFStringRef> native = NewText(string, text, &breaks);
  if (hasLineBreak != nullptr) *hasLineBreak = breaks;
  if (native.Get() == nullptr || CFStringGetLength(native.Get()) == 0) return nullptr;
  const Owned<CFAttributedStringRef> plain(CFAttributedStringCreate(kCFAllocatorDefault, native.Get(), nullptr));
  if (plain.Get() == nullptr) return nullptr;
  CFMutableAttributedStringRef attributed = CFAttributedStringCreateMutableCopy(kCFAllocatorDefault, 0, plain.Get());
  if (attributed == nullptr) return nullptr;
  Attributes attributes(attributed);
  if (font.NativeFont() != nullptr) attributes.Set(kCTFontAttributeName, font.NativeFont());
  attributes.SetColor(kCTForegroundColorAttributeName, fill);
  attributes.SetColor(kCTStrokeColorAttributeName, stroke);
  if ((font.Style() & kAGFontStyleUnderline) != 0) attributes.SetUnderline();
  if (breaks && alignment == kAGTextAlignmentCenter) attributes.SetAlignment(kCTTextAlignmentCenter);
  if (breaks && alignment == kAGTextAlignmentRight) attributes.SetAlignment(kCTTextAlignmentRight);
  return attributed;
}

}  // namespace AGGraphicsLow
