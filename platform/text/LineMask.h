// A line of text on a bitmap, put together from the kept pixels of its glyphs. Private to the native layer.
//
// The memory of a line serves the next one: a line whose glyphs are kept takes none.
#pragma once

#include <vector>

#include "platform/graphics/CGContextState.h"
#include "platform/text/GlyphStore.h"
#include "platform/text/ShapedLine.h"

namespace platform {

class LineMask {
 public:
  /// `m` leads from reference units to device space and has an inverse.
  LineMask(const ShapedLine& line, const CGAffineTransform& m, bool isSoft);
  LineMask(const LineMask&) = delete;
  LineMask& operator=(const LineMask&) = delete;
  ~LineMask();

  /// False for a line of more than a million glyphs, and for glyphs that are not kept.
  bool IsComplete() const { return isComplete_; }

  /// The pixels that glyphs cover.
  const PixelBox& Box() const { return box_; }

  /// Paints the line on a bitmap, or, for foreign pixels, through cairo, whose matrix is the identity: letters in the
  /// paint's colour, pictures in their own. `box` is the part of the line's that can be seen, and is not empty.
  void PaintOnBitmap(CGContext* context, const Paint& paint, const PixelBox& box) const;
  void PaintThroughCairo(cairo_t* cairo, const Paint& paint, double alpha, const PixelBox& box) const;

 private:
  struct Item {
    const GlyphMask* glyph;
    int left;
    int top;
  };

  bool AddRun(const ShapedLine& line, const ShapedRun& run, const CGAffineTransform& m, bool isSoft);

  GlyphStore::Use use_{GlyphStore::Shared()};
  std::vector<Item> letters_;
  std::vector<Item> pictures_;
  PixelBox box_;
  bool isComplete_ = false;
};

}  // namespace platform
