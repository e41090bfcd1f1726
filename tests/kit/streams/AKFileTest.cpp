#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <random>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileContent.h"
#include "kit/streams/AKFileMmap.h"
#include "kit/streams/AKFileNumbers.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

using file_test::LogLines;
using file_test::PositionOf;
using file_test::ReadBytes;
using file_test::StreamContent;
using file_test::TempFolder;
using file_test::WriteBytes;

constexpr auto kBegin = kAKFileWhenceBegin;
constexpr auto kCurrent = kAKFileWhenceCurrent;
constexpr auto kEnd = kAKFileWhenceEnd;

TEST(AKFile, MemoryStream_SeekAndReadAtTheEdges_FollowItsOwnRules) {
  AKFile file("0123456789", 10);
  ASSERT_EQ(file.OpenForReadWrite(), 0);
  const struct {
    long long offset;
    AKFileWhence whence;
    int status;
    unsigned long long position;
  } seeks[] = {{3, kEnd, 0, 7},
               {11, kEnd, -888, 7},
               {-1, kEnd, -888, 7},
               {0, kEnd, 0, 10},
               {-10, kCurrent, 0, 0},
               {-1, kCurrent, -888, 0},
               {11, kBegin, -888, 0},
               {8, kBegin, 0, 8},
               {-1, kBegin, -888, 8},
               {3, kCurrent, -888, 8},
               {INT64_MAX, kCurrent, -888, 8},
               {INT64_MIN, kEnd, -888, 8}};
  for (const auto& seek : seeks) {
    EXPECT_EQ(file.Seek(seek.offset, seek.whence), seek.status) << seek.offset << " " << seek.whence;
    EXPECT_EQ(PositionOf(file), seek.position) << seek.offset << " " << seek.whence;
  }
  char bytes[4];
  EXPECT_EQ(file.Read(bytes, 4), -890);
  EXPECT_EQ(PositionOf(file), 8U);
  EXPECT_TRUE(file.IsEndOfFile(2));
  EXPECT_FALSE(file.IsEndOfFile(1));
  EXPECT_EQ(file.Read(bytes, 0x100000000ULL), -881);
  EXPECT_EQ(file.Write("abcd", 4), 0);
  EXPECT_EQ(StreamContent(file), "01234567abcd");
  EXPECT_EQ(file.SetFileSize(3), 0);
  EXPECT_EQ(PositionOf(file), 3U);
  EXPECT_EQ(file.SetFileSize(5), 0);
  EXPECT_EQ(StreamContent(file), std::string("012\0\0", 5));
  EXPECT_EQ(file.SetFileSize(0x100000000ULL), -881);
  EXPECT_EQ(file.OpenForRead(), -892);
  EXPECT_EQ(file.Close(), 0);
  ASSERT_EQ(file.OpenForRead(), 0);
  EXPECT_EQ(file.Write("x", 1), -893);
  EXPECT_EQ(StreamContent(file), "");
}

