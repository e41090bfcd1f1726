// Gradients as native shadings.
#include <algorithm>
#include <cmath>
#include <memory>

#include "graphics/geometry/AGClamp.h"
#include "graphics/native/AGGraphicsLow.h"
#include "graphics/native/AGGraphicsLowPaint.h"
#include "kit/geometry/AGConstants.h"

namespace AGGraphicsLow {
namespace {

constexpr double kChannelToUnit = 0.00392156862745098;  // 1/255
constexpr double kRadiusFactor = 0.7070000171661377;    // 0.707 in single precision
constexpr double kHorizontalNudge = 0.001;              // keeps an axis away from the exactly horizontal case
constexpr int kLastEntry = _LowCGShadingRobot::kTableSize - 1;

int EntryAt(double position) {
  const double entry = std::floor(position * kLastEntry + 0.5);
  if (!(entry > 0)) return 0;
  return entry < kLastEntry ? static_cast<int>(entry) : kLastEntry;
}

template <typename T>
void FillBlend(double* table, const T* factors, const T* positions, int count) {
  std::fill_n(table, _LowCGShadingRobot::kTableSize, 0.0);
  if (factors == nullptr || positions == nullptr) return;
  for (int k = 1; k < count; ++k) {
    const int first = EntryAt(positions[k - 1]);
    const int last = EntryAt(positions[k]);
    if (last <= first) continue;
    const double from = AGClamp<double>(factors[k - 1], 0, 1);
    const double to = AGClamp<double>(factors[k], 0, 1);
    const double step = (to - from) / (last - first);
    for (int i = first; i <= last; ++i) table[i] = from + step * (i - first);
  }
}

// The default stops put the halfway colour at `middle`.
void SetDefaultBlend(_LowCGShadingRobot* robot, double middle) {
  const double factors[] = {0, 0.5, 1};
  const double positions[] = {0, middle, 1};
  robot->SetBlend(factors, positions, 3);
}

CGShadingRef NewAxialShading(const AGBrush& brush, const AGRect& rect, CGColorSpaceRef space, CGFunctionRef function) {
  double angle = brush.GradientAngle();
  if (AGNormalizeAngle(angle, kPi) == 0) angle += kHorizontalNudge;
  const AGPoint start = _LowCGShadingPointOnRectAtAngle(rect, kPi - angle);
  const AGPoint end = _LowCGShadingPointOnRectAtAngle(rect, -angle);
  return CGShadingCreateAxial(space, {start.x, start.y}, {end.x, end.y}, function, true, true);
}

CGShadingRef NewRadialShading(const AGBrush& brush, const AGRect& rect, CGColorSpaceRef space, CGFunctionRef function) {
  if (rect.IsEmpty()) return nullptr;
  // The y fraction counts from the top.
  const CGPoint center{rect.x0 + brush.GradientCenterX() * rect.Width(),
                       rect.y0 + (1 - brush.GradientCenterY()) * rect.Height()};
  const double radius = std::min(rect.Width(), rect.Height()) * kRadiusFactor;
  return CGShadingCreateRadial(space, center, 0, center, radius, function, true, true);
}

// A robot with the brush's colours and its blend.
std::unique_ptr<_LowCGShadingRobot> NewShadingRobot(const AGBrush& brush, double colorFactor) {
  auto robot = std::make_unique<_LowCGShadingRobot>();
  robot->color = ApplyColorFactor(brush.Color(), colorFactor);
  robot->color2 = ApplyColorFactor(brush.Color2(), colorFactor);
  const ATBrushCustomGradient<double>* custom = brush.CustomGradient();
  if (custom != nullptr && custom->FactorCount() >= 2) {
    const unsigned int count = std::min(custom->FactorCount(), custom->PositionCount());
    robot->SetBlend(custom->Factors(), custom->Positions(), static_cast<int>(count));
    return robot;
  }
  // A radial blend is measured from the rim, a linear one from the start.
  const double blend = brush.GradientBlend();
  SetDefaultBlend(robot.get(), brush.Style() == kAGBrushStyleRadialGradient ? 1 - blend : blend);
  return robot;
}

void DeleteRobot(void* robot) { delete static_cast<_LowCGShadingRobot*>(robot); }

}  // namespace

void _LowCGShadingRobot::SetBlend(const double* factors, const double* positions, int count) {
  FillBlend(table, factors, positions, count);
}

void _LowCGShadingRobot::SetBlend(const float* factors, const float* positions, int count) {
  FillBlend(table, factors, positions, count);
}

void _LowCGShadingCallback(void* info, const CGFloat* in, CGFloat* out) {
  const auto& robot = *static_cast<const _LowCGShadingRobot*>(info);
  // 512 steps here against 511 where the table is filled.
  const double entry = *in * _LowCGShadingRobot::kTableSize + 0.5;  // positive, so that narrowing rounds down
  const double f = robot.table[entry > 0 ? static_cast<int>(std::min<double>(entry, kLastEntry)) : 0];
  // Red, green, blue, alpha from the lowest byte up, in a loop that the compiler can do in pairs.
  for (int c = 0; c < 4; ++c) {
    const auto from = static_cast<int>(robot.color.rgba >> (8 * c) & 255);
    const auto to = static_cast<int>(robot.color2.rgba >> (8 * c) & 255);
    out[c] = (from + (to - from) * f) * kChannelToUnit;
  }
}

AGPoint _LowCGShadingPointOnRectAtAngle(AGRect rect, double angle) {
  rect.Normalize();
  const double hw = rect.Width() * 0.5;
  const double hh = rect.Height() * 0.5;
  const double u = std::cos(angle) * hh;
  const double v = std::sin(angle) * hw;
  const double length = std::sqrt(u * u + v * v);
  const double cosine = length > 0 ? std::clamp(u / length, -1.0, 1.0) : 1.0;
  const double phi = v >= 0 ? std::acos(cosine) : std::acos(-cosine) + kPi;

  const double quarter = kPi / 2;
  const int quadrant = static_cast<int>(phi / quarter);
  const double psi = AGNormalizeAngle(phi, quarter);
  const bool low = psi < kPi / 4;
  const double near = std::tan(psi);
  const double far = std::tan(quarter - psi);
  AGPoint unit;
  switch (quadrant) {
    case 0:
      unit = low ? AGPoint{1, near} : AGPoint{far, 1};
      break;
    case 1:
      unit = low ? AGPoint{-near, 1} : AGPoint{-1, far};
      break;
    case 2:
      unit = low ? AGPoint{-1, -near} : AGPoint{-far, -1};
      break;
    default:
      unit = low ? AGPoint{near, -1} : AGPoint{1, -far};
      break;
  }
  const AGPoint center = rect.Center();
  return {center.x + hw * unit.x, center.y + hh * unit.y};
}

CGShadingRef NewGradientShading(const AGBrush& brush, const AGRect& rect, double colorFactor) {
  const CGFunctionCallbacks callbacks{0, &_LowCGShadingCallback, &DeleteRobot};
  const CGFloat unit[] = {0, 1, 0, 1, 0, 1, 0, 1};
  auto robot = NewShadingRobot(brush, colorFactor);
  CGFunctionRef function = CGFunctionCreate(robot.get(), 1, unit, 4, unit, &callbacks);
  if (function == nullptr) return nullptr;
  static_cast<void>(robot.release());  // the function has it
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  CGShadingRef shading = brush.Style() == kAGBrushStyleLinearGradient ? NewAxialShading(brush, rect, space, function)
                                                                      : NewRadialShading(brush, rect, space, function);
  CGColorSpaceRelease(space);
  CGFunctionRelease(function);
  return shading;
}

}  // namespace AGGraphicsLow
