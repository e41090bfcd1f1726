// The sorted map against the standard library's, and what building it costs.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "kit/containers/ATFastMap.h"

namespace {

TEST(ATFastMapTest, RandomEdits_AgreeWithAPlainMap) {
  const auto seed = static_cast<unsigned int>(testing::UnitTest::GetInstance()->random_seed()) + 1;
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::map<int, int> plain;
  ATFastMap<int, int> map;
  for (int i = 0; i < 20000; ++i) {
    const int key = static_cast<int>(random() % 700);
    if (random() % 3 == 0) {
      EXPECT_EQ(map.Remove(key), plain.erase(key) != 0);
    } else {
      map[key] = plain[key] = i;
    }
    const int wanted = static_cast<int>(random() % 700);
    const int* found = map.Find(wanted);
    ASSERT_EQ(found != nullptr, plain.contains(wanted));
    EXPECT_TRUE(found == nullptr || *found == plain[wanted]);
    ASSERT_EQ(map.Count(), plain.size());
    if (i % 50 != 0) continue;
    const auto equal = [](const auto& a, const auto& b) { return a.first == b.first && a.second == b.second; };
    ASSERT_TRUE(std::equal(map.begin(), map.end(), plain.begin(), plain.end(), equal));
  }
}

// Moves are counted, not time.
struct Counted {
  static inline std::size_t moves = 0;
  unsigned int key = 0;

  Counted(unsigned int number) : key(number) {}
  Counted(const Counted&) = default;
  Counted& operator=(const Counted&) = default;
  Counted(Counted&& other) noexcept : key(other.key) { ++moves; }
  Counted& operator=(Counted&& other) noexcept {
    key = other.key;
    ++moves;
    return *this;
  }
  bool operator<(const Counted& other) const { return key < other.key; }
  bool operator==(const Counted& other) const { return key == other.key; }
};

TEST(ATFastMapTest, ManyKeysInAnyOrder_CostNoSquareOfTheirNumber) {
  constexpr unsigned int kCount = 50000;
  std::mt19937 random(3);
  std::vector<unsigned int> keys(kCount);
  std::generate(keys.begin(), keys.end(), random);
  ATFastMap<Counted, int> map;
  for (const unsigned int key : keys) map[Counted(key)] = 1;
  EXPECT_LT(Counted::moves, std::size_t{1000} * kCount) << "one array alone moves a quarter of all for each: 12500";
  EXPECT_TRUE(std::is_sorted(map.begin(), map.end(), [](auto& a, auto& b) { return a.first < b.first; }));
  std::shuffle(keys.begin(), keys.end(), random);
  Counted::moves = 0;
  for (const unsigned int key : keys) map.Remove(Counted(key));
  EXPECT_TRUE(map.IsEmpty());
  EXPECT_LT(Counted::moves, std::size_t{1000} * kCount);
}

}  // namespace
