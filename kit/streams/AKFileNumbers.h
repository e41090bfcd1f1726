// Raw bytes, numbers and padding in files.
//
// Numbers take an `endian` argument: 0 the file's default order, 1 big-endian, 2 little-endian. Each function returns
// the status of the file; a failed read leaves the output alone.
#pragma once

#include "kit/streams/AKFile.h"
#include "kit/streams/ATNumbersLow.h"

///@{
/// The file's members by other names: all `size` bytes or an error.
inline int AKFileRead(const AKFile& file, void* buffer, unsigned long long size) { return file.Read(buffer, size); }
inline int AKFileWrite(AKFile& file, const void* data, unsigned long long size) { return file.Write(data, size); }
inline int AKFileSkip(const AKFile& file, unsigned long long size) { return file.Skip(size); }
inline int AKFileSkipBack(const AKFile& file, unsigned long long size) { return file.SkipBack(size); }
///@}

/// Writes `size` bytes of 0.
int AKFileWriteZeros(AKFile& file, unsigned long long size);
/// Skips to the next position that is a multiple of 8; the bytes are read but not looked at.
int AKFileReadPadding64(const AKFile& file);
/// Writes zero bytes up to the next position that is a multiple of 8.
int AKFileWritePadding64(AKFile& file);

///@{
/// One number of type T, which the named functions below use.
template <typename T>
inline int AKFileReadNumber(const AKFile& file, T* value, unsigned int endian) {
  T read;
  if (const int status = ATNumbersLow<T, 0>::ReadFromFile(file, &read, 1, 0, endian); status != 0) return status;
  *value = read;
  return 0;
}
template <typename T>
inline int AKFileWriteNumber(AKFile& file, T value, unsigned int endian) {
  return ATNumbersLow<T, 0>::WriteToFile(file, &value, 1, 0, endian);
}
///@}

///@{
/// A number of as many bits as the name says, signed (SInt), unsigned (UInt) or IEEE floating point.
inline int AKFileReadSInt8(const AKFile& file, signed char* value) { return AKFileReadNumber(file, value, 0); }
inline int AKFileWriteSInt8(AKFile& file, signed char value) { return AKFileWriteNumber(file, value, 0); }
inline int AKFileReadUInt8(const AKFile& file, unsigned char* value) { return AKFileReadNumber(file, value, 0); }
inline int AKFileWriteUInt8(AKFile& file, unsigned char value) { return AKFileWriteNumber(file, value, 0); }

inline int AKFileReadSInt16(const AKFile& file, short* value, unsigned int endian = 0) {
  return AKFileReadNumber(file, value, endian);
}
inline int AKFileWriteSInt16(AKFile& file, short value, unsigned int endian = 0) {
  return AKFileWriteNumber(file, value, endian);
}
inline int AKFileReadUInt16(const AKFile& file, unsigned short* value, unsigned int endian = 0) {
  return AKFileReadNumber(file, value, endian);
}
inline int AKFileWriteUInt16(AKFile& file, unsigned short value, unsigned int endian = 0) {
  return AKFileWriteNumber(file, value, endian);
}
inline int AKFileReadSInt32(const AKFile& file, int* value, unsigned int endian = 0) {
  return AKFileReadNumber(file, value, endian);
}
inline int AKFileWriteSInt32(AKFile& file, int value, unsigned int endian = 0) {
  return AKFileWriteNumber(file, value, endian);
}
inline int AKFileReadUInt32(const AKFile& file, unsigned int* value, unsigned int endian = 0) {
  return AKFileReadNumber(file, value, endian);
}
inline int AKFileWriteUInt32(AKFile& file, unsigned int value, unsigned int endian = 0) {
  return AKFileWriteNumber(file, value, endian);
}
inline int AKFileReadSInt64(const AKFile& file, long long* value, unsigned int endian = 0) {
  return AKFileReadNumber(file, value, endian);
}
inline int AKFileWriteSInt64(AKFile& file, long long value, unsigned int endian = 0) {
  return AKFileWriteNumber(file, value, endian);
}
inline int AKFileReadUInt64(const AKFile& file, unsigned long long* value, unsigned int endian = 0) {
  return AKFileReadNumber(file, value, endian);
}
inline int AKFileWriteUInt64(AKFile& file, unsigned long long value, unsigned int endian = 0) {
  return AKFileWriteNumber(file, value, endian);
}
inline int AKFileReadFloat32(const AKFile& file, float* value, unsigned int endian = 0) {
  return AKFileReadNumber(file, value, endian);
}
inline int AKFileWriteFloat32(AKFile& file, float value, unsigned int endian = 0) {
  return AKFileWriteNumber(file, value, endian);
}
inline int AKFileReadFloat64(const AKFile& file, double* value, unsigned int endian = 0) {
  return AKFileReadNumber(file, value, endian);
}
inline int AKFileWriteFloat64(AKFile& file, double value, unsigned int endian = 0) {
  return AKFileWriteNumber(file, value, endian);
}
///@}

///@{
/// A double stored as a 32-bit float.
int AKFileReadFloat32(const AKFile& file, double* value, unsigned int endian = 0);
int AKFileWriteFloat32(AKFile& file, double value, unsigned int endian = 0);
///@}

///@{
/// One byte: 1 or 0; any other byte but 0 reads as true.
int AKFileReadBool(const AKFile& file, bool* value);
int AKFileWriteBool(AKFile& file, bool value);
///@}
