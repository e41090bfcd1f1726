#include "host/pictures/PrintedPage.h"

#include <algorithm>

#include "AKPlatform/AKVectorContext.h"
#include "graphics/context/AGContext.h"
#include "graphics/native/AGGraphicsLow.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/pictures/MemoryWatch.h"

namespace host {

bool DrawPageOnSheet(const Document& document, _cairo* cairo, const AGSize& sheet) {
  const MemoryWatch watch;
  const AGSize page = document.Page();
  CGContextRef port = CGContextCreateOverCairo(cairo, sheet.width, sheet.height);
  if (port == nullptr) return false;
  // A sheet as large but for what its numbers were rounded by takes the page as it is.
  constexpr double kSame = 1;
  double scale = std::min(sheet.width / page.width, sheet.height / page.height);
  if (std::min(sheet.width - page.width, sheet.height - page.height) > -kSame) scale = 1;
  const double x = (sheet.width - page.width * scale) / 2;
  const double y = (sheet.height - page.height * scale) / 2;
  CGContextConcatCTM(port, {1, 0, 0, 1, x, y});
  {
    const AGContext context(port, {page.width * scale, page.height * scale});
    AGGraphicsLow::AGContextClearPixels(context, document.Background(),
                                        {0, 0, page.width * scale, page.height * scale});
    DrawObjects(document, context, scale);
  }
  CGContextRelease(port);
  return !MemoryWatch::RanOut();
}

}  // namespace host
