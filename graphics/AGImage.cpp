#include "graphics/AGImage.h"

#include "CoreGraphics/CGImage.h"
#include "graphics/AGBitmapBase.h"

namespace {

unsigned int sCount = 0;
unsigned long long sBytes = 0;

unsigned long long BytesOf(CGImageRef image) { return 4ULL * CGImageGetWidth(image) * CGImageGetHeight(image); }

}  // namespace

AGImage::AGImage(AGImage const& other) { Assign(other); }

AGImage::AGImage(AGBitmapBase const& bitmap) { SetupFromBitmap(bitmap); }

void AGImage::Assign(AGImage const& other) {
  if (this == &other) return;
  Clear();
  Take(CGImageCreateCopy(other.native_));
}

bool AGImage::SetupFromBitmap(AGBitmapBase const& bitmap) {
  Clear();
  return Take(CGBitmapContextCreateImage(bitmap.NativeContext()));
}

void AGImage::Clear() {
  if (native_ != nullptr) {
    --sCount;
    sBytes -= BytesOf(native_);
    CGImageRelease(native_);
  }
  native_ = nullptr;
  kind_ = kKindEmpty;
  width_ = 0;
  height_ = 0;
}

bool AGImage::Take(CGImage* native) {
  if (native == nullptr) return false;
  native_ = native;
  kind_ = kKindOwned;
  width_ = static_cast<std::uint32_t>(CGImageGetWidth(native));
  height_ = static_cast<std::uint32_t>(CGImageGetHeight(native));
  ++sCount;
  sBytes += BytesOf(native);
  return true;
}

unsigned int AGImage::GetImageGlobalCount() { return sCount; }
unsigned long long AGImage::GetImageGlobalBytes() { return sBytes; }
