// Geometry and colours in files: 64-bit floats in stored order, with the `endian` argument of
// kit/streams/AKFileNumbers.h.
//
// Coordinates are in map units. A failed read leaves the output alone.
#pragma once

#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGInterval.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"
#include "kit/streams/AKFileNumbers.h"

///@{
/// One coordinate.
int AKFileReadAGCoord(const AKFile& file, double* value, unsigned int endian = 0);
int AKFileWriteAGCoord(AKFile& file, double value, unsigned int endian = 0);
///@}
///@{
/// x, y.
int AKFileReadAGPoint(const AKFile& file, AGPoint* value, unsigned int endian = 0);
int AKFileWriteAGPoint(AKFile& file, const AGPoint& value, unsigned int endian = 0);
///@}
///@{
/// Width, height.
int AKFileReadAGSize(const AKFile& file, AGSize* value, unsigned int endian = 0);
int AKFileWriteAGSize(AKFile& file, const AGSize& value, unsigned int endian = 0);
///@}
///@{
/// Start, end.
int AKFileReadAGInterval(const AKFile& file, AGInterval* value, unsigned int endian = 0);
int AKFileWriteAGInterval(AKFile& file, const AGInterval& value, unsigned int endian = 0);
///@}
///@{
/// Left, top, right, bottom.
int AKFileReadAGRect(const AKFile& file, AGRect* value, unsigned int endian = 0);
int AKFileWriteAGRect(AKFile& file, const AGRect& value, unsigned int endian = 0);
///@}
///@{
/// The four bytes red, green, blue, alpha, never swapped.
int AKFileReadAGColor(const AKFile& file, AGColor* value);
int AKFileWriteAGColor(AKFile& file, const AGColor& value);
///@}
