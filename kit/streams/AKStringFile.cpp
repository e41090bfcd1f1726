// The record of a string in a file.
//
//   offset  size  field
//        0     4  L: byte count, a multiple of 4, in the file's default order
//        4     L  UTF-8 text, padded with NULs; none when the length is a multiple of 4 by itself
#include <cerrno>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/text/AKCharacterSets_p.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringEncoding.h"

namespace {

int ReadText(const AKFile& file, AKString* text) {
  std::uint32_t count = 0;
  if (const int status = AKFileReadUInt32(file, &count); status != 0) return status;
  if (count == 0) return 0;
  if (!file.HasBytes(count)) return AKFileLogMissingBytes(file);
  text->Resize(count);
  return file.Read(text->MutableData(), count);
}

int RefuseLength(const AKFile& file) {
  errno = 0;
  return AKFileLogFailure(file, kAKFileStatusTooBig);
}

int WriteText(AKFile& file, const AKString& text) {
  const std::uint32_t padding = -text.Length() & 3;
  if (text.Length() > 0xFFFFFFFF - padding) return RefuseLength(file);
  if (const int status = AKFileWriteUInt32(file, text.Length() + padding); status != 0) return status;
  if (const int status = file.Write(text.CStr(), text.Length()); status != 0) return status;
  return AKFileWriteZeros(file, padding);
}

}  // namespace

int AKString::WriteToFile(AKFile& file) const {
  // Pure ASCII is its own UTF-8: most texts are, and they go without even sharing the buffer.
  if (akcharset::AsciiPrefix(CStr(), Length()) == Length()) return WriteText(file, *this);
  const AKString utf8 = AKStringCopyWithEncoding(*this, kAKStringEncodingMacRoman, kAKStringEncodingUTF8);
  return utf8.IsEmpty() ? RefuseLength(file) : WriteText(file, utf8);  // only what is too long converts to nothing
}

int AKString::ReadFromFile(const AKFile& file) {
  Clear();
  if (const int status = ReadText(file, this); status != 0) {
    Free();
    return status;
  }
  RemoveTrailingZeros();
  AKStringConvertWithEncoding(this, kAKStringEncodingUTF8, kAKStringEncodingMacRoman);
  return 0;
}

int AKString::SkipFromFile(const AKFile& file) {
  std::uint32_t count = 0;
  if (const int status = AKFileReadUInt32(file, &count); status != 0) return status;
  return file.Skip(count);
}
