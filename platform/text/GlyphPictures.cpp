#include "platform/text/GlyphPictures.h"

#include <hb-ot.h>
#include <hb.h>

#include "platform/codecs/ImageCodec.h"
#include "platform/graphics/CGImageValue.h"

namespace platform {
namespace {

// Some 5 MB at the size that such fonts have.
constexpr std::size_t kMaxDecoded = 64;

struct BlobDeleter {
  void operator()(hb_blob_t* blob) const { hb_blob_destroy(blob); }
};
using Blob = std::unique_ptr<hb_blob_t, BlobDeleter>;

Blob FileOf(PangoFont* font, std::uint32_t glyph) {
  return Blob(hb_ot_color_glyph_reference_png(pango_font_get_hb_font(font), glyph));
}

}  // namespace

GlyphPictures::GlyphPictures(PangoFont* font)
    : font_(font), hasAny_(hb_ot_color_has_png(hb_font_get_face(pango_font_get_hb_font(font))) != 0) {}

bool GlyphPictures::Has(std::uint32_t glyph) {
  if (!hasAny_) return false;
  const auto [entry, isNew] = known_.try_emplace(glyph, false);
  if (isNew) entry->second = hb_blob_get_length(FileOf(font_, glyph).get()) > 0;
  return entry->second;
}

CGImageRef GlyphPictures::Get(std::uint32_t glyph) {
  if (!Has(glyph)) return nullptr;
  const auto found = decoded_.find(glyph);
  if (found != decoded_.end()) return found->second.get();
  if (decoded_.size() >= kMaxDecoded) decoded_.clear();
  const Blob blob = FileOf(font_, glyph);
  unsigned int size = 0;
  const char* data = hb_blob_get_data(blob.get(), &size);
  RefusedSize refused;
  const CGImageRef image = kPNGCodec.decode({reinterpret_cast<const unsigned char*>(data), size}, &refused);
  return decoded_.emplace(glyph, image).first->second.get();
}

}  // namespace platform
