#include "host/view/ViewTransform.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

// Beyond this a device pixel's number would be no exact coordinate.
constexpr double kFarthest = 1e12;

std::int64_t WholePixel(double value) {
  return static_cast<std::int64_t>(std::floor(std::clamp(value, -kFarthest, kFarthest) + 0.5));
}

}  // namespace

void ViewTransform::SetDeviceScale(double scale) {
  if (!(scale > 0) || scale == deviceScale_) return;
  const double factor = scale / deviceScale_;
  deviceScale_ = scale;
  SetOffset(WholePixel(static_cast<double>(offsetX_) * factor), WholePixel(static_cast<double>(offsetY_) * factor));
}

void ViewTransform::SetOffset(std::int64_t x, std::int64_t y) {
  offsetX_ = x;
  offsetY_ = y;
}

void ViewTransform::Scroll(double dx, double dy) {
  offsetX_ += WholePixel(dx * deviceScale_);
  offsetY_ += WholePixel(dy * deviceScale_);
}

void ViewTransform::SetZoom(double zoom, const AGPoint& fixed) {
  if (std::isnan(zoom)) return;
  const AGPoint map = ToMap(fixed);
  zoom_ = std::clamp(zoom, kMinZoom, kMaxZoom);
  offsetX_ = WholePixel(map.x * PixelsPerUnit() - fixed.x * deviceScale_);
  offsetY_ = WholePixel(-map.y * PixelsPerUnit() - fixed.y * deviceScale_);
}

void ViewTransform::Fit(const AGRect& area, const AGSize& view, double margin) {
  const double width = area.x1 - area.x0;
  const double height = area.y1 - area.y0;
  if (!(width > 0) || !(height > 0) || !(view.width > 0) || !(view.height > 0)) return;
  const double room = std::min((view.width - 2 * margin) / width, (view.height - 2 * margin) / height);
  zoom_ = std::clamp(room, kMinZoom, kMaxZoom);
  const double scale = PixelsPerUnit();
  const AGPoint center = area.Center();
  offsetX_ = WholePixel(center.x * scale - view.width / 2 * deviceScale_);
  offsetY_ = WholePixel(-center.y * scale - view.height / 2 * deviceScale_);
}

bool ViewTransform::Reveal(const AGRect& area, const AGSize& view, double margin) {
  const auto offset = [margin](double low, double high, double room) {
    if (high - low > room - 2 * margin) return low <= 0 && high >= room ? 0 : (low + high - room) / 2;
    return low < margin ? low - margin : std::max(high + margin - room, 0.0);
  };
  const AGPoint upperLeft = ToView({area.x0, area.y1});
  const AGPoint lowerRight = ToView({area.x1, area.y0});
  const double dx = offset(upperLeft.x, lowerRight.x, view.width);
  const double dy = offset(upperLeft.y, lowerRight.y, view.height);
  Scroll(dx, dy);
  return dx != 0 || dy != 0;
}

AGPoint ViewTransform::ToView(const AGPoint& map) const {
  const double scale = PixelsPerUnit();
  return {(map.x * scale - static_cast<double>(offsetX_)) / deviceScale_,
          (-map.y * scale - static_cast<double>(offsetY_)) / deviceScale_};
}

AGPoint ViewTransform::ToMap(const AGPoint& view) const {
  const double scale = PixelsPerUnit();
  return {(view.x * deviceScale_ + static_cast<double>(offsetX_)) / scale,
          -(view.y * deviceScale_ + static_cast<double>(offsetY_)) / scale};
}

AGRect ViewTransform::Shown(const AGSize& view) const {
  const AGPoint upperLeft = ToMap({0, 0});
  const AGPoint lowerRight = ToMap({view.width, view.height});
  return {upperLeft.x, lowerRight.y, lowerRight.x, upperLeft.y};
}

AGPoint EdgeSpeed(const AGPoint& point, const AGSize& view) {
  static constexpr double kEdge = 16;
  static constexpr double kMost = 40;
  const auto along = [](double place, double room) {
    if (place < kEdge) return std::max((place - kEdge) / 2, -kMost);
    return place > room - kEdge ? std::min((place - room + kEdge) / 2, kMost) : 0.0;
  };
  return {along(point.x, view.width), along(point.y, view.height)};
}

}  // namespace host