TEST(AKFile, Failures_EachKind_AreLoggedWithTheirMessage) {
  const TempFolder folder;
  const std::string path = folder.Path("file");
  WriteBytes(path, "abc");
  AKFile file(folder.KitPath("file"));
  AKFile missing(folder.KitPath("missing"));
  AKFile stream("abc", 3);
  char bytes[8];
  const LogLines lines;
  const struct {
    const char* line;  // "%" stands for the path
    std::function<int()> run;
  } cases[] = {
      {"# AKLib Error -893: The file \"%\" is not opened.", [&] { return file.Read(bytes, 1); }},
      {"# AKLib Error -893: The file \"%\" is not opened.", [&] { return file.Seek(0, kBegin); }},
      {nullptr, [&] { return file.Read(bytes, 0) + file.Write(bytes, 0) + file.OpenForRead(); }},
      {"# AKLib Error -892: The file \"%\" is already opened.", [&] { return file.CreateForReadWrite(); }},
      {"# AKLib Error -893: The file \"%\" is not opened.", [&] { return file.Write("x", 1); }},
      {"# AKLib Error -893: The file \"%\" is not opened.", [&] { return file.SetFileSize(1); }},
      {"# AKLib Error -888: Can't set position in file \"%\". (errno 22: EINVAL: Invalid argument).",
       [&] { return file.SkipBack(1); }},
      {"# AKLib Error -888: Can't set position in file \"%\". (errno 22: EINVAL: Invalid argument).",
       [&] { return file.Skip(~0ULL); }},
      {"# AKLib Error -890: Can't read in file \"%\".", [&] { return file.Read(bytes, 4); }},
      {"# AKLib Error -882: Can't mmap on file (out of bounds) \"%\".",
       [&] { return file.MemMap()->Map(0, 4) == nullptr ? file.MemMapLastError() : 0; }},
      {"# AKLib Error -883: Can't mmap on file (bad offset) \"%\".",
       [&] { return file.MemMap()->Map(1, 1) == nullptr ? file.MemMapLastError() : 0; }},
      {"# AKLib Error -885: Can't get size of file \"%\".",
       [&] {
         const void* data = &file;
         unsigned long long size = 1;
         const int status = file.GetMemoryStreamDataPtr(&data, &size);
         return data == nullptr && size == 0 ? status : 0;
       }},
      {"# AKLib Error -890: Can't read in file \"Memory Stream\".",
       [&] { return stream.OpenForRead() + stream.Read(bytes, 4); }},
      {"# AKLib Error -882: Can't mmap on file (out of bounds) \"Memory Stream\".",
       [&] { return stream.MemMap()->Map(0, 0) == nullptr ? stream.MemMapLastError() : 0; }},
  };
  for (const auto& expected : cases) {
    const int status = expected.run();
    std::vector<std::string> wanted;
    if (expected.line != nullptr) {
      wanted.emplace_back(expected.line);
      if (const std::size_t at = wanted[0].find('%'); at != std::string::npos) wanted[0].replace(at, 1, path);
    }
    EXPECT_EQ(LogLines::Take(), wanted);
    EXPECT_EQ(status, expected.line == nullptr ? 0 : std::stoi(expected.line + 14));
  }
  EXPECT_EQ(missing.OpenForReadWrite(), -891);
  EXPECT_EQ(LogLines::Take()[0], "# AKLib Error -891: Can't open file \"" + folder.Path("missing") +
                                     "\". (errno 2: ENOENT: No such file or directory).");
  EXPECT_EQ(missing.GetFileInfo(nullptr, nullptr, nullptr), -885);
}

TEST(AKFile, Pipe_ReadAndWritten_IsNotBufferedAndCannotSeek) {
  const TempFolder folder;
  ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  AKFile file(folder.KitPath("pipe"));
  ASSERT_EQ(file.OpenForReadWrite(), 0);
  unsigned int number = 0;
  unsigned long long position = 1;
  EXPECT_EQ(AKFileWriteUInt32(file, 77), 0);
  EXPECT_EQ(AKFileReadUInt32(file, &number), 0);
  EXPECT_EQ(number, 77U);
  EXPECT_EQ(file.GetPos(&position), -887);
  EXPECT_EQ(position, 0U);
  EXPECT_EQ(file.Seek(0, kBegin), -888);
}

TEST(AKFile, Temporary_CreatedTwiceAndClosed_LeavesNothing) {
  AKFile first(AKFile::kModeTemporary);
  AKFile second(AKFilePath("/ignored"), AKFile::kModeTemporary);
  ASSERT_EQ(first.CreateForReadWrite(), 0);
  ASSERT_EQ(second.CreateForReadWrite(), 0);
  const std::string path = first.Path().Text().CStr();
  EXPECT_NE(path, second.Path().Text().CStr());
  EXPECT_EQ(first.Name().SubString(0, 4), AKString("tmp_"));
  struct stat status;
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600U);
  EXPECT_EQ(first.Close() + second.Remove(), 0);
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_TRUE(first.Path().IsEmpty() && first.Name().IsEmpty());
}

