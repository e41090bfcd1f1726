#include "AKPlatform/AKImageLimit.h"

#include <CoreFoundation/CFNumber.h>
#include <ImageIO/CGImageProperties.h>

namespace {

uint64_t sPixelLimit = uint64_t{256} << 20;

uint64_t Side(CFDictionaryRef properties, CFStringRef name) {
  const auto* number = static_cast<CFNumberRef>(CFDictionaryGetValue(properties, name));
  int64_t side = 0;
  if (number == nullptr || !CFNumberGetValue(number, kCFNumberSInt64Type, &side) || side < 0) return 0;
  return static_cast<uint64_t>(side);
}

}  // namespace

uint64_t CGImageSourceGetPixelLimit(void) { return sPixelLimit; }
void CGImageSourceSetPixelLimit(uint64_t bytes) { sPixelLimit = bytes; }

bool CGImageSourceGetRefusedSize(CGImageSourceRef source, size_t* width, size_t* height) {
  CFDictionaryRef properties = source == nullptr ? nullptr : CGImageSourceCopyPropertiesAtIndex(source, 0, nullptr);
  if (properties == nullptr) return false;
  const uint64_t columns = Side(properties, kCGImagePropertyPixelWidth);
  const uint64_t rows = Side(properties, kCGImagePropertyPixelHeight);
  CFRelease(properties);
  if (columns == 0 || rows <= sPixelLimit / 4 / columns) return false;
  *width = columns;
  *height = rows;
  return true;
}
