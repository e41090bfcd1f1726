// Glyphs that are pictures, as those of emoji are. Private to the native layer.
//
// A font keeps them as PNG files of one or a few sizes, of which the largest is taken and scaled (its tables CBDT or
// sbix), or as layers: outlines of other glyphs, each in a colour of the font's first palette or in the text's (COLR,
// version 0). They have no outlines of their own; but for such layers only the opacity of a text's paint counts.
#pragma once

#include <pango/pango.h>

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "CoreGraphics/CGContext.h"
#include "CoreGraphics/CGImage.h"

namespace platform {

class FontFace;

/// Those of one font, which lives longer.
class GlyphPictures {
 public:
  struct Layer {
    std::uint32_t glyph;
    std::uint32_t color;  ///< blue in the highest byte, then green, red, alpha
    bool isOfText;        ///< its colour is the text's instead
  };

  explicit GlyphPictures(PangoFont* font);

  /// False for most fonts: none of their glyphs is a picture.
  bool HasAny() const { return hasFiles_ || hasLayers_; }
  bool Has(std::uint32_t glyph) { return HasAny() && KindOf(glyph) != Kind::kNone; }
  /// From the lowest up; none for a picture of another kind.
  std::vector<Layer> LayersOf(std::uint32_t glyph);

  /// Draws the picture, its origin at that of user space, whose units are reference units, by the context's state. Its
  /// fill is the text's colour, and is changed.
  void Draw(CGContextRef context, FontFace& face, std::uint32_t glyph);

 private:
  enum class Kind : unsigned char { kNone, kFile, kLayers };

  Kind KindOf(std::uint32_t glyph);
  CGImageRef Decoded(std::uint32_t glyph);

  struct Releaser {
    void operator()(CGImageRef image) const { CGImageRelease(image); }
  };

  PangoFont* font_;
  bool hasFiles_;
  bool hasLayers_;
  std::unordered_map<std::uint32_t, Kind> kinds_;
  std::unordered_map<std::uint32_t, std::unique_ptr<CGImage, Releaser>> decoded_;
};

}  // namespace platform
