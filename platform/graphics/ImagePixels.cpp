#include <cstdlib>

#include "platform/graphics/CGImageValue.h"

namespace platform {

ImagePixels::ImagePixels(std::size_t width, std::size_t height) {
  constexpr std::size_t kMaxSide = std::size_t{1} << 29;
  if (width == 0 || height == 0 || width > kMaxSide || height > kMaxSide) return;
  words_.reset(static_cast<std::uint32_t*>(std::calloc(width * height, sizeof(std::uint32_t))));
  if (words_ == nullptr) return;
  width_ = width;
  height_ = height;
}

}  // namespace platform
