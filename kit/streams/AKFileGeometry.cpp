#include "kit/streams/AKFileGeometry.h"

#include <cstring>

namespace {

// A structure of doubles is one element whose words are swapped one by one.
template <typename Geometry>
int ReadGeometry(const AKFile& file, Geometry* value, unsigned int endian) {
  constexpr unsigned int kWords = sizeof(Geometry) / sizeof(double);
  double words[kWords];
  const int status = ATNumbersLow<double, 0>::ReadFromFile(file, words, 1, sizeof(Geometry), endian);
  if (status == 0) std::memcpy(value, words, sizeof(Geometry));
  return status;
}

template <typename Geometry>
int WriteGeometry(AKFile& file, const Geometry& value, unsigned int endian) {
  double words[sizeof(Geometry) / sizeof(double)];
  std::memcpy(words, &value, sizeof(Geometry));
  return ATNumbersLow<double, 0>::WriteToFile(file, words, 1, sizeof(Geometry), endian);
}

static_assert(sizeof(AGPoint) == 16 && sizeof(AGSize) == 16 && sizeof(AGInterval) == 16 && sizeof(AGRect) == 32);
static_assert(sizeof(AGColor) == 4);

}  // namespace

int AKFileReadAGCoord(const AKFile& file, double* value, unsigned int endian) {
  return AKFileReadFloat64(file, value, endian);
}
int AKFileWriteAGCoord(AKFile& file, double value, unsigned int endian) {
  return AKFileWriteFloat64(file, value, endian);
}
int AKFileReadAGPoint(const AKFile& file, AGPoint* value, unsigned int endian) {
  return ReadGeometry(file, value, endian);
}
int AKFileWriteAGPoint(AKFile& file, const AGPoint& value, unsigned int endian) {
  return WriteGeometry(file, value, endian);
}
int AKFileReadAGSize(const AKFile& file, AGSize* value, unsigned int endian) {
  return ReadGeometry(file, value, endian);
}
int AKFileWriteAGSize(AKFile& file, const AGSize& value, unsigned int endian) {
  return WriteGeometry(file, value, endian);
}
int AKFileReadAGInterval(const AKFile& file, AGInterval* value, unsigned int endian) {
  return ReadGeometry(file, value, endian);
}
int AKFileWriteAGInterval(AKFile& file, const AGInterval& value, unsigned int endian) {
  return WriteGeometry(file, value, endian);
}
int AKFileReadAGRect(const AKFile& file, AGRect* value, unsigned int endian) {
  return ReadGeometry(file, value, endian);
}
int AKFileWriteAGRect(AKFile& file, const AGRect& value, unsigned int endian) {
  return WriteGeometry(file, value, endian);
}

int AKFileReadAGColor(const AKFile& file, AGColor* value) {
  AGColor read;
  const int status = file.Read(&read, sizeof(read));
  if (status == 0) *value = read;
  return status;
}
int AKFileWriteAGColor(AKFile& file, const AGColor& value) { return file.Write(&value, sizeof(value)); }
