#include "kit/values/AKValueGeometry.h"

#include <utility>

#include "kit/text/AKTextConversions.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueAdapter_p.h"

namespace {

struct Coordinate {
  const char* key;
  double* value;
};

template <unsigned int count>
bool GetCoordinates(const AKValue& value, const Coordinate (&coordinates)[count], bool convert) {
  const AKDictionary* const dictionary = value.GetasAKDictionary();
  if (dictionary == nullptr || dictionary->IsEmpty()) return false;
  double found[count];
  for (unsigned int i = 0; i < count; ++i) {
    if (!dictionary->GetValue(coordinates[i].key).GetasFloat(&found[i], convert)) return false;
  }
  for (unsigned int i = 0; i < count; ++i) *coordinates[i].value = found[i];
  return true;
}

void SetCoordinate(AKDictionary* dictionary, const char* key, double coordinate) {
  AKValue value;
  value.SetasFloat(coordinate);
  dictionary->SetValue(key, value);
}

void SetWord(AKDictionary* dictionary, const char* key, const char* word) {
  AKValue value;
  value.SetasAKString(word);
  dictionary->SetValue(key, value);
}

// A placement's words of one axis with its bits in the low four: stretch 4, far edge 2, centre 1, else the near edge.
const char* WordOf(AGPlacement bits, const char* farEdge, const char* nearEdge) {
  if ((bits & 4) != 0) return "Stretch";
  if ((bits & 2) != 0) return farEdge;
  return (bits & 1) != 0 ? "Center" : nearEdge;
}

AGPlacement BitsOf(const AKString& word, const char* farEdge) {
  if (word == "Stretch") return 5;
  if (word == farEdge) return 2;
  return word == "Center" ? 1 : 0;
}

}  // namespace

void AKValueSetasAGCoord(AKValue* value, double content) { value->SetasFloat(content); }
AKValue AKValueSetasAGCoord(double content) {
  AKValue value;
  value.SetasFloat(content);
  return value;
}
bool AKValueGetasAGCoord(const AKValue& value, double* content, bool convert) {
  return value.GetasFloat(content, convert);
}
double AKValueGetasAGCoord(const AKValue& value, bool convert) {
  return adapter::Found<double>(AKValueGetasAGCoord, value, convert);
}

void AKValueSetasAGPoint(AKValue* value, const AGPoint& content) {
  AKDictionary dictionary;
  SetCoordinate(&dictionary, "x", content.x);
  SetCoordinate(&dictionary, "y", content.y);
  value->SetasAKDictionary(std::move(dictionary));
}
AKValue AKValueSetasAGPoint(const AGPoint& content) { return adapter::Made<AGPoint>(AKValueSetasAGPoint, content); }
bool AKValueGetasAGPoint(const AKValue& value, AGPoint* content, bool convert) {
  return GetCoordinates(value, {{"x", &content->x}, {"y", &content->y}}, convert);
}
AGPoint AKValueGetasAGPoint(const AKValue& value, bool convert) {
  return adapter::Found<AGPoint>(AKValueGetasAGPoint, value, convert);
}

void AKValueSetasAGSize(AKValue* value, const AGSize& content) {
  AKDictionary dictionary;
  SetCoordinate(&dictionary, "width", content.width);
  SetCoordinate(&dictionary, "height", content.height);
  value->SetasAKDictionary(std::move(dictionary));
}
AKValue AKValueSetasAGSize(const AGSize& content) { return adapter::Made<AGSize>(AKValueSetasAGSize, content); }
bool AKValueGetasAGSize(const AKValue& value, AGSize* content, bool convert) {
  return GetCoordinates(value, {{"width", &content->width}, {"height", &content->height}}, convert);
}
AGSize AKValueGetasAGSize(const AKValue& value, bool convert) {
  return adapter::Found<AGSize>(AKValueGetasAGSize, value, convert);
}

void AKValueSetasAGRect(AKValue* value, const AGRect& content) {
  AKDictionary dictionary;
  SetCoordinate(&dictionary, "x1", content.x0);
  SetCoordinate(&dictionary, "y1", content.y0);
  SetCoordinate(&dictionary, "x2", content.x1);
  SetCoordinate(&dictionary, "y2", content.y1);
  value->SetasAKDictionary(std::move(dictionary));
}
AKValue AKValueSetasAGRect(const AGRect& content) { return adapter::Made<AGRect>(AKValueSetasAGRect, content); }
bool AKValueGetasAGRect(const AKValue& value, AGRect* content, bool convert) {
  return GetCoordinates(value, {{"x1", &content->x0}, {"y1", &content->y0}, {"x2", &content->x1}, {"y2", &content->y1}},
                        convert);
}
AGRect AKValueGetasAGRect(const AKValue& value, bool convert) {
  return adapter::Found<AGRect>(AKValueGetasAGRect, value, convert);
}