// What the disk refuses has to come back from the call that meets the refusal, at the latest from Close.
TEST(AKFile, Write_OnAFullDisk_IsReportedByTheFirstCallThatReachesIt) {
  const LogLines lines;
  AKFile file(AKFilePath("/dev/full"));
  ASSERT_EQ(file.OpenForReadWrite(), 0);
  EXPECT_EQ(AKFileWriteUInt32(file, 1), 0);
  EXPECT_EQ(file.Flush(), -889);
  EXPECT_EQ(file.Write(std::string(1000000, 'x').data(), 1000000), -889);
  EXPECT_EQ(LogLines::Take()[0],
            "# AKLib Error -889: Can't write to file \"/dev/full\". (errno 28: ENOSPC: No space left on device).");
  EXPECT_EQ(file.Close(), -889);
  EXPECT_EQ(file.CheckIsOpened(), -893);
}

TEST(AKFile, Write_PastTheSizeLimit_KeepsWhatFitsAndFails) {
  const TempFolder folder;
  rlimit old;
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
  ::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{100000, old.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  AKFile file(folder.KitPath("file"));
  ASSERT_EQ(file.CreateForReadWrite(), 0);
  const LogLines lines;
  EXPECT_EQ(file.Write(std::string(150000, 'a').data(), 150000), -889);  // a short write, then none
  EXPECT_EQ(PositionOf(file), 100000U);
  EXPECT_EQ(LogLines::Take()[0], "# AKLib Error -889: Can't write to file \"" + folder.Path("file") +
                                     "\". (errno 27: EFBIG: File too large).");
  EXPECT_EQ(file.SetFileSize(200000), -886);
  EXPECT_EQ(file.Write("b", 1), 0);  // buffered
  EXPECT_EQ(file.Close(), -889);
  ::setrlimit(RLIMIT_FSIZE, &old);
  ::signal(SIGXFSZ, SIG_DFL);
  EXPECT_EQ(ReadBytes(folder.Path("file")), std::string(100000, 'a'));
}

// The limit stands for a full disk.
TEST(AKFile, AfterARefusedWrite_TheFileIsReadAndCut) {
  const TempFolder folder;
  rlimit old;
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
  ::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{100000, old.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  AKFile file(folder.KitPath("file"));
  ASSERT_EQ(file.CreateForReadWrite() | file.Write(std::string(100000, 'a').data(), 100000), 0);
  ASSERT_EQ(file.Skip(10) | file.Write("bbb", 3), 0);
  EXPECT_EQ(file.Flush(), -889);
  unsigned long long size = 0;
  EXPECT_EQ(file.GetFileInfo(&size, nullptr, nullptr), 0);
  EXPECT_EQ(size, 100013U);
  std::string bytes(100013, '?');
  EXPECT_EQ(file.SetPos(0) | file.Read(bytes.data(), bytes.size()), 0);
  EXPECT_EQ(bytes, std::string(100000, 'a') + std::string(10, '\0') + "bbb");
  EXPECT_EQ(file.Read(bytes.data(), 1), -890);
  EXPECT_EQ(file.SetFileSize(50000), 0);
  EXPECT_EQ(file.SetPos(49999) | file.Read(bytes.data(), 1), 0);
  EXPECT_EQ(file.Read(bytes.data(), 1), -890);
  EXPECT_EQ(file.SetFileSize(0) | file.SetPos(0) | file.Write("new", 3) | file.Close(), 0);
  ::setrlimit(RLIMIT_FSIZE, &old);
  ::signal(SIGXFSZ, SIG_DFL);
  EXPECT_EQ(ReadBytes(folder.Path("file")), "new");
}

TEST(AKFile, Flush_OfAFileThatIsRead_ForgetsWhatWasReadAhead) {
  const TempFolder folder;
  WriteBytes(folder.Path("file"), "old content");
  AKFile file(folder.KitPath("file"));
  char bytes[3] = {};
  ASSERT_EQ(file.OpenForRead() | file.Read(bytes, 3), 0);
  WriteBytes(folder.Path("file"), "new");
  EXPECT_EQ(file.Flush(), 0);
  EXPECT_TRUE(file.SetPos(0) == 0 && file.Read(bytes, 3) == 0 && std::string(bytes, 3) == "new");
  EXPECT_EQ(file.Read(bytes, 1), -890);
}

TEST(AKFile, MemoryStream_WrittenToItself_TakesTheBytesAsTheyWere) {
  AKFile file(AKFile::kModeMemory);
  ASSERT_EQ(file.CreateForReadWrite() | file.Write("0123456789", 10), 0);
  std::string model = "0123456789";
  for (int i = 0; i < 14; ++i) {
    const void* data = nullptr;
    unsigned long long size = 0;
    ASSERT_EQ(file.GetMemoryStreamDataPtr(&data, &size), 0);
    ASSERT_EQ(file.Write(data, size), 0);
    model += model;
  }
  EXPECT_EQ(StreamContent(file), model);
  const void* data = nullptr;
  unsigned long long size = 0;
  ASSERT_EQ(file.SetPos(3) | file.GetMemoryStreamDataPtr(&data, &size), 0);
  ASSERT_EQ(file.Write(data, 8), 0);  // overlapping
  EXPECT_EQ(StreamContent(file), model.substr(0, 3) + model.substr(0, 8) + model.substr(11));
}

TEST(AKFile, FilesOfTheSystem_AreReadToTheirEndAndPipesRefused) {
  const TempFolder folder;
  AKString text;
  EXPECT_EQ(AKFileLoadContentToString(AKFilePath("/proc/self/status"), &text), 0);
  EXPECT_TRUE(text.StartsWith("Name:\t") && text.Contains("\nThreads:", true));
  ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(AKFileLoadContentToString(folder.KitPath("pipe"), &text), -885);  // and does not wait for a writer
  AKFile writer(folder.KitPath("pipe"));
  AKFile reader(folder.KitPath("pipe"));
  char bytes[3] = {};
  ASSERT_EQ(reader.OpenForRead() | writer.OpenForReadWrite() | writer.Write("abc", 3) | reader.Read(bytes, 3), 0);
  EXPECT_EQ(std::string(bytes, 3), "abc");
  for (const std::size_t length : {0U, 1U, 4096U, 70000U}) {
    const std::string content(length, 'x');
    WriteBytes(folder.Path("file"), content);
    EXPECT_EQ(AKFileLoadContentToString(folder.KitPath("file"), &text), 0);
    EXPECT_EQ(text, content.c_str());
  }
}

// A plain model of a file without a buffer: a string and a position.
struct Model {
  std::string content;
  std::uint64_t position = 0;

  void Write(const std::string& bytes) {
    if (position + bytes.size() > content.size()) content.resize(position + bytes.size());
    content.replace(position, bytes.size(), bytes);
    position += bytes.size();
  }
  // What a read gives: a short one stops at the end.
  std::string Read(std::size_t count) {
    const std::string bytes = position < content.size() ? content.substr(position, count) : "";
    position += bytes.size();
    return bytes;
  }
};

std::size_t RandomSize(std::mt19937& random) {
  static constexpr std::size_t kSizes[] = {1, 4, 8, 100, 4096, 5000, 65535, 65536, 65537, 200000};
  return random() % 4 == 0 ? kSizes[random() % 10] : random() % 40 + 1;
}

void RunRandomOperation(std::mt19937& random, AKFile& file, Model& model, const std::string& path) {
  switch (random() % 8) {
    case 0:
    case 1:
    case 2: {
      const std::string bytes(RandomSize(random), static_cast<char>(random()));
      ASSERT_EQ(file.Write(bytes.data(), bytes.size()), 0);
      return model.Write(bytes);
    }
    case 3:
    case 4: {
      const std::size_t count = RandomSize(random);
      std::string bytes(count, '?');
      const int status = file.Read(bytes.data(), count);
      const std::string wanted = model.Read(count);
      ASSERT_EQ(status, wanted.size() == count ? 0 : -890);
      ASSERT_EQ(bytes.substr(0, wanted.size()), wanted);
      return;
    }
    case 5: {
      const auto whence = static_cast<AKFileWhence>(random() % 3);
      const std::uint64_t base = whence == kBegin ? 0 : whence == kCurrent ? model.position : model.content.size();
      const long long offset = static_cast<long long>(random() % 300000) - static_cast<long long>(base / 2) -
                               (random() % 2 == 0 ? 150000 : 0);
      const long long target = static_cast<long long>(base) + offset;
      ASSERT_EQ(file.Seek(offset, whence), target < 0 ? -888 : 0);
      if (target >= 0) model.position = static_cast<std::uint64_t>(target);
      return;
    }
    case 6: {
      if (random() % 8 != 0) return;
      const std::size_t size = random() % 400000;
      ASSERT_EQ(file.SetFileSize(size), 0);
      return model.content.resize(size);
    }
    default: {
      const std::size_t count = RandomSize(random);
      ASSERT_EQ(file.IsEndOfFile(count), model.position + count >= model.content.size());
      if (random() % 20 != 0) return;
      unsigned long long size = 0;
      const void* const map = file.MemMapAll(&size);
      ASSERT_EQ(size, model.content.size());
      ASSERT_EQ(std::string(static_cast<const char*>(map), size), model.content);
      if (random() % 2 == 0) file.MemUnmapAll();  // else the writes that follow are not buffered
      ASSERT_EQ(file.GetFileInfo(&size, nullptr, nullptr), 0);
      ASSERT_EQ(ReadBytes(path), model.content);
    }
  }
}

TEST(AKFile, DiskFile_RandomOperations_HoldsWhatAnUnbufferedOneWould) {
  const TempFolder folder;
  for (unsigned int seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    AKFile file(folder.KitPath("file"));
    ASSERT_EQ(file.CreateForReadWrite(), 0);
    Model model;
    for (int step = 0; step < 400; ++step) {
      SCOPED_TRACE("step " + std::to_string(step));
      RunRandomOperation(random, file, model, folder.Path("file"));
      if (testing::Test::HasFatalFailure()) return;
      ASSERT_EQ(PositionOf(file), model.position);
    }
    ASSERT_EQ(file.Close(), 0);
    ASSERT_EQ(ReadBytes(folder.Path("file")), model.content);
  }
}

TEST(AKFile, MemMap_ItemsUnmappedOneByOne_AreForgotten) {
  const TempFolder folder;
  const unsigned int page = AKFileMmap::GetSysPageSize();
  AKFile file(folder.KitPath("file"));
  ASSERT_EQ(file.CreateForReadWrite(), 0);
  AKFileWriteZeros(file, page);
  ASSERT_EQ(file.Write("end", 3), 0);
  const void* const first = file.MemMap()->Map(0, page);
  const void* const last = file.MemMap()->Map(page, 3);
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(std::string(static_cast<const char*>(last), 3), "end");
  file.SetPos(page);
  ASSERT_EQ(file.Write("END", 3), 0);
  EXPECT_EQ(std::string(static_cast<const char*>(last), 3), "END");  // a map shows what is written while it stands
  unsigned int index = 7;
  EXPECT_TRUE(file.MemMap()->FindItemByAddress(last, &index));
  EXPECT_EQ(index, 1U);
  file.MemMap()->Unmap(first);
  EXPECT_TRUE(file.MemMap()->FindItemByAddress(last, &index));
  EXPECT_EQ(index, 0U);
  file.MemUnmapAll();
  EXPECT_FALSE(file.MemMap()->FindItemByAddress(last, &index));
  EXPECT_EQ(index, kAKNotFound);
}

// Numbers of which a search through all that is there would take hours.
TEST(AKFile, MemMap_OfManyPieces_FindsEachOfThem) {
  constexpr unsigned int kPieces = 3000000;
  AKFile file(std::string(kPieces, 'x').data(), kPieces);
  ASSERT_EQ(file.OpenForRead(), 0);
  AKFileMmap* const map = file.MemMap();
  unsigned int index = 0;
  for (unsigned int i = 0; i < kPieces; ++i) ASSERT_NE(map->Map(i, 1), nullptr);
  const void* const last = map->Map(kPieces - 1, 1);
  for (const unsigned int i : {kPieces - 5, 0U}) map->Unmap(map->Map(i, 1));
  EXPECT_TRUE(map->FindItemByAddress(last, &index));
  EXPECT_EQ(index, kPieces - 3);
}

}  // namespace
