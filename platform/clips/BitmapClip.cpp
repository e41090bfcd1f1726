#include "platform/clips/BitmapClip.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "platform/clips/ClipChain.h"

namespace platform {
namespace {

static_assert(static_cast<int>(raster::Verb::kMove) == kCGPathElementMoveToPoint);
static_assert(static_cast<int>(raster::Verb::kLine) == kCGPathElementAddLineToPoint);
static_assert(static_cast<int>(raster::Verb::kQuad) == kCGPathElementAddQuadCurveToPoint);
static_assert(static_cast<int>(raster::Verb::kCubic) == kCGPathElementAddCurveToPoint);
static_assert(static_cast<int>(raster::Verb::kClose) == kCGPathElementCloseSubpath);
static_assert(sizeof(raster::Verb) == sizeof(CGPath::Verb) && sizeof(CGPoint) == 2 * sizeof(double));

std::size_t WidthOf(const raster::Box& box) { return static_cast<std::size_t>(box.Width()); }
std::size_t HeightOf(const raster::Box& box) { return static_cast<std::size_t>(box.Height()); }

// Of a mask, up to where its rows' stretches begin.
std::size_t MaskBytes(const raster::Box& box) {
  constexpr std::size_t kAlignment = alignof(raster::Run);
  return (WidthOf(box) * HeightOf(box) + kAlignment - 1) / kAlignment * kAlignment;
}

void Cover(const ClipNode& node, const raster::Box& box, unsigned char* bytes) {
  if (!raster::Cover(ShapeOf(*node.path, node.antialias), box, bytes, WidthOf(box))) throw std::bad_alloc();
}

void Multiply(const raster::MaskView& by, const raster::Box& box, unsigned char* bytes) {
  for (int y = box.y0; y < box.y1; ++y, bytes += WidthOf(box)) {
    raster::MultiplyBytes(bytes, by.At(box.x0, y), WidthOf(box));
  }
}

}  // namespace

raster::PathView ViewOf(const CGPath& path) {
  return {reinterpret_cast<const raster::Verb*>(path.verbs.Data()), path.verbs.Count(),
          reinterpret_cast<const double*>(path.points.Data()), path.points.Count()};
}

raster::Shape ShapeOf(const CGPath& path, bool antialias) {
  raster::Shape shape;
  shape.path = ViewOf(path);
  shape.antialias = antialias;
  return shape;
}

bool IsWholeBox(const CGPath& path, raster::Box* box) {
  if (path.points.Count() != 4 || path.verbs.Count() != 5) return false;
  constexpr double kFarthest = 1 << 30;
  const CGPoint* p = path.points.Data();
  for (int i = 0; i < 4; ++i) {
    if (p[i].x != std::floor(p[i].x) || p[i].y != std::floor(p[i].y) || !(std::fabs(p[i].x) <= kFarthest) ||
        !(std::fabs(p[i].y) <= kFarthest) ||
        path.verbs.Data()[i] != (i == 0 ? kCGPathElementMoveToPoint : kCGPathElementAddLineToPoint)) {
      return false;
    }
  }
  const bool isUpright = (p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y && p[3].x == p[0].x) ||
                         (p[0].x == p[1].x && p[1].y == p[2].y && p[2].x == p[3].x && p[3].y == p[0].y);
  if (!isUpright) return false;
  *box = {static_cast<int>(std::min(p[0].x, p[2].x)), static_cast<int>(std::min(p[0].y, p[2].y)),
          static_cast<int>(std::max(p[0].x, p[2].x)), static_cast<int>(std::max(p[0].y, p[2].y))};
  return true;
}

// The clip around the innermost one is made too: of many clips set one after another it often stays the same.
raster::Clip BitmapClip::Of(const ClipNode* node, const raster::Box& bounds) {
  if (node == nullptr) return {bounds, nullptr};
  BitmapClip& clip = node->onBitmap;
  if (clip.isMade_) return clip.clip_;
  const ClipNode* parent = node->parent.get();
  if (parent != nullptr && !parent->onBitmap.isMade_) parent->onBitmap.SetUp(*parent, bounds);
  clip.SetUp(*node, bounds);
  return clip.clip_;
}

// From a node outwards to the first one that is made, without a call for each: a chain may be of any length.
void BitmapClip::SetUp(const ClipNode& node, const raster::Box& bounds) {
  const ClipNode* base = node.parent.get();
  while (base != nullptr && !base->onBitmap.isMade_) base = base->parent.get();
  clip_ = base != nullptr ? base->onBitmap.clip_ : raster::Clip{bounds, nullptr};
  bool isBox = true;
  for (const ClipNode* n = &node; n != base; n = n->parent.get()) {
    raster::Box box;
    if (IsWholeBox(*n->path, &box)) {
      clip_.box = raster::Intersection(clip_.box, box);
    } else {
      clip_.box = raster::BoxOf(ShapeOf(*n->path, n->antialias), clip_.box);
      isBox = false;
    }
  }
  if (clip_.box.IsEmpty()) clip_ = {};
  if (!isBox && !clip_.box.IsEmpty()) {
    TakeMemory();
    AddMasks(node, base);
    FindFull();
    clip_.mask = &view_;
  }
  isMade_ = true;
}

void BitmapClip::TakeMemory() {
  const std::size_t size = MaskBytes(clip_.box) + HeightOf(clip_.box) * sizeof(raster::Run);
  if (size > capacity_) {
    FreeMemory();
    memory_.reset(new unsigned char[size]);
    capacity_ = size;
  }
}

void BitmapClip::FreeMemory() {
  memory_.reset();
  capacity_ = 0;
  isMade_ = false;
}

void BitmapClip::AddMasks(const ClipNode& node, const ClipNode* base) {
  const raster::Box& box = clip_.box;
  std::unique_ptr<unsigned char[]> other;
  bool isFirst = true;
  raster::Box whole;
  for (const ClipNode* n = &node; n != base; n = n->parent.get()) {
    if (IsWholeBox(*n->path, &whole)) continue;
    if (isFirst) {
      Cover(*n, box, memory_.get());
      isFirst = false;
      continue;
    }
    if (other == nullptr) other.reset(new unsigned char[MaskBytes(box)]);
    Cover(*n, box, other.get());
    Multiply({other.get(), WidthOf(box), box}, box, memory_.get());
  }
  if (base != nullptr && base->onBitmap.clip_.mask != nullptr) Multiply(*clip_.mask, box, memory_.get());
  view_ = {memory_.get(), WidthOf(box), box};
}

// Most of what is drawn under a clip lies well within it.
void BitmapClip::FindFull() {
  auto* full = reinterpret_cast<raster::Run*>(memory_.get() + MaskBytes(clip_.box));
  for (int y = clip_.box.y0; y < clip_.box.y1; ++y) full[y - clip_.box.y0] = raster::LongestFull(view_, y);
  view_.full = full;
}

}  // namespace platform
