#include "platform/text/GlyphPictures.h"

#include <hb-ot.h>
#include <hb.h>

#include "platform/codecs/ImageCodec.h"
#include "platform/graphics/CGContextState.h"
#include "platform/graphics/CGImageValue.h"
#include "platform/text/FontFace.h"

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

hb_face_t* FaceOf(PangoFont* font) { return hb_font_get_face(pango_font_get_hb_font(font)); }

void Fill(CGContextRef context, const CGPath& outline) {
  CGContextBeginPath(context);
  CGContextAddPath(context, &outline);
  CGContextDrawPath(context, kCGPathFill);
}

}  // namespace

GlyphPictures::GlyphPictures(PangoFont* font)
    : font_(font),
      hasFiles_(hb_ot_color_has_png(FaceOf(font)) != 0),
      hasLayers_(hb_ot_color_has_layers(FaceOf(font)) != 0) {}

GlyphPictures::Kind GlyphPictures::KindOf(std::uint32_t glyph) {
  const auto [entry, isNew] = kinds_.try_emplace(glyph, Kind::kNone);
  if (!isNew) return entry->second;
  if (hasFiles_ && hb_blob_get_length(FileOf(font_, glyph).get()) > 0) {
    entry->second = Kind::kFile;
  } else if (hasLayers_ && hb_ot_color_glyph_get_layers(FaceOf(font_), glyph, 0, nullptr, nullptr) > 0) {
    entry->second = Kind::kLayers;
  }
  return entry->second;
}

std::vector<GlyphPictures::Layer> GlyphPictures::LayersOf(std::uint32_t glyph) {
  if (!Has(glyph) || KindOf(glyph) != Kind::kLayers) return {};
  constexpr unsigned int kColorOfText = 0xFFFF;
  unsigned int count = hb_ot_color_glyph_get_layers(FaceOf(font_), glyph, 0, nullptr, nullptr);
  std::vector<hb_ot_color_layer_t> stored(count);
  hb_ot_color_glyph_get_layers(FaceOf(font_), glyph, 0, &count, stored.data());
  std::vector<Layer> layers;
  for (const hb_ot_color_layer_t& layer : stored) {
    hb_color_t color = 0;  // clear, for a colour that the palette lacks
    unsigned int one = 1;
    hb_ot_color_palette_get_colors(FaceOf(font_), 0, layer.color_index, &one, &color);
    layers.push_back({layer.glyph, color, layer.color_index == kColorOfText});
  }
  return layers;
}

CGImageRef GlyphPictures::Decoded(std::uint32_t glyph) {
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

void GlyphPictures::Draw(CGContextRef context, FontFace& face, std::uint32_t glyph) {
  if (!Has(glyph)) return;
  if (KindOf(glyph) == Kind::kFile) {
    CGContextSetInterpolationQuality(context, kCGInterpolationHigh);
    CGContextDrawImage(context, face.GlyphInk(glyph).Rect(), Decoded(glyph));
    return;
  }
  const Paint ofText = context->state.fill;
  for (const Layer& layer : LayersOf(glyph)) {
    const auto part = [](std::uint8_t value) { return value / 255.0; };
    if (layer.isOfText) {
      context->state.fill = ofText;
    } else {
      CGContextSetRGBFillColor(context, part(hb_color_get_red(layer.color)), part(hb_color_get_green(layer.color)),
                               part(hb_color_get_blue(layer.color)), part(hb_color_get_alpha(layer.color)));
    }
    Fill(context, face.Trace(layer.glyph));
  }
}

}  // namespace platform
