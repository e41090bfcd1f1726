// A picture that does not change, held as a native image.
//
// An image owns its native image: a snapshot of a bitmap, or a copy of another image. Width and height are pixels; row
// 0 is on top.
#pragma once

#include <cstddef>
#include <cstdint>

struct CGImage;
class AGBitmapBase;

/// How an image is resampled when it is drawn: 1 and 2 low, 3 and 4 high, anything else the native default.
using AGImageQuality = std::uint32_t;

class AGImage {
 public:
  static constexpr std::uint32_t kKindEmpty = 0;
  static constexpr std::uint32_t kKindOwned = 1;

  AGImage() = default;
  AGImage(AGImage const& other);
  explicit AGImage(AGBitmapBase const& bitmap);
  AGImage& operator=(AGImage const& other) {
    Assign(other);
    return *this;
  }
  ~AGImage() { Clear(); }

  void Assign(AGImage const& other);
  /// A snapshot of the bitmap; false, and an empty image, when there is none.
  bool SetupFromBitmap(AGBitmapBase const& bitmap);
  void Clear();

  bool IsEmpty() const { return native_ == nullptr; }
  std::uint32_t Kind() const { return kind_; }
  std::uint32_t Width() const { return width_; }
  std::uint32_t Height() const { return height_; }
  /// Null for an empty image; owned by the image.
  CGImage* NativeImage() const { return native_; }

  /// Images alive in the process that own a native image, and their pixels' bytes (width × height × 4 each).
  static unsigned int GetImageGlobalCount();
  static unsigned long long GetImageGlobalBytes();

 private:
  /// Takes over a native image, which may be null.
  bool Take(CGImage* native);

  CGImage* native_ = nullptr;
  std::uint32_t kind_ = kKindEmpty;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
};
