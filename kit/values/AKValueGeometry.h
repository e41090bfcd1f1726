// Geometry and colours in values.
//
// Coordinates are in map units. The adapters follow kit/values/AKValueHelpers.h: two forms each, outputs left alone on
// failure. Dictionaries of coordinates are read only when every key is there and converts to a number.
#pragma once

#include "kit/geometry/AGArrays.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGInterval.h"
#include "kit/geometry/AGPlacement.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"
#include "kit/values/AKValue.h"

///@{
/// "real".
void AKValueSetasAGCoord(AKValue* value, double content);
AKValue AKValueSetasAGCoord(double content);
bool AKValueGetasAGCoord(const AKValue& value, double* content, bool convert);
double AKValueGetasAGCoord(const AKValue& value, bool convert);
///@}

///@{
/// "dict" with "real" entries "x", "y".
void AKValueSetasAGPoint(AKValue* value, const AGPoint& content);
AKValue AKValueSetasAGPoint(const AGPoint& content);
bool AKValueGetasAGPoint(const AKValue& value, AGPoint* content, bool convert);
AGPoint AKValueGetasAGPoint(const AKValue& value, bool convert);
///@}

///@{
/// "dict" with "real" entries "width", "height".
void AKValueSetasAGSize(AKValue* value, const AGSize& content);
AKValue AKValueSetasAGSize(const AGSize& content);
bool AKValueGetasAGSize(const AKValue& value, AGSize* content, bool convert);
AGSize AKValueGetasAGSize(const AKValue& value, bool convert);
///@}

///@{
/// "dict" with "real" entries "x1", "y1", "x2", "y2".
void AKValueSetasAGRect(AKValue* value, const AGRect& content);
AKValue AKValueSetasAGRect(const AGRect& content);
bool AKValueGetasAGRect(const AKValue& value, AGRect* content, bool convert);
AGRect AKValueGetasAGRect(const AKValue& value, bool convert);
///@}

///@{
/// "dict" with "real" entries "beg", "end".
void AKValueSetasAGInterval(AKValue* value, const AGInterval& content);
AKValue AKValueSetasAGInterval(const AGInterval& content);
bool AKValueGetasAGInterval(const AKValue& value, AGInterval* content, bool convert);
AGInterval AKValueGetasAGInterval(const AKValue& value, bool convert);
///@}

///@{
/// "dict" with the words "h" (Stretch, Right, Center, Left) and "v" (Stretch, Top, Center, Bottom). "Stretch" comes
/// back with the centre bit of its axis; a word that is none of these reads as no bit.
void AKValueSetasAGPlacement(AKValue* value, AGPlacement content);
AKValue AKValueSetasAGPlacement(AGPlacement content);
bool AKValueGetasAGPlacement(const AKValue& value, AGPlacement* content, bool convert);
AGPlacement AKValueGetasAGPlacement(const AKValue& value, bool convert);
///@}

///@{
/// "strg": "(red;green;blue;alpha)".
void AKValueSetasAGColor(AKValue* value, const AGColor& content);
AKValue AKValueSetasAGColor(const AGColor& content);
bool AKValueGetasAGColor(const AKValue& value, AGColor* content, bool convert);
AGColor AKValueGetasAGColor(const AKValue& value, bool convert);
///@}

///@{
/// "arry" of the elements' values; an element that cannot be read fails.
void AKValueSetasAGPointArray(AKValue* value, const AGPointArray& content);
AKValue AKValueSetasAGPointArray(const AGPointArray& content);
bool AKValueGetasAGPointArray(const AKValue& value, AGPointArray* content, bool convert);
AGPointArray AKValueGetasAGPointArray(const AKValue& value, bool convert);
///@}

///@{
/// The same for colours.
void AKValueSetasAGColorArray(AKValue* value, const AGColorArray& content);
AKValue AKValueSetasAGColorArray(const AGColorArray& content);
bool AKValueGetasAGColorArray(const AKValue& value, AGColorArray* content, bool convert);
AGColorArray AKValueGetasAGColorArray(const AKValue& value, bool convert);
///@}
