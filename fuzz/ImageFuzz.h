// What the fuzz targets of the image formats share: bytes in, an image read from a file of them, written and read
// again.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/images/AGImage.h"
#include "kit/files/AKFilePath.h"

namespace image_fuzz {

/// A file in memory that has a path.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(::memfd_create("image", MFD_CLOEXEC)) {
    if (descriptor_ < 0) std::abort();
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { ::close(descriptor_); }

  AKFilePath Path() const {
    char path[64];
    std::snprintf(path, sizeof(path), "/proc/self/fd/%d", descriptor_);
    return AKFilePath(path);
  }
  void Write(const std::uint8_t* data, std::size_t size) const {
    if (::write(descriptor_, data, size) != static_cast<ssize_t>(size)) std::abort();
  }

 private:
  int descriptor_;
};

/// Reads the bytes as an image. One that is read has sides, and can be drawn; a small one is opened from what `format`
/// makes of it, in its size.
inline int ReadAndWriteAgain(const std::uint8_t* data, std::size_t size, AGImageFileFormat format) {
  const MemoryFile input;
  input.Write(data, size);
  AGImage image;
  if (image.SetupFromFile(input.Path()) != (image.Width() > 0 && image.Height() > 0)) std::abort();
  constexpr std::uint64_t kSmall = 1 << 16;
  if (image.IsEmpty() || std::uint64_t{image.Width()} * image.Height() > kSmall) return 0;
  if (!AGBitmap(image, 0).IsOpen()) std::abort();
  char path[] = "/tmp/ak_image_fuzz_XXXXXX";
  ::close(::mkstemp(path));
  AGImage again;
  const bool same = image.SaveToFile(AKFilePath(path), format, 0.5, true) && again.SetupFromFile(AKFilePath(path)) &&
                    again.Width() == image.Width() && again.Height() == image.Height();
  ::unlink(path);
  if (!same) std::abort();
  return 0;
}

}  // namespace image_fuzz
