// PNG files, through the kit's images.
#include "fuzz/ImageFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return image_fuzz::ReadAndWriteAgain(data, size, AGImageFileFormat::kPNG);
}
