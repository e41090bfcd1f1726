// The clamping and normalising rules that brushes and pens share.
#pragma once

#include <cmath>

/// lo when lo >= value, else the smaller of hi and the value; lo for what is no number.
template <typename T>
T AGClamp(T value, T lo, T hi) {
  if (!(value > lo)) return lo;
  return hi < value ? hi : value;
}

/// Brings an angle into a period: fmod for angles from 0 on, period − fmod(−angle) below. A negative exact multiple of
/// the period therefore gives the period itself. An infinite angle and one that is no number become 0.
inline double AGNormalizeAngle(double angle, double period) {
  if (!std::isfinite(angle)) return 0;
  return angle >= 0 ? std::fmod(angle, period) : period - std::fmod(-angle, period);
}
