// The coverage of a line of text on a bitmap, put together from pictures of its glyphs. Private to the native layer.
#pragma once

#include <vector>

#include "platform/graphics/CGContextState.h"
#include "platform/text/GlyphMasks.h"
#include "platform/text/ShapedLine.h"

namespace platform {

class LineMask {
 public:
  /// `m` leads from reference units to device space and has an inverse.
  LineMask(const ShapedLine& line, const CGAffineTransform& m);
  LineMask(const LineMask&) = delete;
  LineMask& operator=(const LineMask&) = delete;
  ~LineMask();

  /// False for a line that is too long or too far away, and for glyphs that are no outlines: cairo has to draw it.
  bool IsComplete() const { return isComplete_; }

  /// The pixels that glyphs cover.
  const PixelBox& Box() const { return box_; }

  /// Paints cairo's source through the coverage within `box`, which is not empty; the matrix is the identity.
  void Paint(cairo_t* cairo, const PixelBox& box) const;

 private:
  struct Item {
    const GlyphMask* glyph;
    int left;
    int top;
  };

  bool AddRun(const ShapedLine& line, const ShapedRun& run, const CGAffineTransform& m);

  std::vector<Item> items_;
  std::vector<GlyphMasks*> sources_;  // of the items
  PixelBox box_;
  bool isComplete_ = false;
};

}  // namespace platform
