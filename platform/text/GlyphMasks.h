// What glyphs of a font look like at one scale, as pixels. Private to the native layer.
//
// cairo's own pictures stand on whole pixels, which makes small text uneven; these come in steps of a quarter pixel
// along the baseline, or both ways where that is not level or the text is large. Glyphs that are pictures or have no
// soft edges stand on whole pixels.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/paths/CGPathValue.h"

namespace platform {

class FontFace;

/// The pixels of a glyph; the first lies `left` to the right of and `top` below the glyph's pixel.
struct GlyphMask {
  enum class Kind : unsigned char {
    kNothing,   ///< it leaves no trace
    kCoverage,  ///< a byte a pixel
    kPicture,   ///< 32 bits a pixel, as a native image's
    kNotKept,   ///< too large to be kept, or what only cairo can draw
  };

  Kind kind = Kind::kNothing;
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  int stride = 0;                    ///< of a row, bytes; of coverage: a multiple of kGroup, zeros behind the width
  std::vector<unsigned char> bytes;  ///< from the top down
  std::uint64_t lastUse = 0;         ///< by the clock of the store

  static constexpr int kGroup = 8;  ///< bytes of coverage that are added at once
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
  GlyphMasks(FontFace* face, const cairo_matrix_t& scale, bool isSoft);

  GlyphPlace PlaceOf(std::uint32_t glyph, double deviceX, double deviceY) const;
  /// Holds until the store is trimmed; `*newBytes` grows by the memory that a new one takes.
  GlyphMask& Mask(std::uint32_t glyph, unsigned int step, std::size_t* newBytes);

  /// Calls `see` with each mask, and forgets those that it returns false for.
  template <typename See>
  void Keep(See see) {
    std::erase_if(masks_, [&](const auto& item) { return !see(item.second); });
  }
  bool IsEmpty() const { return masks_.empty(); }

 private:
  GlyphMask Render(std::uint32_t glyph, unsigned int step) const;
  GlyphMask RenderPicture(std::uint32_t glyph) const;

  FontFace* face_;
  cairo_matrix_t scale_;
  bool isSoft_;
  bool isLevel_;
  std::unordered_map<std::uint64_t, GlyphMask> masks_;
};

/// The memory that a mask takes in the store.
std::size_t BytesOf(const GlyphMask& mask);

}  // namespace platform
