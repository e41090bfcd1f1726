#include "kit/streams/AKFileRecords.h"

#include <algorithm>

#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileNumbers.h"

namespace {

constexpr char kSeparatorOnFile = 1;

AKFilePath WithReplacedBytes(const AKFilePath& path, char from, char to) {
  AKString text = path.Text();
  if (!text.IsEmpty()) {
    char* const bytes = text.MutableData();
    std::replace(bytes, bytes + text.Length(), from, to);
  }
  return AKFilePath(text);
}

int ReadUnits(const AKFile& file, AKUniChars* units, unsigned int endian) {
  std::uint32_t count = 0;
  if (const int status = AKFileReadUInt32(file, &count, endian); status != 0) return status;
  if (!file.HasBytes(2ULL * count)) return AKFileLogMissingBytes(file);
  units->Resize(count);
  return ATNumbersLow<unsigned short, 0>::ReadFromFile(file, units->Data(), count, 0, endian);
}

}  // namespace

int AKFileReadAKString(const AKFile& file, AKString* text) { return text->ReadFromFile(file); }
int AKFileWriteAKString(AKFile& file, const AKString& text) { return text.WriteToFile(file); }

int AKFileReadAKFilePath(const AKFile& file, AKFilePath* path) {
  AKString text;
  const int status = text.ReadFromFile(file);
  *path = WithReplacedBytes(AKFilePath(text), kSeparatorOnFile, '/');
  return status;
}

int AKFileWriteAKFilePath(AKFile& file, const AKFilePath& path) {
  return WithReplacedBytes(path, '/', kSeparatorOnFile).Text().WriteToFile(file);
}

int AKFileReadAKUniChars(const AKFile& file, AKUniChars* units, unsigned int endian) {
  units->Clear();
  const int status = ReadUnits(file, units, endian);
  if (status != 0) units->Free();
  return status;
}

int AKFileWriteAKUniChars(AKFile& file, const AKUniChars& units, unsigned int endian) {
  if (const int status = AKFileWriteUInt32(file, units.Count(), endian); status != 0) return status;
  return ATNumbersLow<unsigned short, 0>::WriteToFile(file, units.Data(), units.Count(), 0, endian);
}

int AKFileReadAKClassID(const AKFile& file, AKClassID* id) {
  AKClassID read;
  const int status = file.Read(read.chars, sizeof(read.chars));
  if (status == 0) *id = read;
  return status;
}

int AKFileWriteAKClassID(AKFile& file, const AKClassID& id) { return file.Write(id.chars, sizeof(id.chars)); }
