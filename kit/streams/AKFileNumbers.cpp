#include "kit/streams/AKFileNumbers.h"

#include <algorithm>

namespace {

constexpr unsigned long long kMaxZeros = 16384;
const unsigned char kZeros[kMaxZeros] = {};

// How many bytes the position is short of a multiple of 8.
int GetPadding64(const AKFile& file, unsigned int* size) {
  unsigned long long position = 0;
  const int status = file.GetPos(&position);
  *size = static_cast<unsigned int>(-position & 7);
  return status;
}

}  // namespace

int AKFileWriteZeros(AKFile& file, unsigned long long size) {
  while (size > 0) {
    const unsigned long long piece = std::min(size, kMaxZeros);
    if (const int status = file.Write(kZeros, piece); status != 0) return status;
    size -= piece;
  }
  return 0;
}

int AKFileReadPadding64(const AKFile& file) {
  unsigned int size = 0;
  if (const int status = GetPadding64(file, &size); status != 0) return status;
  unsigned char ignored[8];
  return file.Read(ignored, size);
}

int AKFileWritePadding64(AKFile& file) {
  unsigned int size = 0;
  if (const int status = GetPadding64(file, &size); status != 0) return status;
  return AKFileWriteZeros(file, size);
}

int AKFileReadFloat32(const AKFile& file, double* value, unsigned int endian) {
  float stored = 0;
  const int status = AKFileReadFloat32(file, &stored, endian);
  if (status == 0) *value = stored;
  return status;
}

int AKFileWriteFloat32(AKFile& file, double value, unsigned int endian) {
  return AKFileWriteFloat32(file, static_cast<float>(value), endian);
}

int AKFileReadBool(const AKFile& file, bool* value) {
  unsigned char byte = 0;
  const int status = AKFileReadUInt8(file, &byte);
  if (status == 0) *value = byte != 0;
  return status;
}

int AKFileWriteBool(AKFile& file, bool value) { return AKFileWriteUInt8(file, value ? 1 : 0); }
