#include "ImageBytes.h"

#include <cstring>

#include "kit/log/AKLog.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileReplacer.h"

namespace ImageBytes {
namespace {

struct Format {
  const char* begin;
  unsigned int length;
  AGImageFileFormat format;
};
constexpr Format kFormats[] = {{"\x89PNG\r\n\x1A\n", 8, AGImageFileFormat::kPNG},
                               {"\xFF\xD8\xFF", 3, AGImageFileFormat::kJPEG},
                               {"II*\0", 4, AGImageFileFormat::kTIFF},
                               {"MM\0*", 4, AGImageFileFormat::kTIFF}};

int WriteTo(AKFile& file, const AKMemoryBlock& bytes) {
  return bytes.IsEmpty() ? 0 : file.Write(bytes.Data(), bytes.Size());
}

}  // namespace

AGImageFileFormat FormatOf(const AKMemoryBlock& bytes) {
  for (const Format& each : kFormats) {
    if (bytes.Size() > each.length && std::memcmp(bytes.Data(), each.begin, each.length) == 0) return each.format;
  }
  return AGImageFileFormat::kNone;
}

const char* FormatName(AGImageFileFormat format) {
  constexpr const char* kNames[] = {"", "JPEG", "PNG", "TIFF"};
  return kNames[static_cast<unsigned int>(format)];
}

int Load(const AKFilePath& path, AKMemoryBlock* bytes) {
  AKFile file(path);
  unsigned long long size = 0;
  int status = file.OpenForRead();
  if (status == 0) status = file.GetFileInfo(&size, nullptr, nullptr);
  if (status == 0 && size > kLargestFile) {
    status = AKLogError(kAKFileStatusTooBig, "\"%s\" has more than %llu MB; export it smaller", path.Text().CStr(),
                        kLargestFile >> 20);
  }
  if (status != 0) return status;
  AKMemoryBlock read;
  read.Allocate(static_cast<unsigned int>(size), false);
  if (size != 0) status = file.Read(read.MutableData(), size);
  if (status == 0) bytes->Swap(&read);
  return status;
}

int Save(const AKFilePath& path, const AKMemoryBlock& bytes) {
  AKFileReplacer replacer(path);
  int status = replacer.Open();
  if (status == 0) status = WriteTo(replacer.File(), bytes);
  return status == 0 ? replacer.Commit() : status;
}

// The kit reads images from files, so the bytes become one for a moment.
AGImage Decoded(const AKMemoryBlock& bytes) {
  AGImage image;
  if (FormatOf(bytes) == AGImageFileFormat::kNone) return image;
  AKFile file(AKFile::kModeTemporary);
  int status = file.CreateForReadWrite();
  if (status == 0) status = WriteTo(file, bytes);
  if (status == 0) status = file.Flush();
  if (status == 0) image.SetupFromFile(file.Path());
  return image;
}

}  // namespace ImageBytes
