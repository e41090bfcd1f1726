#include "ImageIO/CGImageDestination.h"

#include "CoreServices/CoreServices.h"
#include "ImageIO/CGImageProperties.h"
#include "platform/codecs/ImageCodec.h"
#include "platform/codecs/WholeFile.h"
#include "platform/foundation/CFDictionaryValue.h"
#include "platform/foundation/CFNumberValue.h"
#include "platform/foundation/CFURLValue.h"
#include "platform/graphics/CGImageValue.h"

namespace {

CFStringRef Name(const char* text) {
  return CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingMacRoman);
}

}  // namespace

const CFStringRef kUTTypeJPEG = Name("public.jpeg");
const CFStringRef kUTTypePNG = Name("public.png");
const CFStringRef kUTTypeTIFF = Name("public.tiff");
const CFStringRef kCGImagePropertyDPIWidth = Name("DPIWidth");
const CFStringRef kCGImagePropertyDPIHeight = Name("DPIHeight");
const CFStringRef kCGImagePropertyHasAlpha = Name("HasAlpha");
const CFStringRef kCGImageDestinationLossyCompressionQuality = Name("kCGImageDestinationLossyCompressionQuality");

struct CGImageDestination final : platform::NativeObject {
  CGImageDestination(CFURLRef location, const platform::ImageCodec* fileCodec) : url(location), codec(fileCodec) {}

  const platform::NativeRef<const CFURL> url;
  const platform::ImageCodec* const codec;
  platform::NativeRef<CGImage> image;
  platform::EncodeOptions options;
};

namespace {

platform::EncodeOptions OptionsOf(CFDictionaryRef properties) {
  platform::EncodeOptions options;
  if (properties == nullptr) return options;
  const auto number = [properties](CFStringRef name, double* value) {
    if (const auto* found = properties->Get<CFNumber>(name)) *value = found->real;
  };
  number(kCGImageDestinationLossyCompressionQuality, &options.quality);
  number(kCGImagePropertyDPIWidth, &options.dotsPerInchX);
  number(kCGImagePropertyDPIHeight, &options.dotsPerInchY);
  const auto* hasAlpha = properties->Get<CFBoolean>(kCGImagePropertyHasAlpha);
  options.keepsAlpha = hasAlpha == nullptr || hasAlpha->value;
  return options;
}

}  // namespace

CGImageDestinationRef CGImageDestinationCreateWithURL(CFURLRef url, CFStringRef type, size_t count, CFDictionaryRef) {
  if (url == nullptr || type == nullptr || count != 1) return nullptr;
  const platform::ImageCodec* codec = platform::CodecOfType(type->units);
  return codec == nullptr ? nullptr : new CGImageDestination(url, codec);
}

void CGImageDestinationAddImage(CGImageDestinationRef destination, CGImageRef image, CFDictionaryRef properties) {
  if (destination == nullptr || image == nullptr || destination->image.Get() != nullptr) return;
  destination->image = platform::NativeRef(image);
  destination->options = OptionsOf(properties);
}

bool CGImageDestinationFinalize(CGImageDestinationRef destination) {
  if (destination == nullptr || destination->image.Get() == nullptr) return false;
  platform::ByteSink file;
  const bool encoded = destination->codec->encode(*destination->image.Get(), destination->options, &file);
  destination->image.Reset();
  return encoded && platform::ReplaceWholeFile(destination->url.Get()->systemPath, file.Data(), file.Size());
}
