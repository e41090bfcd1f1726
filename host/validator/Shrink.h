// Makes a failing sequence of operations short.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace host::validator {

/// A part of `operations`, in their order, for which `fails` still holds and from which no single operation can be left
/// out, as far as `tries` calls of `fails` lead.
std::vector<std::uint32_t> Shrink(std::vector<std::uint32_t> operations,
                                  const std::function<bool(const std::vector<std::uint32_t>&)>& fails,
                                  std::size_t tries);

}  // namespace host::validator
