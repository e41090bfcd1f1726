// Files and their replacement while system calls fail. The linker puts the functions named __wrap_* below in the place
// of the calls, so that the k-th one can be refused, once or from then on; and it counts what the kit allocates.
#include <dirent.h>
#include <errno.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>

#include "fuzz/AllocationCounter.h"
#include "kit/streams/AKFileChunk.h"
#include "kit/streams/AKFileContent.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/streams/AKFileReplacer.h"
#include "kit/values/AKValueHelpers.h"
#include "tests/faults/RefusedCalls.h"
#include "tests/kit/streams/FileTestSupport.h"

extern "C" {

AK_WRAP(off_t, lseek, (int file, off_t offset, int whence), (file, offset, whence))
AK_WRAP(ssize_t, pread, (int file, void* data, size_t size, off_t at), (file, data, size, at))
AK_WRAP(int, renameat, (int fromFolder, const char* from, int toFolder, const char* to),
        (fromFolder, from, toFolder, to))
AK_WRAP(int, statx, (int folder, const char* path, int flags, unsigned int mask, struct statx* status),
        (folder, path, flags, mask, status))
AK_WRAP(int, faccessat, (int folder, const char* path, int mode, int flags), (folder, path, mode, flags))
AK_WRAP(int, flock, (int file, int operation), (file, operation))
AK_WRAP_WITH_LAST(openat, (int folder, const char* path, int flags, ...), flags, mode_t, (folder, path, flags, more))
AK_WRAP_WITH_LAST(fcntl, (int file, int command, ...), command, int, (file, command, more))

}  // extern "C"

namespace {

using file_test::ReadBytes;
using file_test::TempFolder;
using file_test::WriteBytes;
using namespace std::string_literals;

std::size_t OpenDescriptors() {
  std::size_t count = 0;
  DIR* const directory = ::opendir("/proc/self/fd");
  while (::readdir(directory) != nullptr) ++count;
  ::closedir(directory);
  return count;
}

// Runs `work` with the first call refused, then the second, and so on until it meets no refusal. `check` sees its
// status and whether a call was refused.
template <typename Work, typename Check>
void ForEachRefusal(bool forGood, Work work, Check check) {
  bool refused = true;
  for (int k = 0; refused; ++k) {
    SCOPED_TRACE((forGood ? "all calls from " : "only call ") + std::to_string(k));
    ASSERT_LT(k, 500);
    const std::size_t descriptors = OpenDescriptors();
    faults::sCall = {k, forGood};
    const int status = work();
    faults::sCall.left = -1;
    refused = faults::sCall.happened;
    check(status, refused);
    EXPECT_EQ(OpenDescriptors(), descriptors);
    if (testing::Test::HasFailure()) return;
  }
}

class FaultInjection : public testing::TestWithParam<bool> {};

AKDictionary BigDictionary() {
  AKDictionary dictionary;
  for (int i = 0; i < 8000; ++i) {
    AKString key;
    dictionary.SetValue(key.Assignf("Key%d", i), AKValueSetasAKString("some text"));
  }
  return dictionary;
}

TEST_P(FaultInjection, Replacing_WithAnyCallRefused_KeepsTheOldFileOrHasTheNewOne) {
  const TempFolder folder;
  const AKDictionary dictionary = BigDictionary();
  AKFile stream(AKFile::kModeMemory);
  ASSERT_EQ(stream.CreateForReadWrite() | dictionary.WriteToFile(stream), 0);
  const std::string complete = file_test::StreamContent(stream);
  ASSERT_GT(complete.size(), 200000U);  // several buffers
  ForEachRefusal(
      GetParam(),
      [&] {
        WriteBytes(folder.Path("file"), "old");
        return dictionary.SaveToBinFile(folder.KitPath("file"));
      },
      [&](int status, bool refused) {
        EXPECT_EQ(ReadBytes(folder.Path("file")), status == 0 ? complete : "old");
        EXPECT_EQ(folder.EntryCount(), 1U);
        EXPECT_TRUE(refused || status == 0) << status;
        EXPECT_TRUE(status == 0 || (status >= -891 && status <= -887)) << status;
      });
}

// In a folder that lets nobody but root create files, as somebody else.
TEST_P(FaultInjection, RewritingInPlace_WithAnyCallRefused_KeepsTheOldContentOrHasTheNewOne) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can be somebody else";
  const TempFolder folder;
  const TempFolder copies;
  WriteBytes(folder.Path("file"), "");
  ASSERT_EQ(::chmod(folder.Path("file").c_str(), 0666) | ::chmod(folder.Path(".").c_str(), 0755) |
                ::chmod(copies.Path(".").c_str(), 0777) | ::setenv("TMPDIR", copies.Path("").c_str(), 1),
            0);
  const std::string content(3000000, 'x');
  ForEachRefusal(
      GetParam(),
      [&] {
        WriteBytes(folder.Path("file"), "old");
        if (::seteuid(12345) != 0) return 1;
        const int status = AKFileSaveContentOfString(folder.KitPath("file"), AKString(content));
        return ::seteuid(0) == 0 ? status : 1;
      },
      [&](int status, bool refused) {
        const std::string found = ReadBytes(folder.Path("file"));
        // Where the system goes on refusing, not even what was there can be written: it is in the copy then.
        const bool isSaved = GetParam() && copies.EntryCount() > 0;
        EXPECT_TRUE(found == (status == 0 ? content : "old") || isSaved) << found.size();
        EXPECT_TRUE(refused || status == 0) << status;
        EXPECT_TRUE(GetParam() || copies.EntryCount() == 0);
        EXPECT_EQ(folder.EntryCount(), 1U);
      });
  ::unsetenv("TMPDIR");
}

