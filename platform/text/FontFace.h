// What the native layer knows of one of pango's fonts. Private to the native layer.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "platform/foundation/NativeRef.h"
#include "platform/graphics/CairoHandles.h"
#include "platform/paths/CGPathValue.h"
#include "platform/text/GlyphPictures.h"
#include "platform/text/PangoHandles.h"

namespace platform {

/// Lengths are reference units (TextEngine.h), y up.
struct FontMetrics {
  double ascent = 0;
  double descent = 0;  ///< positive
  double leading = 0;
  double underlineTop = 0;
  double underlineThickness = 0;
  double tabWidth = 0;  ///< that of 8 spaces
};

/// A box; one that holds nothing has x0 > x1.
struct InkBox {
  double x0 = 1;
  double y0 = 1;
  double x1 = 0;
  double y1 = 0;

  bool IsEmpty() const { return !(x0 < x1 && y0 < y1); }
  CGRect Rect() const { return {{x0, y0}, {x1 - x0, y1 - y0}}; }
  void Add(const InkBox& other);
  void Move(double x, double y) { x0 += x, x1 += x, y0 += y, y1 += y; }
};

/// Made on the first use of a font and freed with it.
class FontFace {
 public:
  /// `font` is not null; the face lives as long as it.
  static FontFace& Of(PangoFont* font);
  FontFace(const FontFace&) = delete;
  FontFace& operator=(const FontFace&) = delete;

  const FontMetrics& Metrics() const { return metrics_; }
  /// What the glyph paints, its origin at the origin.
  InkBox GlyphInk(std::uint32_t glyph);
  /// How far the next glyph is away.
  double GlyphAdvance(std::uint32_t glyph) const;

  /// The glyph's outline, closed; empty when it has none, as a picture.
  const CGPath& Outline(std::uint32_t glyph);
  /// As Outline, of a layer of a picture.
  const CGPath& Trace(std::uint32_t glyph);

  /// Those of the font's glyphs that are pictures.
  GlyphPictures& Pictures() { return pictures_; }

  /// The font for drawing glyphs whose positions are in reference units under the matrix `m`, which leads to device
  /// space and has an inverse. The face owns it until the next call. Null on failure.
  cairo_scaled_font_t* ScaledFont(const cairo_matrix_t& m, cairo_antialias_t antialias);

 private:
  explicit FontFace(PangoFont* font);
  ~FontFace();

  InkBox OwnInk(std::uint32_t glyph) const;

  PangoFont* font_;  // owns this face
  FontMetrics metrics_;
  GlyphPictures pictures_;
  struct ReleaseScaledFont {
    void operator()(cairo_scaled_font_t* scaled) const { cairo_scaled_font_destroy(scaled); }
  };
  std::unique_ptr<cairo_scaled_font_t, ReleaseScaledFont> scaled_;
  cairo_matrix_t scaledMatrix_{};
  cairo_antialias_t scaledAntialias_ = CAIRO_ANTIALIAS_DEFAULT;
  CairoContext pathMaker_;
  struct ReleasePath {
    void operator()(CGPath* path) const { path->Release(); }
  };
  std::unordered_map<std::uint32_t, std::unique_ptr<CGPath, ReleasePath>> outlines_;
};

}  // namespace platform
