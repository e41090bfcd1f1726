#include "ImageIO/CGImageSource.h"

#include <vector>

#include "AKPlatform/AKImageLimit.h"
#include "platform/codecs/ImageCodec.h"
#include "platform/codecs/WholeFile.h"
#include "platform/foundation/CFURLValue.h"
#include "platform/foundation/NativeObject.h"
#include "platform/pages/Page.h"

struct CGImageSource final : platform::NativeObject {
  CGImageSource(std::vector<unsigned char> fileBytes, const platform::ImageCodec* fileCodec)
      : bytes(std::move(fileBytes)), codec(fileCodec) {}

  const std::vector<unsigned char> bytes;
  const platform::ImageCodec* const codec;
  platform::RefusedSize refused;  // by the last attempt
};

namespace {

uint64_t sPixelLimit = uint64_t{256} << 20;

}  // namespace

uint64_t CGImageSourceGetPixelLimit(void) { return sPixelLimit; }
void CGImageSourceSetPixelLimit(uint64_t bytes) { sPixelLimit = bytes; }

bool CGImageSourceGetRefusedSize(CGImageSourceRef source, size_t* width, size_t* height) {
  if (source == nullptr || source->refused.width == 0) return false;
  *width = source->refused.width;
  *height = source->refused.height;
  return true;
}

CGImageSourceRef CGImageSourceCreateWithURL(CFURLRef url, CFDictionaryRef) {
  if (url == nullptr) return nullptr;
  std::vector<unsigned char> bytes;
  const auto isImage = [](const unsigned char* head, std::size_t size) {
    return platform::CodecOfContent({head, size}) != nullptr;
  };
  if (!platform::ReadWholeFile(url->systemPath, platform::kSniffedBytes, isImage, &bytes)) return nullptr;
  const platform::ImageCodec* codec = platform::CodecOfContent(bytes);
  return codec == nullptr ? nullptr : new CGImageSource(std::move(bytes), codec);
}

size_t CGImageSourceGetCount(CGImageSourceRef source) { return source == nullptr ? 0 : 1; }

CGImageRef CGImageSourceCreateImageAtIndex(CGImageSourceRef source, size_t index, CFDictionaryRef) {
  if (source == nullptr || index != 0) return nullptr;
  source->refused = {};
  CGImageRef image = source->codec->decode(source->bytes, &source->refused);
  if (image != nullptr) platform::KeepImageFile(*image, source->bytes.data(), source->bytes.size());
  return image;
}
