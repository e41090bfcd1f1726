#include "graphics/native/AGGraphicsLowFont.h"

#include <cstdint>

#include "CoreFoundation/CFDictionary.h"
#include "CoreFoundation/CFNumber.h"
#include "CoreText/CTFont.h"
#include "CoreText/CTFontCollection.h"
#include "CoreText/CTFontTraits.h"
#include "graphics/native/AGGraphicsLowOwned.h"
#include "kit/system/AKMacOS.h"

namespace AGGraphicsLow {
namespace {

Owned<CFDictionaryRef> NewDictionary(const void** keys, const void** values, CFIndex count) {
  return Owned<CFDictionaryRef>(CFDictionaryCreate(kCFAllocatorDefault, keys, values, count,
                                                   &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

CTFontRef NewStyledFont(CFStringRef family, double size, AGFontStyle style) {
  std::int32_t traits = 0;
  if ((style & kAGFontStyleBold) != 0) traits |= kCTFontTraitBold;
  if ((style & kAGFontStyleItalic) != 0) traits |= kCTFontTraitItalic;
  const Owned<CFNumberRef> number(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &traits));
  const void* traitKeys[] = {kCTFontSymbolicTrait};
  const void* traitValues[] = {number.Get()};
  const Owned<CFDictionaryRef> traitDictionary = NewDictionary(traitKeys, traitValues, 1);

  const void* keys[] = {kCTFontFamilyNameAttribute, kCTFontTraitsAttribute};
  const void* values[] = {family, traitDictionary.Get()};
  const Owned<CFDictionaryRef> attributes = NewDictionary(keys, values, traits == 0 ? 1 : 2);
  if (attributes.Get() == nullptr) return nullptr;
  const Owned<CTFontDescriptorRef> descriptor(CTFontDescriptorCreateWithAttributes(attributes.Get()));
  return descriptor.Get() == nullptr ? nullptr : CTFontCreateWithFontDescriptor(descriptor.Get(), size, nullptr);
}

bool IsOfFamily(CTFontRef font, const AKString& name) {
  const Owned<CFStringRef> family(CTFontCopyFamilyName(font));
  return AKMacOS::AKStringConvert(family.Get(), kCFStringEncodingMacRoman) == name;
}

}  // namespace

AGNativeFont* NewNativeFont(const AKString& name, double size, AGFontStyle style, bool acceptSubstitute) {
  const Owned<CFStringRef> family(AKMacOS::CFStringConvert(name, kCFStringEncodingMacRoman));
  if (family.Get() == nullptr) return nullptr;
  Owned<CTFontRef> font(style == kAGFontStyleRegular ? CTFontCreateWithName(family.Get(), size, nullptr)
                                                     : NewStyledFont(family.Get(), size, style));
  if (font.Get() == nullptr || (!acceptSubstitute && !IsOfFamily(font.Get(), name))) return nullptr;
  return font.Leave();
}

AGNativeFont* NewNativeFontOfSize(AGNativeFont* native, double size) {
  return native == nullptr ? nullptr : CTFontCreateCopyWithAttributes(native, size, nullptr, nullptr);
}

void RetainNativeFont(AGNativeFont* native) {
  if (native != nullptr) CFRetain(native);
}

void ReleaseNativeFont(AGNativeFont* native) {
  if (native != nullptr) CFRelease(native);
}

AKStringArray InstalledFamilies() {
  const Owned<CTFontCollectionRef> collection(CTFontCollectionCreateFromAvailableFonts(nullptr));
  AKStringArray names;
  if (collection.Get() == nullptr) return names;
  const Owned<CFArrayRef> descriptors(CTFontCollectionCreateMatchingFontDescriptors(collection.Get()));
  if (descriptors.Get() == nullptr) return names;
  for (CFIndex i = 0; i < CFArrayGetCount(descriptors.Get()); ++i) {
    const auto* descriptor = static_cast<CTFontDescriptorRef>(CFArrayGetValueAtIndex(descriptors.Get(), i));
    const Owned<CFStringRef> family(
        static_cast<CFStringRef>(CTFontDescriptorCopyAttribute(descriptor, kCTFontFamilyNameAttribute)));
    const AKString name = AKMacOS::AKStringConvert(family.Get(), kCFStringEncodingMacRoman);
    if (!name.IsEmpty()) names.Append(name);
  }
  return names;
}

}  // namespace AGGraphicsLow
