// A line of text on a bitmap, put together from the kept pixels of its glyphs. Private to the native layer.
#pragma once

#include <vector>

#include "platform/graphics/CGContextState.h"
#include "platform/text/GlyphStore.h"
#include "platform/text/ShapedLine.h"

namespace platform {

class LineMask {
 public:
  /// `m` leads from reference units to device space and has an inverse.
  LineMask(const ShapedLine& line, const CGAffineTransform& m);

  /// False for a line that is too long or too far away, and for glyphs that are not kept.
  bool IsComplete() const { return isComplete_; }

  /// The pixels that glyphs cover.
  const PixelBox& Box() const { return box_; }

  /// Paints cairo's source through the coverage within `box`, which is not empty; the matrix is the identity.
  void PaintLetters(cairo_t* cairo, const PixelBox& box) const;
  bool HasPictures() const { return !pictures_.empty(); }
  /// Paints the glyphs that are pictures in their own colours. The matrix is the identity; the source changes.
  void PaintPictures(cairo_t* cairo, double alpha) const;

 private:
  struct Item {
    const GlyphMask* glyph;
    int left;
    int top;
  };

  bool AddRun(const ShapedLine& line, const ShapedRun& run, const CGAffineTransform& m);

  GlyphStore::Use use_{GlyphStore::Shared()};
  std::vector<Item> letters_;
  std::vector<Item> pictures_;
  PixelBox box_;
  bool isComplete_ = false;
};

}  // namespace platform
