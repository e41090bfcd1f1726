#include <gtest/gtest.h>

#include <functional>

#include "kit/streams/AKFileChunk.h"
#include "kit/streams/AKFileContent.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/values/AKValueHelpers.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

using file_test::Bytes;
using file_test::LogLines;
using file_test::PositionOf;
using file_test::StreamContent;

TEST(AKFileNumbers, Writers_InBothOrders_GiveTheseBytes) {
  const unsigned short words[] = {0x0102, 0x0304, 0x0506};
  const unsigned int dwords[] = {0x01020304, 0x05060708, 0x090A0B0C, 0x0D0E0F10, 0x11121314};  // beyond the stack's 16
  const struct {
    const char* little;
    const char* big;
    std::function<int(AKFile&, unsigned int)> write;
  } cases[] = {
      {"FE", "FE", [](AKFile& f, unsigned int) { return AKFileWriteSInt8(f, -2); }},
      {"01", "01", [](AKFile& f, unsigned int) { return AKFileWriteBool(f, true); }},
      {"FEFF", "FFFE", [](AKFile& f, unsigned int e) { return AKFileWriteSInt16(f, -2, e); }},
      {"04030201", "01020304", [](AKFile& f, unsigned int e) { return AKFileWriteUInt32(f, 0x01020304, e); }},
      {"FEFFFFFFFFFFFFFF", "FFFFFFFFFFFFFFFE", [](AKFile& f, unsigned int e) { return AKFileWriteSInt64(f, -2, e); }},
      {"0000C03F", "3FC00000", [](AKFile& f, unsigned int e) { return AKFileWriteFloat32(f, 1.5, e); }},
      {"000000000000F83F", "3FF8000000000000", [](AKFile& f, unsigned int e) { return AKFileWriteFloat64(f, 1.5, e); }},
      {"000000000000F83F 00000000000000C0", "3FF8000000000000 C000000000000000",
       [](AKFile& f, unsigned int e) {
         return AKFileWriteAGPoint(f, {1.5, -2}, e);
       }},
      {"01020304", "01020304", [](AKFile& f, unsigned int) { return AKFileWriteAGColor(f, AGColor(1, 2, 3, 4)); }},
      {"'ABCD'", "'ABCD'", [](AKFile& f, unsigned int) { return AKFileWriteSignat32(f, 0x41424344); }},
      {"02010403", "01020304",
       [&](AKFile& f, unsigned int e) { return ATNumbersLow<unsigned short, 0>::WriteToFile(f, words, 1, 4, e); }},
      {"04030201 08070605 0C0B0A09 100F0E0D 14131211", "01020304 05060708 090A0B0C 0D0E0F10 11121314",
       [&](AKFile& f, unsigned int e) { return ATNumbersLow<unsigned int, 32>::WriteToFile(f, dwords, 5, 0, e); }},
  };
  for (const auto& expected : cases) {
    for (const unsigned int mode : {0x10U, 0x20U, 0x12U, 0x21U}) {  // the file's order, the call's
      AKFile file(AKFile::kModeMemory);
      file.CreateForReadWrite();
      file.SetEndianness(mode >> 4);
      file.SetEndianness(3);
      EXPECT_EQ(expected.write(file, mode & 15), 0);
      const bool big = mode == 0x10 || mode == 0x21;
      EXPECT_EQ(StreamContent(file), Bytes(big ? expected.big : expected.little)) << expected.big << " " << mode;
    }
  }
}

