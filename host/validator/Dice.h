// Random numbers that are the same on every machine for the same seed.
#pragma once

#include <cstdint>
#include <string_view>

namespace host::validator {

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}
  /// Of a check's case: cases do not depend on each other.
  Dice(std::uint64_t seed, std::string_view check, std::uint64_t step) : state_(seed) {
    for (const char letter : check) state_ = Next() ^ static_cast<unsigned char>(letter);
    state_ = Next() ^ step;
    Next();
  }

  std::uint64_t Next() {  // splitmix64
    std::uint64_t mixed = (state_ += 0x9E3779B97F4A7C15);
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
  }
  /// 0 to count - 1; 0 for a count of 0.
  std::size_t Below(std::size_t count) { return count == 0 ? 0 : static_cast<std::size_t>(Next() % count); }
  /// 0 to 1, without 1.
  double Unit() { return static_cast<double>(Next() >> 11) * 0x1p-53; }
  double Between(double least, double most) { return least + (most - least) * Unit(); }

 private:
  std::uint64_t state_;
};

}  // namespace host::validator
