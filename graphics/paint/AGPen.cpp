#include "graphics/paint/AGPen.h"

#include "graphics/geometry/AGClamp.h"
#include "kit/geometry/AGConstants.h"
#include "kit/system/AKSys.h"

const AGPen kAGNullPen;

namespace {

constexpr double kMaxSize = 96;

std::unique_ptr<AGPenCustomArrow> CopyOf(const std::unique_ptr<AGPenCustomArrow>& arrow) {
  return arrow ? std::make_unique<AGPenCustomArrow>(*arrow) : nullptr;
}

AGPenSizeMode SizeModeOf(AGPenSizeMode mode) { return mode != 0 ? kAGPenSizeModeRelative : kAGPenSizeModeAbsolute; }

}  // namespace

AGPen::AGPen(AGBrushStyle style, AGColor color, AGColor color2, double size, AGPenSizeMode mode)
    : sizeMode_(SizeModeOf(mode)), brush_(style, color, color2) {
  SetSize(size);
}

AGPen::AGPen(const AGPen& other)
    : sizeMode_(other.sizeMode_),
      lineCap_(other.lineCap_),
      lineJoin_(other.lineJoin_),
      size_(other.size_),
      ratio_(other.ratio_),
      angle_(other.angle_),
      brush_(other.brush_),
      customArrow_(CopyOf(other.customArrow_)) {}

AGPen& AGPen::operator=(const AGPen& other) {
  if (this == &other) return *this;
  sizeMode_ = other.sizeMode_;
  lineCap_ = other.lineCap_;
  lineJoin_ = other.lineJoin_;
  size_ = other.size_;
  ratio_ = other.ratio_;
  angle_ = other.angle_;
  brush_ = other.brush_;
  customArrow_ = CopyOf(other.customArrow_);
  return *this;
}

void AGPen::SetStyleSolid(AGColor color, double size) {
  brush_.SetStyleSolid(color);
  SetSize(size);
}

void AGPen::SetStyleSolid(AGColor color, double size, AGPenSizeMode mode) {
  SetStyleSolid(color, size);
  SetSizeMode(mode);
}

void AGPen::SetSizeMode(AGPenSizeMode mode) { sizeMode_ = SizeModeOf(mode); }
void AGPen::SetLineCap(AGPenLineCap cap) { lineCap_ = AGClamp<AGPenLineCap>(cap, 0, 2); }
void AGPen::SetLineJoin(AGPenLineJoin join) { lineJoin_ = AGClamp<AGPenLineJoin>(join, 0, 2); }
void AGPen::SetSize(double size) { size_ = static_cast<float>(AGClamp(size, 0.0, kMaxSize)); }
void AGPen::SetRatio(double ratio) { ratio_ = static_cast<float>(AGClamp(ratio, 0.0, 1.0)); }
void AGPen::SetAngle(double angle) { angle_ = static_cast<float>(AGNormalizeAngle(angle, kPi)); }

void AGPen::SetCustomArrow(const AGPenCustomArrow& arrow) { customArrow_ = std::make_unique<AGPenCustomArrow>(arrow); }

void AGPen::Randomize(double amount) {
  size_ = static_cast<float>(AKRandom::_lowRandom(size_, 1, 32, amount));
  ratio_ = static_cast<float>(AKRandom::_lowRandom(ratio_, 0, 1, amount));
  angle_ = static_cast<float>(AKRandom::_lowRandom(angle_, 0, kPiF, amount));
  brush_.Randomize(amount);
}
