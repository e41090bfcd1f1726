#include "graphics/native/AGGraphicsLowImageFile.h"

#include "AKPlatform/AKImageLimit.h"
#include "CoreFoundation/CFNumber.h"
#include "CoreGraphics/CGImage.h"
#include "CoreServices/CoreServices.h"
#include "ImageIO/CGImageDestination.h"
#include "ImageIO/CGImageProperties.h"
#include "ImageIO/CGImageSource.h"
#include "graphics/native/AGGraphicsLowOwned.h"
#include "kit/files/AKFilePath.h"
#include "kit/log/AKLog.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/system/AKMacOS.h"

namespace AGGraphicsLow {
namespace {

constexpr std::int32_t kHighResolution = 144;  // dots an inch

unsigned int sCount = 0;
unsigned long long sBytes = 0;

unsigned long long BytesOf(CGImage* image) { return 4ULL * CGImageGetWidth(image) * CGImageGetHeight(image); }

CFStringRef TypeOf(AGImageFileFormat format) {
  switch (format) {
    case AGImageFileFormat::kJPEG:
      return kUTTypeJPEG;
    case AGImageFileFormat::kPNG:
      return kUTTypePNG;
    case AGImageFileFormat::kTIFF:
      return kUTTypeTIFF;
    default:
      return nullptr;
  }
}

// Whether the image is refused.
bool LogRefusal(CGImageSourceRef source, const AKFilePath& path) {
  std::size_t width = 0;
  std::size_t height = 0;
  if (!CGImageSourceGetRefusedSize(source, &width, &height)) return false;
  const auto megabytes = [](std::uint64_t bytes) { return static_cast<unsigned long long>(bytes >> 20); };
  const std::uint64_t limit = CGImageSourceGetPixelLimit();
  const std::uint64_t bytes = std::uint64_t{4} * width * height;
  AKLogError(kAKFileStatusTooBig,
             "Can't read \"%s\": %zu x %zu pixels take %llu MB, above the limit of %llu MB (AGImage::SetMaxBytes)",
             path.Text().CStr(), width, height, megabytes(bytes + (1 << 20) - 1), megabytes(limit));
  return true;
}

// The caller releases it.
CFDictionaryRef NewProperties(AGImageFileFormat format, double quality, bool highResolution) {
  const void* keys[4];
  const void* values[4];
  CFIndex count = 0;
  const auto add = [&](CFStringRef key, CFTypeRef value) {
    keys[count] = key;
    values[count++] = value;
  };
  const float fraction = quality > 0 ? static_cast<float>(quality < 1 ? quality : 1) : 0;
  const Owned<CFNumberRef> lossyQuality(CFNumberCreate(kCFAllocatorDefault, kCFNumberFloat32Type, &fraction));
  const Owned<CFNumberRef> resolution(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &kHighResolution));
  add(kCGImagePropertyHasAlpha, kCFBooleanFalse);
  if (format == AGImageFileFormat::kJPEG) add(kCGImageDestinationLossyCompressionQuality, lossyQuality.Get());
  if (highResolution) {
    add(kCGImagePropertyDPIWidth, resolution.Get());
    add(kCGImagePropertyDPIHeight, resolution.Get());
  }
  return CFDictionaryCreate(kCFAllocatorDefault, keys, values, count, &kCFTypeDictionaryKeyCallBacks,
                            &kCFTypeDictionaryValueCallBacks);
}

}  // namespace

CGImage* CountedImage(CGImage* image) {
  if (image == nullptr) return nullptr;
  ++sCount;
  sBytes += BytesOf(image);
  return image;
}

void DeleteCountedImage(CGImage* image) {
  if (image == nullptr) return;
  --sCount;
  sBytes -= BytesOf(image);
  CGImageRelease(image);
}

unsigned int CountedImages() { return sCount; }
unsigned long long CountedImageBytes() { return sBytes; }

CGImage* LoadImageFile(const AKFilePath& path) {
  CFURLRef url = AKMacOS::CFURLConvert(path, false);
  if (url == nullptr) return nullptr;
  CGImageSourceRef source = CGImageSourceCreateWithURL(url, nullptr);
  CFRelease(url);
  if (source == nullptr) return nullptr;
  CGImageRef image = nullptr;
  // Asked before and after: some native layers know a size before they decode, and refuse nothing by themselves.
  if (!LogRefusal(source, path) && CGImageSourceGetCount(source) > 0) {
    image = CGImageSourceCreateImageAtIndex(source, 0, nullptr);
    if (image == nullptr) LogRefusal(source, path);
  }
  CFRelease(source);
  return CountedImage(image);
}

bool SaveImageFile(CGImage* image, const AKFilePath& path, AGImageFileFormat format, double quality,
                   bool highResolution) {
  CFStringRef type = TypeOf(format);
  if (image == nullptr || type == nullptr) return false;
  CFURLRef url = AKMacOS::CFURLConvert(path, false);
  if (url == nullptr) return false;
  CGImageDestinationRef destination = CGImageDestinationCreateWithURL(url, type, 1, nullptr);
  CFRelease(url);
  if (destination == nullptr) return false;
  const Owned<CFDictionaryRef> properties(NewProperties(format, quality, highResolution));
  CGImageDestinationAddImage(destination, image, properties.Get());
  const bool done = CGImageDestinationFinalize(destination);
  CFRelease(destination);
  return done;
}

}  // namespace AGGraphicsLow