// Everything that was written is in the file, or some status said that it is not.
TEST_P(FaultInjection, Writing_WithAnyCallRefused_LosesNothingSilently) {
  const TempFolder folder;
  ForEachRefusal(
      GetParam(),
      [&] {
        AKFile file(folder.KitPath("file"));
        int status = file.CreateForReadWrite();
        for (unsigned int i = 0; i < 40000 && status == 0; ++i) status = AKFileWriteUInt32(file, i);
        if (status == 0) status = file.SetPos(100000);
        unsigned int number = 0;
        if (status == 0) status = AKFileReadUInt32(file, &number);
        if (status == 0 && number != 25000) status = 1;
        if (status == 0) status = file.SetPos(8);
        if (status == 0) status = AKFileWriteUInt32(file, 77);
        if (status == 0) status = file.SetFileSize(120000);
        if (status == 0) status = file.Seek(0, kAKFileWhenceEnd);
        if (status == 0) status = AKFileWriteUInt32(file, 88);
        const int closed = file.Close();
        return status != 0 ? status : closed;
      },
      [&](int status, bool refused) {
        EXPECT_TRUE(refused || status == 0) << status;
        EXPECT_TRUE(status == 0 || (status >= -891 && status <= -886)) << status;
        if (status != 0) return;
        std::vector<unsigned int> numbers(30001);
        for (unsigned int i = 0; i < 30000; ++i) numbers[i] = i;
        numbers[2] = 77;
        numbers[30000] = 88;
        EXPECT_EQ(ReadBytes(folder.Path("file")),
                  std::string(reinterpret_cast<const char*>(numbers.data()), numbers.size() * 4));
      });
}

TEST_P(FaultInjection, Reading_WithAnyCallRefused_GivesAllOrAnEmptyResult) {
  const TempFolder folder;
  const AKDictionary dictionary = BigDictionary();
  ASSERT_EQ(dictionary.SaveToBinFile(folder.KitPath("file")), 0);
  AKDictionary loaded;
  ForEachRefusal(
      GetParam(), [&] { return loaded.LoadFromBinFile(folder.KitPath("file")); },
      [&](int status, bool refused) {
        EXPECT_TRUE(refused || status == 0) << status;
        EXPECT_TRUE(status == 0 ? loaded == dictionary : loaded.IsEmpty());
        EXPECT_TRUE(status == 0 || (status >= -891 && status <= -887)) << status;
      });
}

