// How an image is resampled when it is drawn.
#pragma once

#include <cstdint>

/// 1 and 2 low, 3 and 4 high, anything else the native default. At 4 a kept drawing of an image has twice the pixels.
using AGImageQuality = std::uint32_t;

inline constexpr AGImageQuality kAGImageQualityDefault = 0;
inline constexpr AGImageQuality kAGImageQualityLow = 1;
inline constexpr AGImageQuality kAGImageQualityHigh = 3;
inline constexpr AGImageQuality kAGImageQualityHighest = 4;
