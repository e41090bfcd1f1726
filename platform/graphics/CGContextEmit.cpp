// Paths of device space as cairo gets them, and clips.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/graphics/CGContextState.h"
#include "platform/paths/PathCut.h"

namespace platform {
namespace {

// As far as the targets go that say nothing of their bounds.
constexpr PixelBox kLargestTarget{-INT16_MAX, -INT16_MAX, INT16_MAX, INT16_MAX};

class Emitter {
 public:
  explicit Emitter(cairo_t* cairo) : cairo_(cairo) {}

  void Emit(CGPath::Verb verb, const CGPoint* p) {
    const std::size_t count = CGPath::PointCount(verb);
    for (std::size_t i = 0; i < count; ++i) Include(p[i]);
    switch (verb) {
      case kCGPathElementMoveToPoint:
        cairo_move_to(cairo_, p[0].x, p[0].y);
        break;
      case kCGPathElementAddLineToPoint:
        cairo_line_to(cairo_, p[0].x, p[0].y);
        break;
      case kCGPathElementAddQuadCurveToPoint:
        EmitQuad(p[0], p[1]);
        break;
      case kCGPathElementAddCurveToPoint:
        cairo_curve_to(cairo_, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
        break;
      default:
        cairo_close_path(cairo_);
        current_ = start_;
        return;
    }
    current_ = p[count - 1];
    if (verb == kCGPathElementMoveToPoint) start_ = current_;
  }

  PixelBox Box() const {
    return {static_cast<int>(std::floor(minX_)), static_cast<int>(std::floor(minY_)),
            static_cast<int>(std::ceil(maxX_)), static_cast<int>(std::ceil(maxY_))};
  }

 private:
  void Include(CGPoint p) {
    minX_ = std::min(minX_, p.x);
    minY_ = std::min(minY_, p.y);
    maxX_ = std::max(maxX_, p.x);
    maxY_ = std::max(maxY_, p.y);
  }

  // The cubic with the same shape has its controls two thirds of the way to the quadratic's.
  void EmitQuad(CGPoint control, CGPoint end) {
    const CGPoint c1{current_.x + (control.x - current_.x) * (2.0 / 3.0),
                     current_.y + (control.y - current_.y) * (2.0 / 3.0)};
    const CGPoint c2{end.x + (control.x - end.x) * (2.0 / 3.0), end.y + (control.y - end.y) * (2.0 / 3.0)};
    cairo_curve_to(cairo_, c1.x, c1.y, c2.x, c2.y, end.x, end.y);
  }

  cairo_t* cairo_;
  CGPoint start_{0, 0};
  CGPoint current_{0, 0};
  double minX_ = INFINITY;
  double minY_ = INFINITY;
  double maxX_ = -INFINITY;
  double maxY_ = -INFINITY;
};

bool IsOfNumbers(const CGPath& path) {
  return std::none_of(path.points.begin(), path.points.end(),
                      [](CGPoint p) { return std::isnan(p.x) || std::isnan(p.y); });
}

// A path within cairo's numbers; false when there is nothing to draw.
bool Emit(cairo_t* cairo, const CGPath& path, PixelBox* box) {
  if (path.verbs.IsEmpty()) return false;
  Emitter emitter(cairo);
  const CGPoint* point = path.points.Data();
  for (const CGPath::Verb verb : path.verbs) {
    emitter.Emit(verb, point);
    point += CGPath::PointCount(verb);
  }
  *box = emitter.Box();
  return true;
}

void AddToClip(cairo_t* cairo, const ClipNode& node, const PixelBox& target) {
  PixelBox box;
  cairo_new_path(cairo);
  cairo_set_antialias(cairo, node.antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
  if (!EmitPath(cairo, *node.path, target, &box)) cairo_new_path(cairo);  // clips everything away
  cairo_clip(cairo);
}

// From the outermost path inwards, as they were set.
void InstallClip(cairo_t* cairo, const Clip& clip, const PixelBox& target) {
  if (clip == nullptr) return;
  std::vector<const ClipNode*> nodes;
  nodes.reserve(clip->depth);
  for (const ClipNode* node = clip.get(); node != nullptr; node = node->parent.get()) nodes.push_back(node);
  for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) AddToClip(cairo, **node, target);
}

}  // namespace

bool EmitPath(cairo_t* cairo, const CGPath& path, const PixelBox& target, PixelBox* box) {
  const CutBox near = CutBoxOf(target, 0);
  if (IsInside(path, near)) return Emit(cairo, path, box);
  CGPath cut;
  if (IsOfNumbers(path)) CutForFill(path, near, &cut);
  return Emit(cairo, cut, box);
}

bool EmitPath(cairo_t* cairo, const CGPath& path, PixelBox* box) { return EmitPath(cairo, path, kLargestTarget, box); }

bool EmitOutline(cairo_t* cairo, const CGPath& path, const PixelBox& target, double reach, PixelBox* box) {
  const CutBox near = CutBoxOf(target, reach);
  if (IsInside(path, near)) return Emit(cairo, path, box);
  CGPath cut;
  if (IsOfNumbers(path)) CutForStroke(path, near, &cut);
  return Emit(cairo, cut, box);
}

void PushClip(CGContext* context, CGMutablePathRef* path, const PathOrigin& origin) {
  GraphicsState& state = context->state;
  Clip next = SameIn(context->appliedClip, state.clip, **path, state.antialias);
  if (next == nullptr) next = context->clips.Make(state.clip, path, origin, state.antialias);
  state.clip = std::move(next);
}

void ApplyClip(CGContext* context) {
  if (context->state.textClip != nullptr) SettleTextClip(context);
  const Clip& wanted = context->state.clip;
  if (SameClip(wanted.get(), context->appliedClip.get())) return;
  context->target->ResetClip(context->cairo.get());
  InstallClip(context->cairo.get(), wanted, context->target->Bounds());
  context->appliedClip = wanted;
}

bool IsInvertible(const CGAffineTransform& m) {
  const double determinant = m.a * m.d - m.b * m.c;
  return std::isfinite(determinant) && std::isfinite(1 / determinant) && std::isfinite(m.tx) && std::isfinite(m.ty);
}

PixelBox WidenBox(const PixelBox& box, double margin, const PixelBox& bounds) {
  // One pixel more than the geometry: antialiasing may round an edge outwards.
  const double width = std::min(std::ceil(margin) + 1, 1e6);
  const int pad = static_cast<int>(width);
  return {std::max(box.x0 - pad, bounds.x0), std::max(box.y0 - pad, bounds.y0), std::min(box.x1 + pad, bounds.x1),
          std::min(box.y1 + pad, bounds.y1)};
}

}  // namespace platform
