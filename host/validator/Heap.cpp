#include "host/validator/Heap.h"

#include <dlfcn.h>
#include <malloc.h>

#include <string>

namespace host::validator {

bool HasSanitizer() {
  return dlsym(RTLD_DEFAULT, "__asan_init") != nullptr || dlsym(RTLD_DEFAULT, "__tsan_init") != nullptr;
}

HeapWatch::HeapWatch(Trial& trial) : trial_(trial) {
  if (HasSanitizer()) trial.Skip("a sanitizer's allocator tells no numbers");
  taken_[0] = Taken();
}

std::size_t HeapWatch::Taken() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

void HeapWatch::Note(int round, int count) {
  rounds_ = count / 3;
  if ((round + 1) % rounds_ == 0 && (round + 1) / rounds_ < 4) {
    taken_[static_cast<std::size_t>((round + 1) / rounds_)] = Taken();
  }
}

// A leak grows in each third by at least a byte a round; blocks are of 16 bytes and more.
void HeapWatch::ExpectFlat(const char* what) const {
  const std::size_t second = taken_[2] > taken_[1] ? taken_[2] - taken_[1] : 0;
  const std::size_t last = taken_[3] > taken_[2] ? taken_[3] - taken_[2] : 0;
  const auto least = static_cast<std::size_t>(rounds_) * 16;
  trial_.Do(std::to_string(rounds_) + " times: " + what);
  trial_.Expect(
      second < least || last < least, "no memory stays taken",
      std::to_string(second) + " bytes stay taken, and as many more times later again " + std::to_string(last));
}

}  // namespace host::validator
