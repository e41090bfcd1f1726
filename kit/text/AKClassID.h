// Class identifiers: an ASCII name of at most 7 characters, NUL-padded to 8 bytes and compared as 8 bytes.
#pragma once

#include <cstring>

struct AKClassID {
  char chars[8] = {};  ///< NULs behind the name

  /// The null ID.
  constexpr AKClassID() = default;
  /// The first 7 characters of `name`; null gives the null ID.
  constexpr explicit AKClassID(const char* name) {
    for (int i = 0; name != nullptr && i < 7 && name[i] != '\0'; ++i) chars[i] = name[i];
  }

  /// All 8 bytes.
  bool operator==(const AKClassID& other) const { return std::memcmp(chars, other.chars, sizeof(chars)) == 0; }
  /// Orders by bytes, so that IDs can be keys.
  bool operator<(const AKClassID& other) const { return std::memcmp(chars, other.chars, sizeof(chars)) < 0; }
};

static_assert(sizeof(AKClassID) == 8);

/// No class.
inline constexpr AKClassID kAKNullClassID{};
