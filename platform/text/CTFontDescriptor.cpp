#include "CoreText/CTFontDescriptor.h"

#include <fontconfig/fontconfig.h>

#include <memory>

#include "CoreText/CTFontCollection.h"
#include "CoreText/CTFontTraits.h"
#include "platform/foundation/CFArrayValue.h"
#include "platform/foundation/CFDictionaryValue.h"
#include "platform/foundation/CFNumberValue.h"
#include "platform/foundation/NotNull.h"
#include "platform/text/CTFontValue.h"
#include "platform/text/UnicodeText.h"

namespace {

struct FontconfigDeleter {
  void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
  void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
  void operator()(FcObjectSet* objects) const { FcObjectSetDestroy(objects); }
};

unsigned int TraitsOf(CFDictionaryRef attributes) {
  const auto* traits = attributes->Get<CFDictionary>(kCTFontTraitsAttribute);
  const auto* symbolic = traits == nullptr ? nullptr : traits->Get<CFNumber>(kCTFontSymbolicTrait);
  return symbolic == nullptr ? 0 : static_cast<unsigned int>(symbolic->integer);
}

// One item a family, style and face, as the font system counts them.
std::vector<CFArray::Item> InstalledFonts() {
  const std::unique_ptr<FcPattern, FontconfigDeleter> all(FcPatternCreate());
  const std::unique_ptr<FcObjectSet, FontconfigDeleter> wanted(
      FcObjectSetBuild(FC_FAMILY, FC_STYLE, static_cast<char*>(nullptr)));
  const std::unique_ptr<FcFontSet, FontconfigDeleter> found(FcFontList(nullptr, all.get(), wanted.get()));
  std::vector<CFArray::Item> items;
  for (int i = 0; found != nullptr && i < found->nfont; ++i) {
    FcChar8* family = nullptr;
    if (FcPatternGetString(found->fonts[i], FC_FAMILY, 0, &family) != FcResultMatch) continue;
    auto* descriptor = new CTFontDescriptor;
    items.push_back(platform::TakeRef<const platform::NativeObject>(descriptor));
    descriptor->family = platform::TakeRef(platform::NewString(reinterpret_cast<const char*>(family)));
  }
  return items;
}

}  // namespace

struct CTFontCollection final : platform::NativeObject {
  std::vector<CFArray::Item> descriptors = InstalledFonts();
};

CTFontDescriptorRef CTFontDescriptorCreateWithAttributes(CFDictionaryRef attributes) {
  platform::MustBeThere(attributes);
  if (attributes == nullptr) return nullptr;
  auto* descriptor = new CTFontDescriptor;
  descriptor->family = platform::NativeRef<const CFString>(attributes->Get<CFString>(kCTFontFamilyNameAttribute));
  descriptor->traits = TraitsOf(attributes);
  return descriptor;
}

CFTypeRef CTFontDescriptorCopyAttribute(CTFontDescriptorRef descriptor, CFStringRef attribute) {
  platform::MustBeThere(descriptor);
  platform::MustBeThere(attribute);
  if (descriptor == nullptr || attribute == nullptr || descriptor->family.Get() == nullptr ||
      attribute->units != kCTFontFamilyNameAttribute->units) {
    return nullptr;
  }
  return CFRetain(static_cast<const platform::NativeObject*>(descriptor->family.Get()));
}

CTFontCollectionRef CTFontCollectionCreateFromAvailableFonts(CFDictionaryRef) { return new CTFontCollection; }

CFArrayRef CTFontCollectionCreateMatchingFontDescriptors(CTFontCollectionRef collection) {
  platform::MustBeThere(collection);
  if (collection == nullptr || collection->descriptors.empty()) return nullptr;
  return new CFArray(collection->descriptors);
}
