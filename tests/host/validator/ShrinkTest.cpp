#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "host/validator/Dice.h"
#include "host/validator/Shrink.h"

namespace host::validator {
namespace {

// What fails is that certain operations are there: they alone have to be left.
TEST(Shrink, SequenceThatFailsByAFewOperations_TheyAreLeft) {
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    Dice dice(seed);
    std::vector<std::uint32_t> all(1 + dice.Below(60));
    std::iota(all.begin(), all.end(), 0U);
    std::vector<std::uint32_t> wanted;
    for (const std::uint32_t one : all) {
      if (dice.Below(8) == 0) wanted.push_back(one);
    }
    if (wanted.empty()) wanted.push_back(all.back());
    const auto fails = [&](const std::vector<std::uint32_t>& kept) {
      return std::includes(kept.begin(), kept.end(), wanted.begin(), wanted.end());
    };
    EXPECT_EQ(Shrink(all, fails, 10000), wanted) << "seed " << seed;
    EXPECT_TRUE(fails(Shrink(all, fails, 5))) << "seed " << seed;
  }
}

}  // namespace
}  // namespace host::validator
