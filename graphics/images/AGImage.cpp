#include "graphics/images/AGImage.h"

#include "AKPlatform/AKImageLimit.h"
#include "CoreGraphics/CGImage.h"
#include "ImageIO/CGImageSource.h"
#include "graphics/images/AGSharedImages.h"
#include "graphics/native/AGGraphicsLowImageFile.h"
#include "kit/files/AKFilePath.h"

using AGGraphicsLow::CountedImage;
using AGGraphicsLow::DeleteCountedImage;

namespace {

constexpr unsigned int kOptionsMask = 0xFF00;

unsigned int sImageOptions = 0;

}  // namespace

void AGImage::Assign(const AGImage& other) {
  if (this == &other) return;
  switch (other.kind_) {
    case kKindShared:
      SetupFromResources(other.name_);
      break;
    case kKindOwned:
      Clear();
      Own(CountedImage(CGImageCreateCopy(other.native_)));
      break;
    default:
      Clear();
  }
}

bool AGImage::SetupFromFile(const AKFilePath& path) {
  Clear();
  return Own(AGGraphicsLow::LoadImageFile(path));
}

bool AGImage::SetupFromResources(const AKString& name) {
  if (kind_ == kKindOwned) Clear();
  if (name.IsEmpty()) {
    Clear();
    return false;
  }
  if (kind_ == kKindShared && name_ == name) return true;
  // The new one first: an image shared under both names stays loaded. From here on `name` is not this image's own.
  CGImage* const native = AGSharedImages::Shared().RegisterImage(name);
  Clear();
  if (native == nullptr) return false;
  native_ = native;
  kind_ = kKindShared;
  name_ = name;
  ReadSize();
  return true;
}

bool AGImage::SaveToFile(const AKFilePath& path, AGImageFileFormat format, double quality, bool highResolution) const {
  return AGGraphicsLow::SaveImageFile(native_, path, format, quality, highResolution);
}

void AGImage::Clear() {
  if (kind_ == kKindShared) AGSharedImages::Shared().UnregisterImage(name_);
  if (kind_ == kKindOwned) DeleteCountedImage(native_);
  native_ = nullptr;
  kind_ = kKindEmpty;
  name_.Free();
  ReadSize();
}

bool AGImage::Own(CGImage* native) {
  if (native == nullptr) return false;
  native_ = native;
  kind_ = kKindOwned;
  ReadSize();
  return true;
}

void AGImage::ReadSize() {
  width_ = static_cast<std::uint32_t>(CGImageGetWidth(native_));
  height_ = static_cast<std::uint32_t>(CGImageGetHeight(native_));
}

unsigned int AGImage::GetImageGlobalCount() { return AGGraphicsLow::CountedImages(); }
unsigned long long AGImage::GetImageGlobalBytes() { return AGGraphicsLow::CountedImageBytes(); }
unsigned int AGImage::GetImageGlobalSharedCount() { return AGSharedImages::Shared().Count(); }

unsigned long long AGImage::MaxBytes() { return CGImageSourceGetPixelLimit(); }
void AGImage::SetMaxBytes(unsigned long long bytes) { CGImageSourceSetPixelLimit(bytes); }

void AGImage::SetOption(unsigned int option, bool on) {
  sImageOptions = on ? sImageOptions | option : sImageOptions & ~option;
}

unsigned int AGImage::Options() { return sImageOptions; }
void AGImage::LowInitialize(unsigned int options) { sImageOptions = options & kOptionsMask; }

void AGImage::LowTerminate() {
  AGSharedImages::Shared().DeleteAllImages();
  sImageOptions = 0;
}
