// Names as a terminal shows them.
#pragma once

#include <string>
#include <string_view>

namespace host {

/// UTF-8 in which nothing moves the cursor, ends the line or changes the terminal: control characters (C0, delete and
/// C1) and bytes that are no UTF-8 become "\xNN" for each of their bytes.
std::string Printable(std::string_view text);

}  // namespace host