TEST(AKFileNumbers, Arrays_OfManyPiecesSwapped_ComeBack) {
  std::vector<double> numbers(100001);
  for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = 1.0 / (1.0 + static_cast<double>(i));
  AKFile file(AKFile::kModeTemporary);
  ASSERT_EQ(file.CreateForReadWrite(), 0);
  ASSERT_EQ((ATNumbersLow<double, 0>::WriteToFile(file, numbers.data(), 100001, 0, 1)), 0);
  std::vector<double> read(100001);
  ASSERT_EQ(file.SetPos(0), 0);
  ASSERT_EQ((ATNumbersLow<double, 0>::SkipFromFile(file, 2, 0)), 0);
  ASSERT_EQ((ATNumbersLow<double, 0>::ReadFromFile(file, read.data() + 2, 99999, 0, 1)), 0);
  EXPECT_TRUE(std::equal(read.begin() + 2, read.end(), numbers.begin() + 2));
  EXPECT_EQ(file.SetPos(8), 0);
  volatile unsigned int most = 0xFFFFFFFF;  // the compiler is not to know, or it warns of the copy that never happens
  EXPECT_EQ((ATNumbersLow<double, 0>::ReadFromFile(file, read.data(), most, most, 0)), -890);
  unsigned char byte = 7;
  bool flag = false;
  AKFile one(&byte, 1);
  EXPECT_EQ(one.OpenForRead() | AKFileReadBool(one, &flag), 0);
  EXPECT_TRUE(flag);
}

TEST(AKFileNumbers, Padding64_FromEveryPosition_EndsOnAMultipleOfEight) {
  for (unsigned int start = 0; start < 17; ++start) {
    AKFile file(AKFile::kModeMemory);
    file.CreateForReadWrite();
    AKFileWriteZeros(file, start);
    EXPECT_EQ(AKFileWritePadding64(file), 0);
    EXPECT_EQ(PositionOf(file), (start + 7) / 8 * 8);
    file.SetPos(start);
    EXPECT_EQ(AKFileReadPadding64(file), 0);
    EXPECT_EQ(PositionOf(file), (start + 7) / 8 * 8);
  }
}

TEST(AKFileChunk, EmptyAndNestedBodies_AreBackPatched) {
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  file.SetEndianness(AKFile::kEndianBig);
  AKFileChunk outer{.signature = 0x4F555445};
  AKFileChunk inner{.signature = 0x494E4E45};
  EXPECT_EQ(AKFileWriteChunkHeader(file, outer) | AKFileWriteChunkHeader(file, inner), 0);
  EXPECT_EQ(AKFileWriteChunkComplete(file, inner) | AKFileWriteChunkComplete(file, outer), 0);
  EXPECT_EQ(StreamContent(file), Bytes("'OUTE' 00000008 'INNE' 00000000"));
  EXPECT_EQ(PositionOf(file), 16U);
  EXPECT_EQ(inner.pos, 8U);
  file.SetPos(0);
  AKFileChunk read;
  EXPECT_EQ(AKFileReadChunkHeader(file, &read) | AKFileGotoChunkEnd(file, read), 0);
  EXPECT_EQ(PositionOf(file), 16U);
  EXPECT_EQ(AKFileGotoChunkBegin(file, read), 0);
  EXPECT_EQ(PositionOf(file), 0U);
}

TEST(AKFileChunk, Mismatch_OfChunkAndSignature_IsLoggedWithItsPosition) {
  AKFile file("....FORMxxxxABCD", 16);
  file.OpenForRead();
  const LogLines lines;
  AKFileChunk chunk{.signature = 0x64696374};
  file.SetPos(4);
  EXPECT_EQ(AKFileCheckChunkHeader(file, &chunk), -880);
  EXPECT_EQ(chunk.signature, 0x464F524DU);
  std::uint32_t found = 0;
  file.SetPos(4);
  EXPECT_EQ(AKFileCheckSignat32(file, 0x64696374, &found), -880);
  EXPECT_EQ(found, 0x464F524DU);
  const std::string message = "# AKLib Error -880: In file \"Memory Stream\" at pos ";
  EXPECT_EQ(LogLines::Take(), (std::vector<std::string>{message + "8, want chunk [dict] but has [FORM].",
                                                        message + "4, want chunk [dict] but has [FORM]."}));
  const struct {
    unsigned int start;
    std::uint32_t signature;
    bool rewind;
    bool is;
    unsigned int end;
  } cases[] = {{4, 0x464F524D, true, true, 4},
               {4, 0x464F524D, false, true, 8},
               {4, 0x12345678, true, false, 4},
               {12, 0x41424344, true, false, 12},
               {13, 0x41424344, false, false, 13}};
  for (const auto& expected : cases) {
    file.SetPos(expected.start);
    EXPECT_EQ(AKFileIsSignat32(file, expected.signature, expected.rewind), expected.is) << expected.start;
    EXPECT_EQ(PositionOf(file), expected.end);
  }
  EXPECT_TRUE(LogLines::Take().empty());
}

