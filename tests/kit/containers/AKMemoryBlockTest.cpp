#include <gtest/gtest.h>

#include <vector>

#include "kit/containers/AKMemoryBlock.h"
#include "kit/containers/AKSwapNumber.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes Content(const AKMemoryBlock& block) { return {block.Data(), block.Data() + block.Size()}; }

TEST(AKMemoryBlock, Allocate_KeepsOldBytesAndZeroesNewOnes) {
  AKMemoryBlock block("abcd", 4);
  const AKMemoryBlock shared(block);
  block.Allocate(8, false);
  EXPECT_EQ(Content(block), (Bytes{'a', 'b', 'c', 'd', 0, 0, 0, 0}));
  block.Allocate(2, false);
  block.Allocate(4, false);
  EXPECT_EQ(Content(block), (Bytes{'a', 'b', 0, 0}));
  block.Allocate(3, true);
  EXPECT_EQ(Content(block), (Bytes{0, 0, 0}));
  block.Allocate(0, true);
  EXPECT_TRUE(block.IsEmpty());
  EXPECT_EQ(Content(shared), (Bytes{'a', 'b', 'c', 'd'}));
}

TEST(AKMemoryBlock, Copies_AreIndependent) {
  AKMemoryBlock first("abc", 3);
  AKMemoryBlock second;
  second.Assign(first);
  EXPECT_EQ(first.Data(), second.Data());
  second.MutableData()[0] = 'x';
  EXPECT_EQ(Content(first), (Bytes{'a', 'b', 'c'}));
  EXPECT_FALSE(first.IsEqual(second));
  AKMemoryBlock third(first);
  third.Zeroset();
  first.Assign(first.Data() + 1, 2);
  EXPECT_EQ(Content(first), (Bytes{'b', 'c'}));
  EXPECT_EQ(Content(third), (Bytes{0, 0, 0}));
}

TEST(AKMemoryBlock, NullOrNoBytes_GiveTheEmptyBlock) {
  EXPECT_EQ(AKMemoryBlock(nullptr, 10).Data(), nullptr);
  AKMemoryBlock block("abc", 3);
  block.Assign("x", 0);
  EXPECT_EQ(block.Data(), nullptr);
  EXPECT_EQ(block.MutableData(), nullptr);
  block.Zeroset();
  EXPECT_TRUE(block.IsEqual(AKMemoryBlock()));
}

TEST(AKSwapNumber, Orders_MatchBytesInMemory) {
  const unsigned char bytes[] = {0x01, 0x82, 0x03, 0x84, 0x05, 0x86, 0x07, 0x88};
  std::uint16_t n16;
  std::uint32_t n32;
  std::uint64_t n64;
  std::memcpy(&n16, bytes, 2);
  std::memcpy(&n32, bytes, 4);
  std::memcpy(&n64, bytes, 8);
  EXPECT_TRUE(AKSwapNumber16_EndianHostFromBig(n16) == 0x0182 && AKSwapNumber16_EndianBigFromHost(0x0182) == n16);
  EXPECT_TRUE(AKSwapNumber32_EndianHostFromBig(n32) == 0x01820384 &&
              AKSwapNumber32_EndianBigFromHost(0x01820384) == n32);
  EXPECT_EQ(AKSwapNumber64_EndianHostFromBig(n64), 0x0182038405860788U);
  EXPECT_EQ(AKSwapNumber64_EndianBigFromHost(0x0182038405860788U), n64);
  EXPECT_TRUE(AKSwapNumber16_EndianHostFromLittle(n16) == 0x8201 &&
              AKSwapNumber32_EndianLittleFromHost(0x84038201) == n32);
  EXPECT_EQ(AKSwapNumber64_EndianLittleFromHost(0x8807860584038201U), n64);
}

}  // namespace
