// A drawing that is either a path or an image.
#pragma once

#include <cstdint>
#include <memory>

#include "graphics/images/AGImage.h"
#include "graphics/paths/AGPath.h"

/// Owns what it holds; copies are deep. Nothing is drawn of a picture of any other kind.
class AGPicture {
 public:
  /// Nothing.
  static constexpr std::uint32_t kKindNone = 0;
  /// A path.
  static constexpr std::uint32_t kKindPath = 1;
  /// An image.
  static constexpr std::uint32_t kKindImage = 2;

  /// Of nothing.
  AGPicture() = default;
  ///@{
  /// A copy of the path or the image.
  explicit AGPicture(const AGPath& path) : kind_(kKindPath), path_(path) {}
  explicit AGPicture(const AGImage& image) : kind_(kKindImage), image_(image) {}
  ///@}

  /// kKindNone, kKindPath or kKindImage.
  std::uint32_t Kind() const { return kind_; }
  /// Empty unless the kind is that of a path.
  const AGPath& Path() const { return path_; }
  /// Empty unless the kind is that of an image.
  const AGImage& Image() const { return image_; }

 private:
  std::uint32_t kind_ = kKindNone;
  AGPath path_;
  AGImage image_;
};
