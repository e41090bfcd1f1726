#include "CoreText/CTFont.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangofc-font.h>

#include <string>

#include "CoreText/CTFontTraits.h"
#include "platform/foundation/CFStringValue.h"
#include "platform/foundation/NotNull.h"
#include "platform/text/CTFontValue.h"
#include "platform/text/TextEngine.h"
#include "platform/text/UnicodeText.h"

namespace {

using platform::NativeRef;
using platform::TypeFace;

// The name that the font has; `wanted` itself when that is one of its names.
std::string FamilyOf(PangoFont* font, const std::string& wanted) {
  std::string first;
  FcPattern* pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(font));
  FcChar8* name = nullptr;
  for (int i = 0; FcPatternGetString(pattern, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
    const std::string family(reinterpret_cast<const char*>(name));
    if (family == wanted) return wanted;
    if (i == 0) first = family;
  }
  return first;
}

// Other fonts, for what this one lacks, are looked for beside the family that was found.
NativeRef<const TypeFace> FindFace(CFStringRef name, unsigned int traits) {
  PangoContext* context = platform::TextContext();
  if (context == nullptr) return {};
  const std::string wanted = platform::Utf8Text(name->units.data(), name->units.size());
  platform::PangoDescription description(pango_font_description_new());
  pango_font_description_set_family(description.get(), wanted.c_str());
  pango_font_description_set_weight(description.get(),
                                    (traits & kCTFontTraitBold) != 0 ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_font_description_set_style(description.get(),
                                   (traits & kCTFontTraitItalic) != 0 ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  pango_font_description_set_absolute_size(description.get(), platform::kReferenceSize * PANGO_SCALE);
  auto font = platform::GObjectRef<PangoFont>::Take(pango_context_load_font(context, description.get()));
  if (font.Get() == nullptr || !PANGO_IS_FC_FONT(font.Get())) return {};
  const std::string family = FamilyOf(font.Get(), wanted);
  pango_font_description_set_family(description.get(), family.c_str());

  auto* face = new TypeFace;
  NativeRef<const TypeFace> result = platform::TakeRef<const TypeFace>(face);
  face->font = std::move(font);
  face->description = std::move(description);
  face->family = platform::TakeRef(platform::NewString(family));
  return result;
}

CTFontRef NewFont(CFStringRef name, unsigned int traits, CGFloat size) {
  if (name == nullptr) return nullptr;
  NativeRef<const TypeFace> face = FindFace(name, traits);
  return face.Get() == nullptr ? nullptr : new __CTFont(std::move(face), size);
}

const platform::FontMetrics& MetricsOf(CTFontRef font) {
  return platform::FontFace::Of(font->face.Get()->font.Get()).Metrics();
}

CGFloat AtSize(CTFontRef font, double length) { return length * (font->size / platform::kReferenceSize); }

}  // namespace

CTFontRef CTFontCreateWithName(CFStringRef name, CGFloat size, const CGAffineTransform*) {
  platform::MustBeThere(name);
  return NewFont(name, 0, size);
}

CTFontRef CTFontCreateWithFontDescriptor(CTFontDescriptorRef descriptor, CGFloat size, const CGAffineTransform*) {
  platform::MustBeThere(descriptor);
  return descriptor == nullptr ? nullptr : NewFont(descriptor->family.Get(), descriptor->traits, size);
}

CTFontRef CTFontCreateCopyWithAttributes(CTFontRef font, CGFloat size, const CGAffineTransform*, CTFontDescriptorRef) {
  platform::MustBeThere(font);
  if (font == nullptr) return nullptr;
  return new __CTFont(font->face, size == 0 ? font->size : size);
}

CFStringRef CTFontCopyFamilyName(CTFontRef font) {
  platform::MustBeThere(font);
  if (font == nullptr) return nullptr;
  const CFString* family = font->face.Get()->family.Get();
  family->Retain();
  return family;
}

CGFloat CTFontGetSize(CTFontRef font) {
  platform::MustBeThere(font);
  return font == nullptr ? 0 : font->size;
}

CGFloat CTFontGetAscent(CTFontRef font) {
  platform::MustBeThere(font);
  return font == nullptr ? 0 : AtSize(font, MetricsOf(font).ascent);
}

CGFloat CTFontGetDescent(CTFontRef font) {
  platform::MustBeThere(font);
  return font == nullptr ? 0 : AtSize(font, MetricsOf(font).descent);
}

CGFloat CTFontGetLeading(CTFontRef font) {
  platform::MustBeThere(font);
  return font == nullptr ? 0 : AtSize(font, MetricsOf(font).leading);
}
