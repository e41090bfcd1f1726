// What happens when memory lacks: an operation ends, nothing or no more of it is drawn, and it is said on standard
// error, once a process. No exception leaves through the C interface. Private to the native layer.
#pragma once

#include <new>
#include <utility>

namespace platform {

/// Once a process, since every operation that follows is likely to lack memory too.
void ReportNoMemory();

/// Does what a function of the C interface is for; false, and said, when memory lacked.
template <typename Work>
bool Guarded(Work&& work) {
  try {
    std::forward<Work>(work)();
    return true;
  } catch (const std::bad_alloc&) {
    ReportNoMemory();
    return false;
  }
}

/// What `make` makes, null when memory lacked.
template <typename Make>
auto MadeOrNull(Make&& make) -> decltype(make()) {
  decltype(make()) made = nullptr;
  Guarded([&] { made = make(); });
  return made;
}

/// Gives a variable another value for the time of a scope, however that ends.
template <typename T>
class Scoped {
 public:
  Scoped(T& variable, T value) : variable_(variable), kept_(std::exchange(variable, std::move(value))) {}
  Scoped(const Scoped&) = delete;
  Scoped& operator=(const Scoped&) = delete;
  ~Scoped() { variable_ = std::move(kept_); }

 private:
  T& variable_;
  T kept_;
};

}  // namespace platform
