// The two orders of bytes that bitmaps are made with.
#pragma once

#include "CoreGraphics/CGImage.h"

enum : uint32_t {
  /// In memory: alpha, red, green, blue.
  kCGBitmapAlphaFirst = static_cast<uint32_t>(kCGImageAlphaPremultipliedFirst),
  /// In memory: blue, green, red, alpha.
  kCGBitmapBlueFirst =
      static_cast<uint32_t>(kCGImageAlphaPremultipliedFirst) | static_cast<uint32_t>(kCGBitmapByteOrder32Little),
};
