// Builds a service table: an array of 8-byte words, addressed by byte offset.
//
// A plain entry is a function's address. A member entry is two words in the form of the tables: a function's address
// or, with bit 0 set, its offset in the virtual table plus 1; and the adjustment of the object's address. That is also
// how this platform's compilers lay out member pointers, which is asserted where they are stored.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace host {

class TableBuilder {
 public:
  template <typename Result, typename... Parameters>
  void Plain(std::size_t offset, Result (*function)(Parameters...)) {
    words_[offset / sizeof(std::uintptr_t)] = reinterpret_cast<std::uintptr_t>(function);
  }

  template <typename Method>
  void Member(std::size_t offset, Method method) {
    static_assert(sizeof(Method) == 2 * sizeof(std::uintptr_t));
#if !defined(__x86_64__)
#error "member pointers of this machine have another form: fill in both words of the entry here"
#endif
    std::memcpy(&words_[offset / sizeof(std::uintptr_t)], &method, sizeof(method));
  }

  void* Table() { return words_.data(); }

 private:
  std::array<std::uintptr_t, 128> words_{};  // 1024 bytes: the largest table ends at offset 1008
};

}  // namespace host
