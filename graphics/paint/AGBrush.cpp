#include "graphics/paint/AGBrush.h"

#include "graphics/geometry/AGClamp.h"
#include "kit/geometry/AGConstants.h"
#include "kit/system/AKSys.h"

const AGBrush kAGNullBrush;

namespace {

AGBrushStyle ClampStyle(AGBrushStyle style) {
  return style < kAGBrushStyleRadialGradient ? style : kAGBrushStyleRadialGradient;
}

float ClampFraction(double value) { return static_cast<float>(AGClamp(value, 0.0, 1.0)); }

unsigned char RandomChannel(unsigned char channel, double minimum, double amount) {
  return static_cast<unsigned char>(std::floor(AKRandom::_lowRandom(channel, minimum, 255, amount) + 0.5));
}

// A randomised colour is never nearly transparent.
AGColor RandomColor(AGColor color, double amount) {
  const unsigned char red = RandomChannel(color.Red(), 0, amount);
  const unsigned char green = RandomChannel(color.Green(), 0, amount);
  const unsigned char blue = RandomChannel(color.Blue(), 0, amount);
  return {red, green, blue, RandomChannel(color.Alpha(), 16, amount)};
}

}  // namespace

AGBrush::AGBrush(AGBrushStyle style, AGColor color, AGColor color2)
    : style_(ClampStyle(style)), color_(color), color2_(color2) {}

AGBrush::AGBrush(const AGBrush& other) { CopyFrom(other); }

AGBrush& AGBrush::operator=(const AGBrush& other) {
  if (this != &other) CopyFrom(other);
  return *this;
}

void AGBrush::CopyFrom(const AGBrush& other) {
  customGradient_.reset();
  style_ = other.style_;
  fillMode_ = other.fillMode_;
  patternIndex_ = other.patternIndex_;
  color_ = other.color_;
  color2_ = other.color2_;
  blend_ = other.blend_;
  angle_ = other.angle_;
  centerX_ = other.centerX_;
  centerY_ = other.centerY_;
  if (other.customGradient_) {
    customGradient_ = std::make_unique<ATBrushCustomGradient<double>>(*other.customGradient_);
  }
}

void AGBrush::SetStyleAndColors(AGBrushStyle style, AGColor color, AGColor color2) {
  ResetCustomGradient();
  style_ = style;
  color_ = color;
  color2_ = color2;
}

void AGBrush::SetStyleNone() {
  ResetCustomGradient();
  style_ = kAGBrushStyleNone;
}

void AGBrush::SetStyleSolid(AGColor color) { SetStyleAndColors(kAGBrushStyleSolid, color, color2_); }

void AGBrush::SetStylePattern(AGColor color, AGColor color2, unsigned int patternIndex) {
  SetStyleAndColors(kAGBrushStylePattern, color, color2);
  SetPatternIndex(patternIndex);
}

void AGBrush::SetStyleLinearGradient(AGColor color, AGColor color2, double blend, double angle) {
  SetStyleAndColors(kAGBrushStyleLinearGradient, color, color2);
  SetGradientBlend(blend);
  SetGradientAngle(angle);
}

// A custom gradient is copied before the old one goes: the argument may be the brush's own.

void AGBrush::SetStyleLinearGradient(AGColor color, AGColor color2, const ATBrushCustomGradient<double>& gradient,
                                     double angle) {
  auto copy = std::make_unique<ATBrushCustomGradient<double>>(gradient);
  SetStyleAndColors(kAGBrushStyleLinearGradient, color, color2);
  SetGradientAngle(angle);
  customGradient_ = std::move(copy);
}

void AGBrush::SetStyleRadialGradient(AGColor color, AGColor color2, double blend, double centerX, double centerY) {
  SetStyleAndColors(kAGBrushStyleRadialGradient, color, color2);
  SetGradientBlend(blend);
  SetGradientCenterX(centerX);
  SetGradientCenterY(centerY);
}

void AGBrush::SetStyleRadialGradient(AGColor color, AGColor color2, const ATBrushCustomGradient<double>& gradient,
                                     double centerX, double centerY) {
  auto copy = std::make_unique<ATBrushCustomGradient<double>>(gradient);
  SetStyleAndColors(kAGBrushStyleRadialGradient, color, color2);
  SetGradientCenterX(centerX);
  SetGradientCenterY(centerY);
  customGradient_ = std::move(copy);
}

void AGBrush::SetStyle(AGBrushStyle style) {
  style_ = ClampStyle(style);
  ResetCustomGradient();
}

void AGBrush::SetFillMode(AGBrushFillMode mode) { fillMode_ = mode != 0 ? kAGBrushFillWinding : kAGBrushFillEvenOdd; }

void AGBrush::SetPatternIndex(unsigned int index) {
  patternIndex_ = static_cast<std::uint16_t>(AGClamp(index, 1U, kPatternCount));
}

void AGBrush::SetGradientBlend(double blend) { blend_ = ClampFraction(blend); }
void AGBrush::SetGradientAngle(double angle) { angle_ = static_cast<float>(AGNormalizeAngle(angle, k2Pi)); }
void AGBrush::SetGradientCenterX(double x) { centerX_ = ClampFraction(x); }
void AGBrush::SetGradientCenterY(double y) { centerY_ = ClampFraction(y); }

bool AGBrush::Appears() const {
  switch (style_) {
    case kAGBrushStyleSolid:
      return color_.Alpha() != 0;
    case kAGBrushStylePattern:
    case kAGBrushStyleLinearGradient:
    case kAGBrushStyleRadialGradient:
      return color_.Alpha() != 0 || color2_.Alpha() != 0;
    default:
      return false;
  }
}

void AGBrush::Randomize(double amount) {
  ResetCustomGradient();
  if (amount >= 0.4) style_ = static_cast<AGBrushStyle>(std::floor(AKRandom::_lowRandom(style_, 0, 4, 1.0) + 0.5));
  switch (style_) {
    case kAGBrushStyleNone:
      return;
    case kAGBrushStylePattern:
      patternIndex_ =
          static_cast<std::uint16_t>(std::floor(AKRandom::_lowRandom(patternIndex_, 1, kPatternCount, amount) + 0.5));
      break;
    case kAGBrushStyleLinearGradient:
      blend_ = static_cast<float>(AKRandom::_lowRandom(blend_, 0, 1, amount));
      angle_ = static_cast<float>(AKRandom::_lowRandom(angle_, 0, k2Pi, amount));
      break;
    case kAGBrushStyleRadialGradient:
      blend_ = static_cast<float>(AKRandom::_lowRandom(blend_, 0, 1, amount));
      centerX_ = static_cast<float>(AKRandom::_lowRandom(centerX_, 0, 1, amount));
      centerY_ = static_cast<float>(AKRandom::_lowRandom(centerY_, 0, 1, amount));
      break;
    default:
      break;
  }
  color_ = RandomColor(color_, amount);
  const bool hasTwoColors = style_ >= kAGBrushStylePattern && style_ <= kAGBrushStyleRadialGradient;
  if (hasTwoColors) color2_ = RandomColor(color2_, amount);
}
