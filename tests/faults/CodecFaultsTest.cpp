// Image files encoded, decoded and replaced while memory and system calls are refused: the k-th allocation of the
// codecs and of the libraries below them, the k-th call of what replaces a file. Each time all of it is done, or
// nothing.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>

#include "platform/codecs/CodecPixels.h"
#include "platform/codecs/WholeFile.h"
#include "tests/faults/RefusedCalls.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

using faults::Refusal;
using faults::sCall;
using faults::sReason;

Refusal sAllocation;
bool sOwnOnly = false;  // only allocations of the codecs' own
long sLive = 0;         // blocks of memory
long sLiveBefore = 0;   // when the work began

// Set by the linker: where the program's own code is.
extern "C" const char __executable_start;
extern "C" const char etext;

bool RefusesMemory(const void* caller) {
  const bool isOwn =
      caller >= static_cast<const void*>(&__executable_start) && caller < static_cast<const void*>(&etext);
  return (isOwn || !sOwnOnly) && sAllocation.Comes();
}

}  // namespace

extern "C" {

// Stands in the place of the C library's for all of the process.
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);
void __libc_free(void* memory);

void* malloc(size_t size) {
  if (RefusesMemory(__builtin_return_address(0))) return nullptr;
  ++sLive;
  return __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
  if (RefusesMemory(__builtin_return_address(0))) return nullptr;
  ++sLive;
  return __libc_calloc(count, size);
}
void* realloc(void* memory, size_t size) {
  if (RefusesMemory(__builtin_return_address(0))) return nullptr;
  if (memory == nullptr) ++sLive;
  return __libc_realloc(memory, size);
}
void free(void* memory) {
  if (memory != nullptr) --sLive;
  __libc_free(memory);
}

AK_WRAP(ssize_t, read, (int file, void* data, size_t size), (file, data, size))
AK_WRAP(ssize_t, write, (int file, const void* data, size_t size), (file, data, size))
AK_WRAP(int, rename, (const char* from, const char* to), (from, to))
AK_WRAP(ssize_t, readlink, (const char* path, char* to, size_t size), (path, to, size))

}  // extern "C"

void* operator new(std::size_t size) {
  void* const memory = malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory) noexcept { free(memory); }
void operator delete(void* memory, std::size_t) noexcept { free(memory); }

namespace {

using file_test::ReadBytes;
using file_test::TempFolder;
using file_test::WriteBytes;
using platform::ByteSink;

constexpr const platform::ImageCodec* kCodecs[] = {&platform::kPNGCodec, &platform::kJPEGCodec, &platform::kTIFFCodec};

// Runs `work` with the first refusal, then the second, until it meets none. `check` sees what it returned, false also
// for want of memory, and whether something was refused.
void ForEachRefusal(Refusal* refusal, bool forGood, const std::function<bool()>& work,
                    const std::function<void(bool done, bool refused)>& check) {
  for (long k = 0, refused = 1; refused != 0; ++k) {
    SCOPED_TRACE((forGood ? "all from " : "only ") + std::to_string(k));
    ASSERT_LT(k, 3000);
    bool done = false;
    sLiveBefore = sLive;
    *refusal = {k, forGood, false};
    try {
      done = work();
    } catch (const std::bad_alloc&) {
      // What was begun is taken back all the same.
    }
    refusal->left = -1;
    refused = refusal->happened ? 1 : 0;
    check(done, refused != 0);
    if (testing::Test::HasFailure()) return;
  }
}

CGImageRef Picture(std::size_t width, std::size_t height) {
  platform::RefusedSize refused;
  platform::NewPixels pixels(width, height, width * height, &refused);
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width; ++x) pixels.Row(y)[x] = static_cast<std::uint32_t>((x * y % 128) * 0x01010101);
  }
  return pixels.MakeImage(true);
}

std::string ContentOf(const ByteSink& sink) { return {reinterpret_cast<const char*>(sink.Data()), sink.Size()}; }

bool AreSame(const CGImage& a, const CGImage& b) {
  const std::size_t size = a.pixels.Width() * a.pixels.Height() * 4;
  return a.pixels.Width() == b.pixels.Width() && a.pixels.Height() == b.pixels.Height() &&
         std::memcmp(a.pixels.Row(0), b.pixels.Row(0), size) == 0;
}

