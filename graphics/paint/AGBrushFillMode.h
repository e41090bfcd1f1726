// Which points a closed outline surrounds.
#pragma once

#include <cstdint>

/// One of the two numbers below.
using AGBrushFillMode = std::uint16_t;

/// Inside are the points that a ray to infinity leaves through an odd number of edges.
inline constexpr AGBrushFillMode kAGBrushFillEvenOdd = 0;
/// Inside are the points that the outline winds around, counted with sign.
inline constexpr AGBrushFillMode kAGBrushFillWinding = 1;
