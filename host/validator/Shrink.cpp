#include "host/validator/Shrink.h"

#include <algorithm>

namespace host::validator {

// Leaves out parts, halves first, and ever smaller ones down to single operations; each size is tried until none of
// its parts can go.
std::vector<std::uint32_t> Shrink(std::vector<std::uint32_t> operations,
                                  const std::function<bool(const std::vector<std::uint32_t>&)>& fails,
                                  std::size_t tries) {
  for (std::size_t part = operations.size() / 2; part > 0;) {
    bool isShorter = false;
    for (std::size_t begin = 0; begin < operations.size() && tries > 0;) {
      std::vector<std::uint32_t> rest = operations;
      const std::size_t count = std::min(part, rest.size() - begin);
      const auto first = rest.begin() + static_cast<std::ptrdiff_t>(begin);
      rest.erase(first, first + static_cast<std::ptrdiff_t>(count));
      --tries;
      if (!rest.empty() && fails(rest)) {
        operations = std::move(rest);
        isShorter = true;
      } else {
        begin += part;
      }
    }
    if (!isShorter || tries == 0) part /= 2;
  }
  return operations;
}

}  // namespace host::validator
