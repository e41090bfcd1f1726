// How an image is resampled when it is drawn.
#pragma once

#include <cstdint>

/// 1 and 2 low, 3 and 4 high, anything else the native default. At 4 a kept drawing of an image has twice the pixels.
using AGImageQuality = std::uint32_t;

/// As the native layer has it.
inline constexpr AGImageQuality kAGImageQualityDefault = 0;
/// Fast rather than smooth.
inline constexpr AGImageQuality kAGImageQualityLow = 1;
/// Smooth rather than fast.
inline constexpr AGImageQuality kAGImageQualityHigh = 3;
/// The same, and kept drawings of it are finer.
inline constexpr AGImageQuality kAGImageQualityHighest = 4;
