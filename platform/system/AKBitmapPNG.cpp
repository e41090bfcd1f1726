#include "AKPlatform/AKBitmapPNG.h"

#include <CoreFoundation/CFData.h>
#include <CoreServices/CoreServices.h>
#include <ImageIO/CGImageDestination.h>
#include <stdlib.h>
#include <string.h>

namespace {

bool Encode(CGImageRef image, CFMutableDataRef data) {
  CGImageDestinationRef destination = CGImageDestinationCreateWithData(data, kUTTypePNG, 1, nullptr);
  if (destination == nullptr) return false;
  CGImageDestinationAddImage(destination, image, nullptr);
  const bool done = CGImageDestinationFinalize(destination);
  CFRelease(destination);
  return done;
}

void* Copy(CFDataRef data, size_t* size) {
  *size = static_cast<size_t>(CFDataGetLength(data));
  void* bytes = malloc(*size);
  if (bytes != nullptr) memcpy(bytes, CFDataGetBytePtr(data), *size);
  return bytes;
}

}  // namespace

void* CGBitmapContextCopyPNG(CGContextRef context, size_t* size) {
  CGImageRef image = CGBitmapContextCreateImage(context);
  if (image == nullptr) return nullptr;
  CFMutableDataRef data = CFDataCreateMutable(kCFAllocatorDefault, 0);
  void* bytes = data != nullptr && Encode(image, data) ? Copy(data, size) : nullptr;
  if (data != nullptr) CFRelease(data);
  CGImageRelease(image);
  return bytes;
}