AKValue SampleValue() {
  AKValueArray array(4);
  array[0].SetasFloat(0.5);
  array[1].SetasBinary(AKMemoryBlock("12345", 5));
  array[3].SetasAKString("na\x95ve");
  AKDictionary dictionary;
  dictionary.SetValue("A.B", AKValueSetasAKValueArray(array));
  dictionary.SetValue("Flag", AKValueSetasBool(true));
  dictionary.SetValue("Count", AKValueSetasSInt(-1));
  return AKValueSetasAKDictionary(dictionary);
}

// Every reader on the same bytes: what matters is that each comes back, and comes back empty when it fails.
void ReadAll(const std::string& bytes) {
  AKFile file(bytes.data(), static_cast<unsigned int>(bytes.size()));
  ASSERT_EQ(file.OpenForRead(), 0);
  AKValue value = AKValueSetasBool(true);
  AKValueArray array(1);
  AKDictionary dictionary;
  AKMemoryBlock block("x", 1);
  AKString text("x");
  AKUniChars units(1);
  const auto again = [&](int status) {
    file.SetPos(0);
    return status != 0;
  };
  EXPECT_TRUE(!again(value.ReadFromFile(file)) || value.IsEmpty());
  EXPECT_TRUE(!again(array.ReadFromFile(file)) || array.IsEmpty());
  EXPECT_TRUE(!again(dictionary.ReadFromFile(file)) || dictionary.IsEmpty());
  EXPECT_TRUE(!again(block.ReadFromFile(file)) || block.IsEmpty());
  EXPECT_TRUE(!again(AKFileReadAKString(file, &text)) || text.IsEmpty());
  EXPECT_TRUE(!again(AKFileReadAKUniChars(file, &units)) || units.IsEmpty());
  again(AKDictionary::SkipFromFile(file) | AKMemoryBlock::SkipFromFile(file) | AKString::SkipFromFile(file));
}

TEST(Records, EveryTruncationAndBitFlip_OfEachRecord_ReadsToAStatusOrAValue) {
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  const AKValue sample = SampleValue();
  ASSERT_EQ(sample.WriteToFile(file), 0);
  std::vector<std::string> records = {StreamContent(file), Bytes("08000000 'naive' 000000"),
                                      Bytes("03000000 4100 AC20 4200"),
                                      Bytes("'bina' 0C000000 05000000 '12345' 000000"),
                                      Bytes("'arry' 14000000 02000000 'Unkn' 00000000 'strg' 00000000")};
  for (const std::string& record : records) {
    for (std::size_t size = 0; size <= record.size(); ++size) {
      ReadAll(record.substr(0, size));
      AKFile cut(record.data(), static_cast<unsigned int>(size));
      cut.OpenForRead();
      AKValue value;
      EXPECT_TRUE(record != records[0] || size == record.size() || value.ReadFromFile(cut) != 0) << size;
    }
    for (std::size_t bit = 0; bit < record.size() * 8; ++bit) {
      std::string flipped = record;
      flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ 1 << bit % 8);
      ReadAll(flipped);
    }
  }
  file.SetPos(0);
  AKValue back;
  EXPECT_EQ(back.ReadFromFile(file), 0);
  EXPECT_TRUE(back == sample);
}

