#include "platform/text/FontFace.h"

#include <hb.h>
#include <pango/pangocairo.h>

#include <algorithm>

#include "platform/text/GlyphStore.h"
#include "platform/text/TextEngine.h"

namespace platform {
namespace {

// Outlines that are kept for one font; a text that uses more of them starts anew.
constexpr std::size_t kMaxOutlines = 4096;

FontMetrics MeasureFont(PangoFont* font) {
  FontMetrics result;
  hb_font_t* measured = pango_font_get_hb_font(font);
  hb_font_extents_t extents{};
  if (hb_font_get_h_extents(measured, &extents) != 0) {
    result.ascent = extents.ascender * kPerPangoUnit;
    result.descent = -extents.descender * kPerPangoUnit;
    result.leading = std::max(extents.line_gap, 0) * kPerPangoUnit;
  }
  hb_codepoint_t space = 0;
  if (hb_font_get_nominal_glyph(measured, ' ', &space) != 0) {
    result.tabWidth = 8 * hb_font_get_glyph_h_advance(measured, space) * kPerPangoUnit;
  }
  const PangoMetrics metrics(pango_font_get_metrics(font, nullptr));
  if (metrics != nullptr) {
    result.underlineTop = pango_font_metrics_get_underline_position(metrics.get()) * kPerPangoUnit;
    result.underlineThickness = pango_font_metrics_get_underline_thickness(metrics.get()) * kPerPangoUnit;
  }
  return result;
}

// cairo's coordinates of a glyph have y down.
void AppendMirrored(const cairo_path_t& source, CGMutablePathRef path) {
  const CGAffineTransform mirror{1, 0, 0, -1, 0, 0};
  for (int i = 0; i < source.num_data; i += source.data[i].header.length) {
    const cairo_path_data_t* step = &source.data[i];
    switch (step->header.type) {
      case CAIRO_PATH_MOVE_TO:
        CGPathMoveToPoint(path, &mirror, step[1].point.x, step[1].point.y);
        break;
      case CAIRO_PATH_LINE_TO:
        CGPathAddLineToPoint(path, &mirror, step[1].point.x, step[1].point.y);
        break;
      case CAIRO_PATH_CURVE_TO:
        CGPathAddCurveToPoint(path, &mirror, step[1].point.x, step[1].point.y, step[2].point.x, step[2].point.y,
                              step[3].point.x, step[3].point.y);
        break;
      default:
        CGPathCloseSubpath(path);
        break;
    }
  }
}

// A close is followed by a move to where the path is already: as the last step it would be a subpath without an end.
void DropLastMove(CGPath* path) {
  if (!path->verbs.IsEmpty() && path->verbs.end()[-1] == kCGPathElementMoveToPoint) {
    path->verbs.RemoveLast(1);
    path->points.RemoveLast(1);
  }
}

}  // namespace

void InkBox::Add(const InkBox& other) {
  if (other.IsEmpty()) return;
  if (IsEmpty()) {
    *this = other;
    return;
  }
  x0 = std::min(x0, other.x0);
  y0 = std::min(y0, other.y0);
  x1 = std::max(x1, other.x1);
  y1 = std::max(y1, other.y1);
}

FontFace& FontFace::Of(PangoFont* font) {
  static const GQuark key = g_quark_from_static_string("AKPlatform-face");
  auto* face = static_cast<FontFace*>(g_object_get_qdata(G_OBJECT(font), key));
  if (face == nullptr) {
    face = new FontFace(font);
    g_object_set_qdata_full(G_OBJECT(font), key, face, [](void* data) { delete static_cast<FontFace*>(data); });
  }
  return *face;
}

FontFace::FontFace(PangoFont* font) : font_(font), metrics_(MeasureFont(font)), pictures_(font) {}

FontFace::~FontFace() { GlyphStore::Shared().Forget(this); }

InkBox FontFace::GlyphInk(std::uint32_t glyph) {
  InkBox all;
  for (const GlyphPictures::Layer& layer : pictures_.LayersOf(glyph)) {
    all.Add(OwnInk(layer.glyph));
  }
  return all.IsEmpty() ? OwnInk(glyph) : all;
}

InkBox FontFace::OwnInk(std::uint32_t glyph) const {
  PangoRectangle ink{};
  pango_font_get_glyph_extents(font_, glyph, &ink, nullptr);
  return {ink.x * kPerPangoUnit, -(ink.y + ink.height) * kPerPangoUnit, (ink.x + ink.width) * kPerPangoUnit,
          -ink.y * kPerPangoUnit};
}

double FontFace::GlyphAdvance(std::uint32_t glyph) const {
  PangoRectangle logical{};
  pango_font_get_glyph_extents(font_, glyph, nullptr, &logical);
  return logical.width * kPerPangoUnit;
}

const CGPath& FontFace::Outline(std::uint32_t glyph) {
  static const CGPath& none = *CGPathCreateMutable();
  return pictures_.Has(glyph) ? none : Trace(glyph);
}

const CGPath& FontFace::Trace(std::uint32_t glyph) {
  const auto found = outlines_.find(glyph);
  if (found != outlines_.end()) return *found->second;
  if (outlines_.size() >= kMaxOutlines) outlines_.clear();
  CGMutablePathRef path = CGPathCreateMutable();
  const auto kept = outlines_.emplace(glyph, path).first;
  if (pathMaker_ == nullptr) {
    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    pathMaker_.reset(cairo_create(surface.get()));
    cairo_set_scaled_font(pathMaker_.get(), pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font_)));
  }
  const cairo_glyph_t atOrigin{glyph, 0, 0};
  cairo_new_path(pathMaker_.get());
  cairo_glyph_path(pathMaker_.get(), &atOrigin, 1);
  cairo_path_t* outline = cairo_copy_path(pathMaker_.get());
  if (outline->status == CAIRO_STATUS_SUCCESS) AppendMirrored(*outline, path);
  cairo_path_destroy(outline);
  DropLastMove(path);
  return *kept->second;
}

cairo_scaled_font_t* FontFace::ScaledFont(const cairo_matrix_t& m, cairo_antialias_t antialias) {
  const auto sameScale = [](const cairo_matrix_t& a, const cairo_matrix_t& b) {
    return a.xx == b.xx && a.yx == b.yx && a.xy == b.xy && a.yy == b.yy;
  };
  if (scaled_ != nullptr && scaledAntialias_ == antialias && sameScale(m, scaledMatrix_)) return scaled_.get();
  cairo_scaled_font_t* reference = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font_));
  if (reference == nullptr) return nullptr;
  cairo_matrix_t fontMatrix;
  cairo_scaled_font_get_font_matrix(reference, &fontMatrix);
  const cairo_matrix_t mirror{1, 0, 0, -1, 0, 0};  // the font's y goes down, that of reference units up
  cairo_matrix_multiply(&fontMatrix, &fontMatrix, &mirror);
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_scaled_font_get_font_options(reference, options);
  cairo_font_options_set_antialias(options, antialias);
  const cairo_matrix_t scale{m.xx, m.yx, m.xy, m.yy, 0, 0};
  scaled_.reset(cairo_scaled_font_create(cairo_scaled_font_get_font_face(reference), &fontMatrix, &scale, options));
  cairo_font_options_destroy(options);
  if (cairo_scaled_font_status(scaled_.get()) != CAIRO_STATUS_SUCCESS) scaled_.reset();
  scaledMatrix_ = scale;
  scaledAntialias_ = antialias;
  return scaled_.get();
}

}  // namespace platform
