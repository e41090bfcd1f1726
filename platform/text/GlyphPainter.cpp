#include "platform/text/GlyphPainter.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "platform/text/LineMask.h"
#include "platform/text/TextEngine.h"

namespace platform {
namespace {

// Glyphs of more pixels are filled as outlines when they are not kept: cairo would keep them instead.
constexpr double kMaxGlyphPixels = 128;
// An em that covers less of a pixel leaves no trace, and has no font that could be made.
constexpr double kMinEmArea = 1e-4;
// Far from here cairo's numbers overflow; only what is near the target is drawn then.
constexpr double kFarAway = 1e6;

CGPoint Corner(const InkBox& ink, int i) { return {(i & 1) != 0 ? ink.x1 : ink.x0, (i & 2) != 0 ? ink.y1 : ink.y0}; }

// The pixels that the ink may touch: one more all round, since cairo moves glyphs to whole pixels.
PixelBox BoxOf(const InkBox& ink, const CGAffineTransform& m, const PixelBox& bounds, bool* isFar) {
  double x0 = INFINITY;
  double y0 = INFINITY;
  double x1 = -INFINITY;
  double y1 = -INFINITY;
  for (int i = 0; i < 4; ++i) {
    const CGPoint p = CGPointApplyAffineTransform(Corner(ink, i), m);
    x0 = std::min(x0, p.x);
    y0 = std::min(y0, p.y);
    x1 = std::max(x1, p.x);
    y1 = std::max(y1, p.y);
  }
  *isFar = !(x0 > -kFarAway && y0 > -kFarAway && x1 < kFarAway && y1 < kFarAway);
  const auto whole = [](double value) { return static_cast<int>(std::clamp(value, -kFarAway, kFarAway)); };
  return WidenBox({whole(std::floor(x0)), whole(std::floor(y0)), whole(std::ceil(x1)), whole(std::ceil(y1))}, 1,
                  bounds);
}

// The glyphs of a run from one within sight to the last within sight; of text in a line those are all.
void KeepNear(const CGAffineTransform& m, const PixelBox& bounds, std::size_t* first, std::size_t* count,
              const cairo_glyph_t* glyphs) {
  const double reach = 4 * kMaxGlyphPixels;
  const auto isNear = [&](const cairo_glyph_t& glyph) {
    const CGPoint p = CGPointApplyAffineTransform({glyph.x, glyph.y}, m);
    return p.x > bounds.x0 - reach && p.x < bounds.x1 + reach && p.y > bounds.y0 - reach && p.y < bounds.y1 + reach;
  };
  std::size_t end = *first + *count;
  while (*first < end && !isNear(glyphs[*first])) ++*first;
  while (*first < end && !isNear(glyphs[end - 1])) --end;
  *count = end - *first;
}

// Which bytes of the run's text each cluster of glyphs stands for, in the order of the text.
std::vector<cairo_text_cluster_t> ClustersOf(const ShapedLine& line, const ShapedRun& run) {
  std::vector<cairo_text_cluster_t> clusters;
  const auto indexOf = [&](std::size_t i) {
    const std::size_t glyph = run.rightToLeft ? run.firstGlyph + run.glyphCount - 1 - i : run.firstGlyph + i;
    return static_cast<std::size_t>(line.textIndexes[glyph]);
  };
  std::size_t reached = run.textOffset;
  for (std::size_t i = 0; i < run.glyphCount;) {
    std::size_t next = i + 1;
    while (next < run.glyphCount && indexOf(next) <= indexOf(i)) ++next;
    const std::size_t end = next < run.glyphCount ? indexOf(next) : run.textOffset + run.textLength;
    clusters.push_back({static_cast<int>(end - reached), static_cast<int>(next - i)});
    reached = end;
    i = next;
  }
  return clusters;
}

void ShowAsText(cairo_t* cairo, const ShapedLine& line, const ShapedRun& run) {
  const std::vector<cairo_text_cluster_t> clusters = ClustersOf(line, run);
  cairo_show_text_glyphs(cairo, line.text.data() + run.textOffset, static_cast<int>(run.textLength),
                         &line.glyphs[run.firstGlyph], static_cast<int>(run.glyphCount), clusters.data(),
                         static_cast<int>(clusters.size()),
                         run.rightToLeft ? CAIRO_TEXT_CLUSTER_FLAG_BACKWARD : cairo_text_cluster_flags_t{});
}

std::vector<cairo_glyph_t> WithoutPictures(const cairo_glyph_t* glyphs, std::size_t count, GlyphPictures& pictures) {
  std::vector<cairo_glyph_t> letters;
  std::copy_if(glyphs, glyphs + count, std::back_inserter(letters),
               [&](const cairo_glyph_t& glyph) { return !pictures.Has(static_cast<std::uint32_t>(glyph.index)); });
  return letters;
}

// The letters of a run; `m` is the matrix, and the source is set.
void ShowRun(CGContext* context, const ShapedLine& line, const ShapedRun& run, const CGAffineTransform& m, bool isFar) {
  cairo_t* cairo = context->cairo.get();
  FontFace& face = FontFace::Of(run.font.Get());
  std::size_t first = run.firstGlyph;
  std::size_t count = run.glyphCount;
  if (isFar) KeepNear(m, context->target->Bounds(), &first, &count, line.glyphs.data());
  if (count == 0) return;
  cairo_scaled_font_t* font = face.ScaledFont({m.a, m.b, m.c, m.d, m.tx, m.ty},
                                              IsSoft(context->state) ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
  if (font == nullptr) return;
  cairo_set_scaled_font(cairo, font);
  if (face.Pictures().HasAny()) {
    const std::vector<cairo_glyph_t> letters = WithoutPictures(&line.glyphs[first], count, face.Pictures());
    if (!letters.empty()) cairo_show_glyphs(cairo, letters.data(), static_cast<int>(letters.size()));
  } else if (context->target->IsVector() && !isFar) {
    ShowAsText(cairo, line, run);
  } else {
    cairo_show_glyphs(cairo, &line.glyphs[first], static_cast<int>(count));
  }
}

void SetSource(CGContext* context, const Paint& paint) {
  ApplyClip(context);
  cairo_set_source_rgba(context->cairo.get(), paint.red, paint.green, paint.blue, paint.alpha * context->state.alpha);
}

// Paints text on pixels, of foreign ones soft text; false, with nothing drawn, for any other.
bool ShowAsMask(CGContext* context, const ShapedLine& line, const CGAffineTransform& m, const Paint& paint) {
  const bool isSoft = IsSoft(context->state);
  if (context->target->IsVector() || (context->bitmap == nullptr && !isSoft)) return false;
  const LineMask mask(line, m, isSoft);
  if (!mask.IsComplete()) return false;
  const PixelBox bounds = context->target->Bounds();
  const PixelBox box{std::max(mask.Box().x0, bounds.x0), std::max(mask.Box().y0, bounds.y0),
                     std::min(mask.Box().x1, bounds.x1), std::min(mask.Box().y1, bounds.y1)};
  if (box.IsEmpty()) return true;
  if (context->bitmap != nullptr) {
    mask.PaintOnBitmap(context, paint, box);
  } else {
    ApplyClip(context);
    mask.PaintThroughCairo(context->cairo.get(), paint, context->state.alpha, box);
  }
  return true;
}

CGAffineTransform FromReference(const CTLine& line, const CGAffineTransform& textToDevice) {
  return CGAffineTransformScale(textToDevice, line.style.Scale(), line.style.Scale());
}

CGAffineTransform Inverse(const CGAffineTransform& m) {
  cairo_matrix_t matrix{m.a, m.b, m.c, m.d, m.tx, m.ty};
  cairo_matrix_invert(&matrix);
  return {matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.x0, matrix.y0};
}

bool HasPictureFont(const ShapedLine& line) {
  return std::any_of(line.runs.begin(), line.runs.end(),
                     [](const ShapedRun& run) { return FontFace::Of(run.font.Get()).Pictures().HasAny(); });
}

bool IsTooSmall(const CGAffineTransform& m) {
  return std::fabs(m.a * m.d - m.b * m.c) * kReferenceSize * kReferenceSize < kMinEmArea;
}

}  // namespace

bool IsSoft(const GraphicsState& state) {
  return state.antialias && state.allowsFontSmoothing && state.shouldSmoothFonts;
}

bool PaintGlyphs(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint) {
  const CGAffineTransform m = FromReference(line, textToDevice);
  if (IsTooSmall(m) || ShowAsMask(context, *line.shape.Get(), m, paint)) return true;
  const double height = std::max(std::hypot(m.a, m.b), std::hypot(m.c, m.d)) * kReferenceSize;
  if (context->bitmap != nullptr || (height > kMaxGlyphPixels && !context->target->IsVector())) return false;
  PaintLetters(context, line, textToDevice, paint);
  PaintPictures(context, line, textToDevice, paint);
  return true;
}

void PaintLetters(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint) {
  const ShapedLine& shape = *line.shape.Get();
  const CGAffineTransform m = FromReference(line, textToDevice);
  if (IsTooSmall(m) || shape.Ink().IsEmpty()) return;
  bool isFar = false;
  const PixelBox box = BoxOf(shape.Ink(), m, context->target->Bounds(), &isFar);
  if (box.IsEmpty()) return;
  SetSource(context, paint);
  const cairo_matrix_t matrix{m.a, m.b, m.c, m.d, m.tx, m.ty};
  cairo_set_matrix(context->cairo.get(), &matrix);
  for (const ShapedRun& run : shape.runs) ShowRun(context, shape, run, m, isFar);
  cairo_identity_matrix(context->cairo.get());
}

void PaintPictures(CGContext* context, const CTLine& line, const CGAffineTransform& textToDevice, const Paint& paint) {
  const ShapedLine& shape = *line.shape.Get();
  if (!HasPictureFont(shape)) return;
  const CGAffineTransform m = FromReference(line, textToDevice);
  const Scoped state(context->state, GraphicsState(context->state));
  CGPath path;
  const Scoped current(context->path, CurrentPath{&path, {}, {}});
  context->state.matrix = CGAffineTransformConcat(m, Inverse(context->baseToDevice));
  context->state.alpha *= paint.alpha;
  context->state.blendMode = kCGBlendModeNormal;
  const CGAffineTransform lineToBase = context->state.matrix;
  for (const ShapedRun& run : shape.runs) {
    FontFace& face = FontFace::Of(run.font.Get());
    if (!face.Pictures().HasAny()) continue;
    for (std::size_t i = run.firstGlyph; i < run.firstGlyph + run.glyphCount; ++i) {
      context->state.matrix = CGAffineTransformTranslate(lineToBase, shape.glyphs[i].x, shape.glyphs[i].y);
      context->state.fill = {paint.red, paint.green, paint.blue, 1, {}, false};
      face.Pictures().Draw(context, face, static_cast<std::uint32_t>(shape.glyphs[i].index));
    }
  }
}

}  // namespace platform
