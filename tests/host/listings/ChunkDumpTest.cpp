#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "host/listings/ChunkDump.h"
#include "host/text/Printable.h"
#include "host/text/Utf8Check.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

using file_test::Bytes;

const char* const kSound = "'dict' 18000000 01000000 04000000 'Curl' 'strg' 04000000 'abcd'";

TEST(ChunkDump, Damage_OfEachKind_IsLocated) {
  const struct {
    const char* bytes;
    std::uint64_t offset;
    const char* reason;
  } cases[] = {
      {"", 0, "the file is empty"},
      {"'dict' 18", 5, "the file ends within a chunk's header"},
      {"'dict' 18000000 01000000 04000000 'Cu'", 18, "the file ends within a text"},
      {"'dict' 18000000 01000000 04000000 'Curl' 'strg' 04000000 'abc'", 31, "the file ends within a text"},
      {"'dict' 1C000000 01000000 04000000 'Curl' 'strg' 04000000 'abcd'", 4, "the size is 28 and should be 24"},
      {"'dict' 14000000 01000000 04000000 'Curl' 'strg' 04000000 'abcd'", 28, "the chunk ends within a text"},
      {"'dict' 18000000 02000000 04000000 'Curl' 'strg' 04000000 'abcd'", 32, "the file ends within a text's count"},
      {"'dict' 18000000 00000000 04000000 'Curl' 'strg' 04000000 'abcd'", 4, "the size is 24 and should be 4"},
      {"'dict' 18000000 01000000 05000000 'Curl' 'strg' 04000000 'abcd'", 12, "a text's count is no multiple of 4"},
      {"'dict' 18000000 01000000 04000000 'Curl' 'str' 07 04000000 'abcd'", 20, "no chunk begins here"},
      {"'dict' 18000000 01000000 04000000 'Curl' 'strg' 04000000 'ab' C3 41", 30, "a text is no UTF-8"},
      {"'bool' 04000000 02000000", 8, "a bool is neither 0 nor 1"},
      {"'intg' 04000000 00000000", 4, "the size is 4 and should be 8"},
      {"'bina' 0C000000 09000000 0000000000000000", 4, "the size is 12 and should be 16"},
      {"'Unkn' 10000000 00000000", 12, "the file ends within a chunk"},
      {"00000000 01000000 00", 4, "the size is 1 and should be 0"},
  };
  EXPECT_FALSE(host::DumpChunks(Bytes(kSound), nullptr).found);
  for (const auto& expected : cases) {
    const host::ChunkDamage damage = host::DumpChunks(Bytes(expected.bytes), nullptr);
    EXPECT_TRUE(damage.found) << expected.bytes;
    EXPECT_EQ(damage.offset, expected.offset) << expected.bytes;
    EXPECT_EQ(damage.reason, expected.reason) << expected.bytes;
  }
}

TEST(ChunkDump, Dump_OfOtherChunks_ShowsFieldsChunksOrBytes) {
  const std::string objectFields(160, '\0');
  std::string tree;
  const std::string bytes = Bytes("'HDoc' D4000000 01000000 0000000000006940 0000000000005940 FFFFFFFF 01000000") +
                            Bytes("'HObj' B0000000 'Rect' 00000000") + objectFields + Bytes("'HRec' 00000000") +
                            Bytes("'Wrap' 0C000000 'Item' 04000000 01020304");
  EXPECT_FALSE(host::DumpChunks(bytes, [&tree](const std::string& line) { tree += line; }).found)
      << host::DumpChunks(bytes, nullptr).reason;
  std::string zeros = "[00";
  for (int i = 1; i < 16; ++i) zeros += " 00";
  zeros += " ...]";
  EXPECT_EQ(tree,
            "00000000  HDoc, 212 bytes, 1 200 100 [ff ff ff ff] 1\n"
            "00000024    HObj, 176 bytes, \"Rect\" 0 0 0 0 0 " +
                zeros + " " + zeros +
                "\n"
                "000000d4      HRec, 0 bytes\n"
                "000000dc  Wrap, 12 bytes\n"
                "000000e4    Item, 4 bytes, 01 02 03 04\n");
}

// Dictionaries within each other, 500 deep, many times: a line each of up to 1000 blanks.
TEST(ChunkDump, Dump_OfWhatIsNestedDeep_ComesLineByLine) {
  std::string nest = Bytes("'dict' 04000000 00000000");
  for (int i = 0; i < 500; ++i) {
    const auto size = static_cast<std::uint32_t>(nest.size() + 12);
    std::string outer = Bytes("'dict'") + std::string(4, '\0') + Bytes("01000000 04000000 'Curl'") + nest;
    std::memcpy(outer.data() + 4, &size, sizeof(size));
    nest = std::move(outer);
  }
  std::size_t longest = 0;
  std::size_t all = 0;
  const auto take = [&](const std::string& line) { longest = std::max(longest, line.size()), all += line.size(); };
  EXPECT_FALSE(host::DumpChunks(nest, take).found);
  EXPECT_LT(longest, 1200U);
  EXPECT_GT(all, 20 * nest.size());
}

TEST(Printable, ControlsAndBytesThatAreNoText_AreEscaped) {
  const struct {
    const char* bytes;
    const char* shown;
  } cases[] = {{"'aé€\\'", "aé€\\"},
               {"1B '[2J' 0A 7F 09", "\\x1b[2J\\x0a\\x7f\\x09"},
               {"'x' C29B '1m'", "x\\xc2\\x9b1m"},
               {"C2A0 C3BF", "\u00A0\u00FF"},
               {"'a' FF 'b' E282", "a\\xffb\\xe2\\x82"},
               {"00", "\\x00"}};
  for (const auto& expected : cases)
    EXPECT_EQ(host::Printable(Bytes(expected.bytes)), expected.shown) << expected.bytes;
}

TEST(Utf8Check, MalformedText_OfEachKind_IsFound) {
  const struct {
    const char* bytes;
    std::size_t index;
  } cases[] = {{"'aé€' F09F9880", 10}, {"'a' 80", 1},    {"C080", 0},     {"C1BF", 0},     {"E09FBF", 0},
               {"EDA080", 0},          {"ED9FBF", 3},    {"F08FBFBF", 0}, {"F48FBFBF", 4}, {"F4908080", 0},
               {"F5808080", 0},        {"'ab' E282", 2}, {"C3", 0},       {"C3 'x'", 0}};
  for (const auto& expected : cases) {
    EXPECT_EQ(host::FindInvalidUtf8(Bytes(expected.bytes)), expected.index) << expected.bytes;
  }
}

}  // namespace
