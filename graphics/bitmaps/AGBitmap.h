// A bitmap that owns its pixels and its native context.
#pragma once

#include "graphics/bitmaps/AGBitmapBase.h"
#include "kit/geometry/AGSize.h"

class AGBitmap final : public AGBitmapBase {
 public:
  /// Pixels are blue, green, red, alpha in memory instead of alpha, red, green, blue. Reading and writing single pixels
  /// keeps the alpha-first packing all the same.
  static constexpr unsigned int kFlagLittleEndian = 1;
  /// The memory starts as zeros.
  static constexpr unsigned int kFlagZeroFill = 2;

  /// Without pixels.
  AGBitmap() = default;
  ///@{
  /// Sides are rounded, negative ones count as 0. A side of 0, a byte count beyond 32 bits, or a failed allocation
  /// leaves the bitmap empty.
  AGBitmap(const AGSize& size, unsigned int flags);
  AGBitmap(unsigned int width, unsigned int height, unsigned int flags);
  ///@}
  /// The image's pixels; upside down with kFlagLittleEndian.
  AGBitmap(const AGImage& image, unsigned int flags);
  /// Frees pixels and context: no context on them may be left.
  ~AGBitmap() override;

  /// A context on the whole bitmap with its state at the defaults; the bitmap must outlive it.
  AGContext GetContextOfBitmap() const;

 private:
  bool LowCreateBitmapWithImage(const AGImage& image, bool flipped);
  bool LowCreateBitmapWithSize(unsigned int width, unsigned int height, bool zeroFill, bool littleEndian);
};
