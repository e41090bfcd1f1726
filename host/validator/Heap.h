// Whether something that is done again and again leaves memory taken.
#pragma once

#include <array>

#include "host/validator/Trial.h"

namespace host::validator {

/// Whether the program has a sanitizer's allocator, also one that was loaded for a bundle.
bool HasSanitizer();

class HeapWatch {
 public:
  /// Skips the check in a program whose allocator tells no numbers, as a sanitizer's.
  explicit HeapWatch(Trial& trial);

  /// Notes what is taken behind round `round` of `count`, which begins with 0.
  void Note(int round, int count);
  /// The rounds of the last third took no more than those of the second, but for what a store that fills up at odd
  /// times may take. `what` was done.
  void ExpectFlat(const char* what) const;
  /// Bytes that the allocator has given out.
  static std::size_t Taken();

 private:
  Trial& trial_;
  std::array<std::size_t, 4> taken_{};  // at the start, after a third, two thirds and all rounds
  int rounds_ = 0;
};

}  // namespace host::validator
