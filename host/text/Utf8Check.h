// Well-formedness of UTF-8 (RFC 3629).
#pragma once

#include <cstddef>
#include <string_view>

namespace host {

/// The index of the first byte that is not part of a well-formed character; text.size() when all are.
std::size_t FindInvalidUtf8(std::string_view text);

}  // namespace host
