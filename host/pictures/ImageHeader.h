// What the head of an image file says: its format, how many pixels there are, and how large they are to be.
#pragma once

#include <optional>
#include <string>

#include "kit/geometry/AGSize.h"

namespace host {

struct ImageHeader {
  const char* format;  ///< "PNG", "JPEG" or "TIFF"
  double width;        ///< pixels
  double height;
  AGSize
      size;  ///< map units, a 72nd of an inch each; a pixel each where the file tells no resolution that can be meant
};

/// None for what is neither PNG, JPEG nor TIFF, or ends within its head.
std::optional<ImageHeader> ReadImageHeader(const std::string& bytes);

}  // namespace host
