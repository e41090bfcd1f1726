// Pictures of a font's glyphs at one scale. Private to the native layer.
//
// cairo's own pictures stand on whole pixels, which makes small text uneven; these come in steps of a quarter pixel
// along the baseline, or both ways where that is not level.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/graphics/CGPathValue.h"

namespace platform {

class FontFace;

/// The coverage of a glyph; its first byte lies `left` pixels to the right of and `top` below the glyph's pixel.
struct GlyphMask {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool isPicture = false;               ///< the glyph is no outline and has to be drawn by cairo
  int stride = 0;                       ///< of a row: a multiple of kGroup, zeros behind the width
  std::vector<unsigned char> coverage;  ///< from the top down

  static constexpr int kGroup = 8;  ///< bytes that are added at once
};

/// Where a glyph stands: a pixel, and a step of a quarter one further.
struct GlyphPlace {
  int x;
  int y;
  unsigned int step;
};

class GlyphMasks {
 public:
  /// `scale` maps reference units to device space; its translation does not count.
  explicit GlyphMasks(const cairo_matrix_t& scale);

  bool IsFor(const cairo_matrix_t& scale) const;
  GlyphPlace PlaceOf(double deviceX, double deviceY) const;
  /// Holds until Trim is called.
  const GlyphMask& Mask(FontFace& face, std::uint32_t glyph, unsigned int step);
  /// Forgets all masks when they take too much memory.
  void Trim();

 private:
  GlyphMask Render(FontFace& face, std::uint32_t glyph, unsigned int step) const;

  cairo_matrix_t scale_;
  bool isLevel_;
  std::unordered_map<std::uint64_t, GlyphMask> masks_;
  std::size_t byteCount_ = 0;
};

}  // namespace platform
