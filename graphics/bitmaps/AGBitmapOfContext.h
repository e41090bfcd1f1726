// The pixels of a bitmap context that somebody else owns.
#pragma once

#include "graphics/bitmaps/AGBitmapBase.h"

/// Describes the context's pixels and frees neither them nor the context, which must outlive the bitmap. A port that is
/// no bitmap context, or has other than 8, 16 or 32 bits a pixel, leaves the bitmap empty. No flag has a meaning here.
class AGBitmapOfContext final : public AGBitmapBase {
 public:
  ///@{
  /// The pixels of a port, or of a context's.
  AGBitmapOfContext(AGNativePort* port, unsigned int flags);
  AGBitmapOfContext(const AGContext& context, unsigned int flags);
  ///@}
  /// Frees nothing.
  ~AGBitmapOfContext() override;

 private:
  bool LowOpenBitmap(AGNativePort* port);
};
