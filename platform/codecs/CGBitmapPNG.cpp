// The pixels of a bitmap context as a PNG file in memory.
#include "AKPlatform/AKBitmapPNG.h"
#include "CoreGraphics/CGBitmapContext.h"
#include "platform/codecs/ImageCodec.h"
#include "platform/graphics/CGImageValue.h"

void* CGBitmapContextCopyPNG(CGContextRef context, size_t* size) {
  if (size == nullptr) return nullptr;
  *size = 0;
  CGImageRef image = CGBitmapContextCreateImage(context);
  if (image == nullptr) return nullptr;
  platform::ByteSink file;
  const bool encoded = platform::kPNGCodec.encode(*image, {}, &file);
  CGImageRelease(image);
  if (!encoded) return nullptr;
  *size = file.Size();
  return file.Release();
}