TEST(CodecFaults, AnyAllocationRefused_GivesTheWholeResultOrNone_AndKeepsNothing) {
  const CGImageRef picture = Picture(150, 140);
  const platform::EncodeOptions options{0.9, 72, 72, true};
  for (const platform::ImageCodec* codec : kCodecs) {
    SCOPED_TRACE(codec->type);
    sOwnOnly = codec == &platform::kTIFFCodec;  // libtiff crashes where memory is refused to it
    ByteSink file;
    platform::RefusedSize tooLarge;
    ASSERT_TRUE(codec->encode(*picture, options, &file));
    const platform::ByteSpan bytes(file.Data(), file.Size());
    const CGImageRef whole = codec->decode(bytes, &tooLarge);
    ASSERT_NE(whole, nullptr);
    for (const bool forGood : {false, true}) {
      CGImageRef image = nullptr;
      ForEachRefusal(
          &sAllocation, forGood,
          [&] {
            image = nullptr;
            image = codec->decode(bytes, &tooLarge);
            return image != nullptr;
          },
          [&](bool done, bool refused) {
            EXPECT_TRUE(done ? AreSame(*image, *whole) : refused);
            if (image != nullptr) image->Release();
            EXPECT_EQ(sLive, sLiveBefore);
          });
      const std::string expected = ContentOf(file);
      ByteSink* sink = nullptr;
      ForEachRefusal(
          &sAllocation, forGood,
          [&] {
            sink = nullptr;
            sink = new ByteSink;
            return codec->encode(*picture, options, sink);
          },
          [&](bool done, bool refused) {
            EXPECT_TRUE(done ? ContentOf(*sink) == expected : refused);
            delete sink;
            EXPECT_EQ(sLive, sLiveBefore);
          });
    }
    whole->Release();
  }
  picture->Release();
}

// The first image that fits is taken, whatever the header promises; a decoder asks before it takes memory.
TEST(CodecFaults, SizesThatNoFileCanHold_AreRefused) {
  platform::RefusedSize refused;
  const std::pair<std::uint64_t, std::uint64_t> sizes[] = {{0, 1}, {1, 0}, {1ULL << 33, 1}, {1, 1ULL << 33}, {11, 10}};
  for (const auto& [width, height] : sizes) {
    EXPECT_FALSE(platform::NewPixels(width, height, 109, &refused).IsValid()) << width << " x " << height;
    EXPECT_EQ(refused.width, 0U);
  }
  EXPECT_TRUE(platform::NewPixels(10, 10, 100, &refused).IsValid());
  ByteSink sink;
  EXPECT_FALSE(sink.Resize(SIZE_MAX - 1));
  EXPECT_FALSE(sink.WriteAt(SIZE_MAX - 1, "ab", 2));
  EXPECT_TRUE(sink.WriteAt(3, "x", 1) && ContentOf(sink) == std::string("\0\0\0x", 4)) << "zeros in between";
}

struct Replacing : testing::Test {
  // Replaces the file with each call, then each allocation, refused.
  void TryAll(const std::string& path, const std::function<void()>& prepare, const std::string& target) {
    const std::string content(200000, 'n');
    for (Refusal* refusal : {&sCall, &sAllocation}) {
      for (const bool forGood : {false, true}) {
        ForEachRefusal(
            refusal, forGood,
            [&] {
              Refusal kept = std::exchange(*refusal, {});
              prepare();
              *refusal = kept;
              return platform::ReplaceWholeFile(path, content.data(), content.size());
            },
            [&](bool done, bool refused) {
              EXPECT_EQ(ReadBytes(target), done ? content : "old");
              EXPECT_TRUE(done || refused);
              EXPECT_EQ(folder_.EntryCount(), entries_);
            });
      }
    }
  }

  TempFolder folder_;
  std::size_t entries_ = 1;
};

TEST_F(Replacing, AnyRefusal_LeavesTheOldFileOrTheNewOneAndNoOther) {
  const std::string path = folder_.Path("file");
  char value[4] = "";
  TryAll(
      path,
      [&] {
        WriteBytes(path, "old");
        ::chmod(path.c_str(), 0640);
        ::setxattr(path.c_str(), "user.note", "yes", 3, 0);
      },
      path);
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640U);
  if (::setxattr(folder_.Path(".").c_str(), "user.note", "yes", 3, 0) != 0) return;  // the disk has none
  EXPECT_EQ(::getxattr(path.c_str(), "user.note", value, sizeof(value)), 3);
}