TEST(Records, Nesting_BeyondItsLimit_FailsBothWays) {
  std::string bytes = Bytes("0000000000000000");
  for (unsigned int depth = 1; depth <= 513; ++depth) {
    const auto size = static_cast<unsigned int>(bytes.size() + 4);
    bytes = "arry" + std::string(reinterpret_cast<const char*>(&size), 4) + Bytes("01000000") + bytes;
    if (depth < 512) continue;
    AKFile file(bytes.data(), static_cast<unsigned int>(bytes.size()));
    file.OpenForRead();
    AKValue value;
    EXPECT_EQ(value.ReadFromFile(file), depth == 512 ? 0 : -881);
    if (depth > 512) continue;
    AKFile written(AKFile::kModeMemory);
    written.CreateForReadWrite();
    EXPECT_EQ(value.WriteToFile(written), 0);
    EXPECT_EQ(StreamContent(written), bytes);
    AKDictionary deeper;
    EXPECT_EQ(deeper.SetValue("A", value), -881);
    EXPECT_TRUE(deeper.IsEmpty());
    AKValueArray around(1);
    around[0] = value;
    EXPECT_EQ(around.WriteToFile(written), -881);
  }
}

// What a file lacks is no failure of the system.
TEST(Records, TooShort_LogNoReasonOfTheSystem) {
  const file_test::TempFolder folder;
  const std::string bytes = Bytes("'bina' 14000000 10000000 00");
  AKString text;
  AKUniChars units;
  AKMemoryBlock block;
  const struct {
    std::size_t start;
    std::function<int(const AKFile&)> read;
  } cases[] = {{8, [&](const AKFile& file) { return text.ReadFromFile(file); }},
               {8, [&](const AKFile& file) { return AKFileReadAKUniChars(file, &units); }},
               {0, [&](const AKFile& file) { return block.ReadFromFile(file); }}};
  for (const auto& c : cases) {
    file_test::WriteBytes(folder.Path("short"), bytes.substr(c.start));
    AKFile file(folder.KitPath("short"));
    ASSERT_EQ(file.OpenForRead(), 0);
    const LogLines lines;
    errno = EISDIR;
    EXPECT_EQ(c.read(file), -890);
    EXPECT_EQ(LogLines::Take(),
              std::vector<std::string>{"# AKLib Error -890: Can't read in file \"" + folder.Path("short") + "\"."});
  }
}

TEST(Records, UnknownValue_BetweenOthers_IsSkipped) {
  const std::string bytes = Bytes("'Unkn' 03000000 'abc' 'bool' 04000000 07000000");
  AKFile file(bytes.data(), static_cast<unsigned int>(bytes.size()));
  file.OpenForRead();
  AKValue value;
  EXPECT_EQ(value.ReadFromFile(file), 0);
  EXPECT_TRUE(value.IsEmpty());
  EXPECT_EQ(value.ReadFromFile(file), 0);
  EXPECT_TRUE(value == AKValueSetasBool(true));
}

TEST(AKFileContent, Text_SavedLoadedAndMissing_KeepsItsBytes) {
  const file_test::TempFolder folder;
  const AKString text("a\0b\xFF", 4);
  AKString loaded;
  EXPECT_EQ(AKFileSaveContentOfString(folder.KitPath("file"), text), 0);
  EXPECT_EQ(AKFileLoadContentToString(folder.KitPath("file"), &loaded), 0);
  EXPECT_EQ(loaded, text);
  file_test::WriteBytes(folder.Path("file"), std::string("ab\0\0", 4));
  EXPECT_EQ(AKFileLoadContentToString(folder.KitPath("file"), &loaded), 0);
  EXPECT_EQ(loaded, AKString("ab"));
  const LogLines lines;
  EXPECT_EQ(AKFileLoadContentToStringFromResources("no such.txt", &loaded), -895);
  EXPECT_EQ(LogLines::Take(), (std::vector<std::string>{"# AKLib Error -895: Can't find resource \"no such.txt\"."}));
  EXPECT_TRUE(loaded.IsEmpty());
  const std::string resources = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "Resources";
  const bool made = std::filesystem::create_directory(resources);
  file_test::WriteBytes(resources + "/ak_test.txt", "found");
  EXPECT_EQ(AKFileLoadContentToStringFromResources("ak_test.txt", &loaded), 0);
  EXPECT_EQ(loaded, AKString("found"));
  std::filesystem::remove(resources + "/ak_test.txt");
  if (made) std::filesystem::remove(resources);
}

}  // namespace
