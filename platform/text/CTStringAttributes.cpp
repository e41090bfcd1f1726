// The names of attributes. They live as long as the native layer.
#include "CoreText/CTStringAttributes.h"

#include "CoreText/CTFontDescriptor.h"
#include "CoreText/CTFontTraits.h"

namespace {

CFStringRef Name(const char* text) { return CFStringCreateWithCString(kCFAllocatorDefault, text, 0); }

}  // namespace

const CFStringRef kCTFontAttributeName = Name("NSFont");
const CFStringRef kCTForegroundColorAttributeName = Name("CTForegroundColor");
const CFStringRef kCTStrokeColorAttributeName = Name("CTStrokeColor");
const CFStringRef kCTUnderlineStyleAttributeName = Name("NSUnderline");
const CFStringRef kCTParagraphStyleAttributeName = Name("NSParagraphStyle");

const CFStringRef kCTFontFamilyNameAttribute = Name("NSFontFamilyAttribute");
const CFStringRef kCTFontTraitsAttribute = Name("NSCTFontTraitsAttribute");
const CFStringRef kCTFontSymbolicTrait = Name("NSCTFontSymbolicTrait");