TEST_F(Replacing, ThroughLinks_ReplacesWhatTheyLeadTo) {
  const std::string target = folder_.Path("target");
  ASSERT_EQ(::symlink("target", folder_.Path("near").c_str()), 0);
  ASSERT_EQ(::symlink(folder_.Path("near").c_str(), folder_.Path("far").c_str()), 0);
  ASSERT_EQ(::symlink("round", folder_.Path("round").c_str()), 0);
  entries_ = 4;
  TryAll(
      folder_.Path("far"), [&] { WriteBytes(target, "old"); }, target);
  EXPECT_FALSE(platform::ReplaceWholeFile(folder_.Path("round"), "x", 1));
  EXPECT_EQ(errno, ELOOP);
  std::filesystem::remove(target);
  EXPECT_TRUE(platform::ReplaceWholeFile(folder_.Path("far"), "new", 3)) << "leads nowhere yet";
  EXPECT_EQ(ReadBytes(target), "new");
}

// In a folder that lets nobody but root create files, as somebody else.
TEST_F(Replacing, InPlace_KeepsTheOldContentOrHasTheNewOne) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can be somebody else";
  const std::string path = folder_.Path("file");
  WriteBytes(path, "old");
  ASSERT_EQ(::chmod(folder_.Path(".").c_str(), 0755) | ::chmod(path.c_str(), 06666), 0);
  const std::string content(200000, 'n');
  ForEachRefusal(
      &sCall, false,
      [&] {
        const Refusal kept = std::exchange(sCall, {});
        WriteBytes(path, "old");
        EXPECT_EQ(::seteuid(12345), 0);
        sCall = kept;
        const bool done = platform::ReplaceWholeFile(path, content.data(), content.size());
        sCall.left = -1;
        EXPECT_EQ(::seteuid(0), 0);
        return done;
      },
      [&](bool done, bool refused) {
        // The content is complete when only the last close fails.
        const std::string found = ReadBytes(path);
        EXPECT_TRUE(found == content || (!done && found == "old")) << found.size();
        EXPECT_TRUE(done || refused);
      });
  EXPECT_EQ(::chmod(path.c_str(), 0444) | ::seteuid(12345), 0);
  EXPECT_FALSE(platform::ReplaceWholeFile(path, "x", 1)) << "without the right to write";
  EXPECT_EQ(::seteuid(0), 0);
  EXPECT_EQ(ReadBytes(path), content);
}

TEST_F(Replacing, Devices_AreWrittenAsTheyAre_AndInterruptionsGoOn) {
  const std::string path = folder_.Path("pipe");
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const int reader = ::open(path.c_str(), O_RDWR | O_NONBLOCK);
  ForEachRefusal(
      &sCall, false, [&] { return platform::ReplaceWholeFile(path, "through", 7); },
      [&](bool done, bool refused) {
        char read[8] = "";
        const ssize_t count = ::read(reader, read, sizeof(read));
        EXPECT_TRUE(done || refused);
        EXPECT_TRUE(!done || (count == 7 && std::string(read, 7) == "through"));
      });
  ::close(reader);
  EXPECT_FALSE(platform::ReplaceWholeFile("/dev/full", "x", 1));
  EXPECT_FALSE(platform::ReplaceWholeFile(folder_.Path("no/file"), "x", 1));

  // Only calls that may be interrupted are: open for a new file, reading and writing.
  WriteBytes(folder_.Path("file"), "old");
  std::vector<unsigned char> bytes;
  const auto accept = [](const unsigned char*, std::size_t) { return true; };
  sReason = EINTR;
  unsigned int goneOn = 0;
  ForEachRefusal(
      &sCall, false,
      [&] {
        return platform::ReplaceWholeFile(folder_.Path("file"), "new", 3) &&
               platform::ReadWholeFile(folder_.Path("file"), 1, accept, &bytes) && bytes.size() == 3;
      },
      [&](bool done, bool refused) { goneOn += done && refused ? 1 : 0; });
  sReason = EIO;
  EXPECT_GE(goneOn, 4U) << "creating, writing, and reading twice";
}

}  // namespace
