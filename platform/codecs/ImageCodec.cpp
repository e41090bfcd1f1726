#include "platform/codecs/ImageCodec.h"

#include <algorithm>
#include <string_view>

namespace platform {
namespace {

const ImageCodec* const kCodecs[] = {&kPNGCodec, &kJPEGCodec, &kTIFFCodec};

}  // namespace

const ImageCodec* CodecOfContent(ByteSpan head) {
  for (const ImageCodec* codec : kCodecs) {
    if (codec->sniff(head)) return codec;
  }
  return nullptr;
}

const ImageCodec* CodecOfType(std::span<const std::uint16_t> typeIdentifier) {
  for (const ImageCodec* codec : kCodecs) {
    const std::string_view type(codec->type);
    if (std::equal(type.begin(), type.end(), typeIdentifier.begin(), typeIdentifier.end())) return codec;
  }
  return nullptr;
}

}  // namespace platform
