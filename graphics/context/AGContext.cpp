#include "graphics/context/AGContext.h"

#include <cmath>

#include "graphics/native/AGGraphicsLow.h"

namespace {

double Round(double value) { return std::floor(value + 0.5); }

}  // namespace

AGContext::AGContext(AGNativePort* port, const AGSize& size)
    : port_(port), size_{Round(size.width), Round(size.height)} {}

AGContext::AGContext(const AGContext& other)
    : port_(other.port_),
      antialias(other.antialias),
      alpha(other.alpha),
      colorFactor(other.colorFactor),
      size_(other.size_),
      transform(other.transform),
      brush(other.brush),
      pen(other.pen),
      patternOrigin(other.patternOrigin),
      clipPath_(other.clipPath_ ? std::make_unique<AGPath>(*other.clipPath_) : nullptr) {}

AGContext& AGContext::operator=(const AGContext& other) {
  if (this == &other) return *this;
  ResetClip();
  port_ = other.port_;
  antialias = other.antialias;
  alpha = other.alpha;
  colorFactor = other.colorFactor;
  size_ = other.size_;
  transform = other.transform;
  brush = other.brush;
  pen = other.pen;
  patternOrigin = other.patternOrigin;
  if (other.clipPath_) clipPath_ = std::make_unique<AGPath>(*other.clipPath_);
  return *this;
}

int AGContext::ResetAll() {
  *this = AGContext(port_, size_);
  return 0;
}

void AGContext::SetClipRect(const AGRect& rect) {
  ResetClip();
  AGRect normalized = rect;
  normalized.Normalize();
  if (normalized.IsEmpty()) return;
  clipPath_ = std::make_unique<AGPath>();
  clipPath_->AddRect(normalized, false);
}

void AGContext::SetClipPath(const AGPath& path) {
  // Copied before the old clip goes: the argument may be the clip itself.
  std::unique_ptr<AGPath> copy = path.IsEmpty() ? nullptr : std::make_unique<AGPath>(path);
  clipPath_ = std::move(copy);
}

void AGContext::ClearPixels() { AGGraphicsLow::AGContextErasePixels(*this, {0, 0, size_.width, size_.height}); }

void AGContext::ClearPixels(AGColor color) { ClearPixelsRect(color, {0, 0, size_.width, size_.height}); }

void AGContext::ClearPixelsRect(AGColor color, const AGRect& rect) {
  AGGraphicsLow::AGContextClearPixels(*this, color, rect);
}

bool AGContext::WouldFillOrStroke() const { return alpha >= kMinVisibleAlpha && (brush.Appears() || pen.Appears()); }

bool AGContext::WouldStroke() const { return alpha >= kMinVisibleAlpha && pen.Appears(); }
