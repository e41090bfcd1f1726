// A line of text laid out: which glyphs stand where. Private to the native layer.
//
// Lengths are reference units (TextEngine.h), y up, the baseline beginning at the origin; so a line knows no size and
// no colours, and one that was laid out once serves every drawing of the same text in the same face.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/CFStringValue.h"
#include "platform/foundation/NativeObject.h"
#include "platform/foundation/NativeRef.h"
#include "platform/text/FontFace.h"
#include "platform/text/PangoHandles.h"

namespace platform {

/// A face as lines are set in it: the font itself and the description by which others are found for what it lacks.
struct TypeFace final : NativeObject {
  GObjectRef<PangoFont> font;
  PangoDescription description;
  NativeRef<const CFString> family;
};

/// Glyphs from one font and one stretch of the text.
struct ShapedRun {
  GObjectRef<PangoFont> font;
  std::size_t firstGlyph;
  std::size_t glyphCount;
  std::size_t textOffset;  ///< UTF-8 bytes
  std::size_t textLength;
  bool rightToLeft;
};

/// How much room a cluster takes.
struct ClusterAdvance {
  std::size_t textIndex;  ///< where in the text it begins
  double advance;
};

struct ShapedLine final : NativeObject {
  /// What the glyphs paint; worked out on first use.
  const InkBox& Ink() const;

  std::string text;                        ///< UTF-8
  std::vector<ShapedRun> runs;             ///< from left to right
  std::vector<cairo_glyph_t> glyphs;       ///< those of all runs that are to be drawn
  std::vector<std::uint32_t> textIndexes;  ///< of each glyph: where its cluster begins, in UTF-8 bytes
  double width = 0;
  FontMetrics metrics;  ///< of the tallest of the fonts; the underline is that of the face

 private:
  mutable bool inkIsKnown_ = false;
  mutable InkBox ink_;
};

/// The direction of the first letter that has one; left to right without any.
PangoDirection ParagraphDirection(std::string_view text);

/// Lays out `text`, which is DisplayText of UnicodeText.h. `advances` may be null; it receives the room of each
/// cluster, in no order.
NativeRef<const ShapedLine> ShapeLine(const TypeFace& face, std::string text, PangoDirection direction,
                                      std::vector<ClusterAdvance>* advances);

/// The line of a whole text, from a store of those that were used last.
NativeRef<const ShapedLine> CachedLine(const TypeFace& face, const UniChar* units, std::size_t count);

}  // namespace platform
