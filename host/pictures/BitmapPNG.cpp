#include "host/pictures/BitmapPNG.h"

#include <cstdlib>
#include <memory>

#include "CoreGraphics/CGBitmapContext.h"

namespace host {

bool EncodePNG(const AGBitmap& bitmap, std::vector<unsigned char>* png) {
  png->clear();
  if (!bitmap.IsOpen()) return false;
  std::size_t byteCount = 0;
  std::unique_ptr<void, decltype(&std::free)> bytes(CGBitmapContextCopyPNG(bitmap.NativeContext(), &byteCount),
                                                    &std::free);
  if (!bytes) return false;
  const auto* first = static_cast<const unsigned char*>(bytes.get());
  png->assign(first, first + byteCount);
  return true;
}

}  // namespace host
