// Counts what a program takes from the allocator, through functions that the linker puts in the place of the C
// library's: ak_count_allocations in fuzz/CMakeLists.txt. To be included by one source of the program.
#pragma once

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstddef>

namespace allocation {

inline std::atomic<std::size_t> sCurrent{0};
inline std::atomic<std::size_t> sMost{0};

inline void* Taken(void* memory) {
  if (memory == nullptr) return memory;
  const std::size_t now = sCurrent += malloc_usable_size(memory);
  if (now > sMost) sMost = now;
  return memory;
}
inline void* Given(void* memory) {
  if (memory != nullptr) sCurrent -= std::min<std::size_t>(sCurrent, malloc_usable_size(memory));
  return memory;
}

/// The most that was held at a time while the object lives, less what was held before.
class Peak {
 public:
  Peak() : before_(sCurrent) { sMost = before_; }
  std::size_t Size() const { return sMost - before_; }

 private:
  std::size_t before_;
};

/// What reading a record may take of memory.
inline std::size_t LimitFor(std::size_t inputSize) { return 16 * inputSize + (1 << 20); }

}  // namespace allocation

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void __real_free(void* memory);
void* __real__Znwm(std::size_t size);
void __real__ZdlPv(void* memory);
void __real__ZdlPvm(void* memory, std::size_t size);

void* __wrap_malloc(std::size_t size) { return allocation::Taken(__real_malloc(size)); }
void* __wrap_calloc(std::size_t count, std::size_t size) { return allocation::Taken(__real_calloc(count, size)); }
void* __wrap_realloc(void* memory, std::size_t size) {
  const std::size_t before = memory == nullptr ? 0 : malloc_usable_size(memory);
  void* const moved = __real_realloc(memory, size);
  if (moved == nullptr) return moved;
  allocation::sCurrent -= std::min<std::size_t>(allocation::sCurrent, before);
  return allocation::Taken(moved);
}
void __wrap_free(void* memory) { __real_free(allocation::Given(memory)); }
void* __wrap__Znwm(std::size_t size) { return allocation::Taken(__real__Znwm(size)); }
void __wrap__ZdlPv(void* memory) { __real__ZdlPv(allocation::Given(memory)); }
void __wrap__ZdlPvm(void* memory, std::size_t size) { __real__ZdlPvm(allocation::Given(memory), size); }

}  // extern "C"
