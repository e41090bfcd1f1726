// Where a text lies beside its point.
#pragma once

#include <cstdint>

/// One of the three numbers below.
using AGTextAlignment = std::uint32_t;
inline constexpr AGTextAlignment kAGTextAlignmentLeft = 1;    ///< it begins at the point
inline constexpr AGTextAlignment kAGTextAlignmentCenter = 2;  ///< its middle is at the point
inline constexpr AGTextAlignment kAGTextAlignmentRight = 3;   ///< it ends at the point