INSTANTIATE_TEST_SUITE_P(OnceAndForGood, FaultInjection, testing::Bool());

// A size or count in a file is no reason to allocate what the file cannot fill.
std::size_t PeakOfReading(const std::string& bytes, std::size_t at) {
  AKFile file(bytes.data(), static_cast<unsigned int>(bytes.size()));
  file.OpenForRead();
  const allocation::Peak peak;
  {
    AKValue value;
    value.ReadFromFile(file);
  }
  {
    AKString text;
    file.SetPos(at);
    text.ReadFromFile(file);
  }
  AKUniChars units;
  file.SetPos(at);
  AKFileReadAKUniChars(file, &units);
  return peak.Size();
}

TEST(Allocation, DamagedRecords_OfEveryKind_TakeAtMostSixteenTimesTheFile) {
  AKDictionary dictionary;
  AKValueArray array(3);
  array[0].SetasFloat(1);
  array[1].SetasBinary(AKMemoryBlock("0123456789", 10));
  array[2].SetasAKString("text");
  dictionary.SetValue("A.B", AKValueSetasAKValueArray(array));
  AKFile stream(AKFile::kModeMemory);
  ASSERT_EQ(stream.CreateForReadWrite() | dictionary.WriteToFile(stream), 0);
  const std::string sound = file_test::StreamContent(stream);
  for (std::size_t at = 0; at + 4 <= sound.size(); at += 4) {
    for (const char* count : {"\xFF\xFF\xFF\xFF", "\xFF\xFF\xFF\x7F", "\x00\x10\x00\x00"}) {
      std::string bytes = sound;
      bytes.replace(at, 4, count, 4);
      EXPECT_LE(PeakOfReading(bytes, at), 16 * bytes.size() + 4096) << "count at " << at;
    }
  }
}

std::string Number(std::size_t number) {
  const auto bytes = static_cast<unsigned int>(number);
  return {reinterpret_cast<const char*>(&bytes), 4};
}

// Arrays that each claim all that follows, and small records that take the most of memory for their size.
TEST(Allocation, RecordsMadeToTakeMemory_StayWithinTheLimit) {
  constexpr std::size_t kSize = 1 << 20;
  std::string nested;
  for (int level = 0; level < 510; ++level) {
    const std::size_t rest = kSize - nested.size() - 8;
    nested += "arry" + Number(rest) + Number((rest - 4) / 8);
  }
  nested.resize(kSize);
  const auto arrayOf = [](const std::string& item) {
    std::string items;
    while (items.size() + item.size() <= kSize) items += item;
    return "arry" + Number(items.size() + 4) + Number(items.size() / item.size()) + items;
  };
  const std::string empty(8, '\0');
  const std::string entry = Number(4) + "A\0\0\0"s + empty;
  const std::string oneEntry = "dict" + Number(4 + entry.size()) + Number(1) + entry;
  const std::string inEntry = Number(4) + "A\0\0\0"s + oneEntry;
  const std::string cases[] = {nested,
                               arrayOf(empty),
                               arrayOf("arry" + Number(4) + Number(0)),
                               arrayOf("arry" + Number(12) + Number(1) + empty),
                               arrayOf("dict" + Number(4) + Number(0)),
                               arrayOf(oneEntry),
                               arrayOf("dict" + Number(4 + inEntry.size()) + Number(1) + inEntry),
                               arrayOf("strg" + Number(4) + "a\0\0\0"s),
                               arrayOf("bina" + Number(8) + Number(1) + "a\0\0\0"s),
                               "strg" + Number(kSize) + std::string(kSize, 'a')};
  for (const std::string& bytes : cases) {
    EXPECT_LE(PeakOfReading(bytes, bytes.size()), allocation::LimitFor(bytes.size())) << &bytes - cases;
  }
}

}  // namespace
