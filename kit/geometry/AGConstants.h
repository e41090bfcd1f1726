// Numbers that the whole kit shares: angles, map units, and the distance that stands for "none".
#pragma once

///@{
/// Half a turn and a whole one in radians; factors between degrees and radians.
inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double k2Pi = 6.28318530717958647692;
inline constexpr double kDegToRad = kPi / 180.0;
inline constexpr double kRadToDeg = 180.0 / kPi;
///@}

///@{
/// The same as 32-bit numbers.
inline constexpr float kPiF = static_cast<float>(kPi);
inline constexpr float k2PiF = static_cast<float>(k2Pi);
inline constexpr float kDegToRadF = static_cast<float>(kDegToRad);
inline constexpr float kRadToDegF = static_cast<float>(kRadToDeg);
///@}

///@{
/// One second is 100 map units, one hertz 0.02.
inline constexpr double kAGMapUnitToSecond = 0.01;
inline constexpr double kAGSecondToMapUnit = 100.0;
inline constexpr double kAGMapUnitToHertz = 50.0;
inline constexpr double kAGHertzToMapUnit = 0.02;
///@}
/// A distance in map units that nobody sees.
inline constexpr double kAGMapUnitEpsilon = 0.001;

///@{
/// The distance that a search without a result reports.
inline constexpr double kAKHugeFloat64 = 1e30;
inline constexpr float kAKHugeFloat32 = 1e30F;
///@}