void AKValueSetasAGInterval(AKValue* value, const AGInterval& content) {
  AKDictionary dictionary;
  SetCoordinate(&dictionary, "beg", content.start);
  SetCoordinate(&dictionary, "end", content.end);
  value->SetasAKDictionary(std::move(dictionary));
}
AKValue AKValueSetasAGInterval(const AGInterval& content) {
  return adapter::Made<AGInterval>(AKValueSetasAGInterval, content);
}
bool AKValueGetasAGInterval(const AKValue& value, AGInterval* content, bool convert) {
  return GetCoordinates(value, {{"beg", &content->start}, {"end", &content->end}}, convert);
}
AGInterval AKValueGetasAGInterval(const AKValue& value, bool convert) {
  return adapter::Found<AGInterval>(AKValueGetasAGInterval, value, convert);
}

void AKValueSetasAGPlacement(AKValue* value, AGPlacement content) {
  AKDictionary dictionary;
  SetWord(&dictionary, "h", WordOf(content, "Right", "Left"));
  SetWord(&dictionary, "v", WordOf(content >> 4, "Top", "Bottom"));
  value->SetasAKDictionary(std::move(dictionary));
}
AKValue AKValueSetasAGPlacement(AGPlacement content) {
  AKValue value;
  AKValueSetasAGPlacement(&value, content);
  return value;
}
bool AKValueGetasAGPlacement(const AKValue& value, AGPlacement* content, bool) {
  const AKDictionary* const dictionary = value.GetasAKDictionary();
  if (dictionary == nullptr) return false;
  const AKString* const horizontal = dictionary->GetValue("h").GetasAKString();
  const AKString* const vertical = dictionary->GetValue("v").GetasAKString();
  if (horizontal == nullptr || vertical == nullptr) return false;
  *content = BitsOf(*horizontal, "Right") | BitsOf(*vertical, "Top") << 4;
  return true;
}
AGPlacement AKValueGetasAGPlacement(const AKValue& value, bool convert) {
  return adapter::Found<AGPlacement>(AKValueGetasAGPlacement, value, convert);
}

void AKValueSetasAGColor(AKValue* value, const AGColor& content) {
  char text[32];
  value->SetasAKString(strSetasAGColor(text, content, true));
}
AKValue AKValueSetasAGColor(const AGColor& content) { return adapter::Made<AGColor>(AKValueSetasAGColor, content); }
bool AKValueGetasAGColor(const AKValue& value, AGColor* content, bool) {
  const AKString* const text = value.GetasAKString();
  AGColor color;
  if (text == nullptr || !strGetasAGColor(text->CStr(), &color, kAGNullColor)) return false;
  *content = color;
  return true;
}
AGColor AKValueGetasAGColor(const AKValue& value, bool convert) {
  return adapter::Found<AGColor>(AKValueGetasAGColor, value, convert);
}

void AKValueSetasAGPointArray(AKValue* value, const AGPointArray& content) {
  adapter::SetArray<AGPointArray, AGPoint>(value, content, AKValueSetasAGPoint);
}
AKValue AKValueSetasAGPointArray(const AGPointArray& content) {
  return adapter::Made<AGPointArray>(AKValueSetasAGPointArray, content);
}
bool AKValueGetasAGPointArray(const AKValue& value, AGPointArray* content, bool convert) {
  return adapter::GetArray<AGPointArray, AGPoint>(value, content, convert, AKValueGetasAGPoint);
}
AGPointArray AKValueGetasAGPointArray(const AKValue& value, bool convert) {
  return adapter::Found<AGPointArray>(AKValueGetasAGPointArray, value, convert);
}

void AKValueSetasAGColorArray(AKValue* value, const AGColorArray& content) {
  adapter::SetArray<AGColorArray, AGColor>(value, content, AKValueSetasAGColor);
}
AKValue AKValueSetasAGColorArray(const AGColorArray& content) {
  return adapter::Made<AGColorArray>(AKValueSetasAGColorArray, content);
}
bool AKValueGetasAGColorArray(const AKValue& value, AGColorArray* content, bool convert) {
  return adapter::GetArray<AGColorArray, AGColor>(value, content, convert, AKValueGetasAGColor);
}
AGColorArray AKValueGetasAGColorArray(const AKValue& value, bool convert) {
  return adapter::Found<AGColorArray>(AKValueGetasAGColorArray, value, convert);
}
