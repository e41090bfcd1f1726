// Notices that memory ran out inside a library that draws.
//
// Not all of them tell: a shape, a glyph or a page may be missing although every call reported success. The C library's
// allocator leaves a trace in errno, which is looked at before anything else may change it: after each object, each
// item of a page, and each file that is completed.
#pragma once

#include <cerrno>

namespace host {

class MemoryWatch {
 public:
  /// Looks from now on; there is one at a time.
  MemoryWatch() {
    sRanOut = false;
    errno = 0;
  }

  /// To be called after each piece of work.
  static void Look() {
    if (errno == ENOMEM) sRanOut = true;
    errno = 0;
  }
  /// True when memory was refused since the watch began.
  static bool RanOut() {
    Look();
    return sRanOut;
  }

 private:
  static inline bool sRanOut = false;
};

}  // namespace host
