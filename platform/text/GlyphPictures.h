// Glyphs that are pictures, as those of emoji are. Private to the native layer.
//
// A font keeps them as PNG files of one or a few sizes; the largest is taken and scaled. They have no outlines, and no
// colour but their own: of a text's paint only the opacity counts.
#pragma once

#include <pango/pango.h>

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "CoreGraphics/CGImage.h"

namespace platform {

/// Those of one font, which lives longer.
class GlyphPictures {
 public:
  explicit GlyphPictures(PangoFont* font);

  /// False for most fonts: none of their glyphs is a picture.
  bool HasAny() const { return hasAny_; }
  bool Has(std::uint32_t glyph);
  /// Decoded, in the size that the font has it; those used last are kept. Null for damage and for what is no picture;
  /// holds until the next call.
  CGImageRef Get(std::uint32_t glyph);

 private:
  struct Releaser {
    void operator()(CGImageRef image) const { CGImageRelease(image); }
  };

  PangoFont* font_;
  bool hasAny_;
  std::unordered_map<std::uint32_t, bool> known_;
  std::unordered_map<std::uint32_t, std::unique_ptr<CGImage, Releaser>> decoded_;
};

}  // namespace platform
