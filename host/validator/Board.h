// What a check's process leaves for the program that started it: memory that both share, which outlives a crash.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace host::validator {

struct Board {
  enum State : std::uint32_t { kRunning, kPassed, kFailed, kSkipped };

  std::uint32_t state = kRunning;
  std::uint32_t hasStep = 0;
  std::uint64_t step = 0;        ///< the case of the check that ran last
  std::uint32_t operations = 0;  ///< how many the case's sequence has; 0 for a check without sequences
  std::uint32_t operation = 0;   ///< the one that ran last
  char doing[2048] = {};
  char expected[2048] = {};
  char seen[2048] = {};
  char history[32768] = {};  ///< the operations of a sequence that ran, a line each
};

/// Puts as much of a text into a field as it holds, at `at`, with a NUL behind it. Returns where it ends.
template <std::size_t size>
std::size_t PutText(char (&field)[size], std::string_view text, std::size_t at = 0) {
  if (at + 1 >= size) return at;
  const std::size_t count = text.size() < size - 1 - at ? text.size() : size - 1 - at;
  std::memcpy(field + at, text.data(), count);
  field[at + count] = '\0';
  return at + count;
}

}  // namespace host::validator
