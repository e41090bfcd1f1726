// The one place where the writers turn a real number into text.
#pragma once

namespace aktext {

/// The longest text of a double with at most 9 decimals, a separator of several bytes and the terminator included.
inline constexpr unsigned int kNumberSize = 352;

/// Writes printf's "%0<width>.<decimals>f" in the current locale and returns the end, where a NUL stands; with `pad` a
/// blank, "%<width>.<decimals>f". Decimals below 0 stand for "%f", which ignores the width; decimals above 9 count
/// as 9.
char* WriteFixed(char* buffer, double value, int decimals, unsigned int width = 0, char pad = '0');

}  // namespace aktext
