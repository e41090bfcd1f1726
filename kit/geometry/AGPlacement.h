// How something is placed in a rectangle: three bits an axis; other bits are ignored.
//
// With none of an axis' bits set that axis is aligned to the left (top) edge. Stretch wins over right (bottom), which
// wins over centre.
#pragma once

#include <cstdint>

/// A sum of the bits below.
using AGPlacement = std::uint32_t;

///@{
/// Across: in the middle, at the right edge, as wide as the rectangle.
inline constexpr AGPlacement kAGPlacementHCenter = 0x01;
inline constexpr AGPlacement kAGPlacementRight = 0x02;
inline constexpr AGPlacement kAGPlacementHStretch = 0x04;
///@}
///@{
/// Upright: in the middle, at the bottom edge, as high as the rectangle.
inline constexpr AGPlacement kAGPlacementVCenter = 0x10;
inline constexpr AGPlacement kAGPlacementBottom = 0x20;
inline constexpr AGPlacement kAGPlacementVStretch = 0x40;
///@}
