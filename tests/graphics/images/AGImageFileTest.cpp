// Images read from files and written to them, beside what other programs make of the same files. The samples in
// tests/images were written by other programs.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <csignal>

#include "tests/graphics/images/ImageTestSupport.h"

namespace {

using file_test::LogLines;
using file_test::ReadBytes;
using file_test::TempFolder;
using file_test::WriteBytes;
using image_test::Difference;
using image_test::ForeignPixels;
using image_test::ImageOfFile;
using image_test::Output;
using image_test::Picture;
using image_test::Pixels;
using image_test::Sample;

constexpr AGImageFileFormat kFormats[] = {AGImageFileFormat::kJPEG, AGImageFileFormat::kPNG, AGImageFileFormat::kTIFF};

std::vector<std::string> Samples() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(AK_IMAGES)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  EXPECT_GT(names.size(), 35U);
  return names;
}

bool IsJPEG(const std::string& name) { return name.find("jp") != std::string::npos; }

TEST(AGImageFileTest, Read_EveryKindOfFile_GivesThePixelsThatAnotherProgramSees) {
  for (const std::string& name : Samples()) {
    const AGImage image = ImageOfFile(Sample(name));
    // 16 bits may be cut or rounded to 8, and products rounded either way; lossy colours and inks are converted by
    // whole numbers here and by fractions there.
    EXPECT_LE(Difference(Pixels(image), ForeignPixels(Sample(name))), IsJPEG(name) ? 2 : 1) << name;
    EXPECT_EQ(std::to_string(image.Width()) + "x" + std::to_string(image.Height()),
              Output("identify -format '%wx%h\\n' '" + Sample(name) + "' | head -n 1 | tr -d '\\n'"))
        << name;
  }
}

TEST(AGImageFileTest, Read_TruncatedAnywhere_GivesAllPixelsOrNone) {
  TempFolder folder;
  for (const std::string& name : Samples()) {
    const std::string path = folder.Path(name);
    const std::vector<unsigned char> whole = Pixels(ImageOfFile(Sample(name)));
    WriteBytes(path, ReadBytes(Sample(name)));
    unsigned int complete = 0;
    for (auto size = static_cast<long>(std::filesystem::file_size(path)) - 1; size >= 0; --size) {
      ASSERT_EQ(::truncate(path.c_str(), size), 0);
      const AGImage image = ImageOfFile(path);
      if (image.IsEmpty()) continue;
      ++complete;
      EXPECT_TRUE(Pixels(image) == whole) << name << " cut to " << size;
    }
    // What a TIFF file ends with may be of no use to its first image, as the further images of a PNG file. Otherwise a
    // PNG file can do without the 12 bytes of its end, and a JPEG file without its 2 and what fills up the last codes.
    const bool hasMore = name.find(".tif") != std::string::npos || name == "animated.png";
    EXPECT_TRUE(hasMore || (IsJPEG(name) ? complete >= 2 && complete <= 4 : complete == 12)) << name << " " << complete;
  }
}

TEST(AGImageFileTest, Read_MorePixelsThanAllowed_IsRefusedWithTheReason) {
  TempFolder folder;
  const unsigned long long before = AGImage::MaxBytes();
  EXPECT_EQ(before, 256ULL << 20);
  for (const AGImageFileFormat format : kFormats) {
    ASSERT_TRUE(Picture(1200, 1000, false).SaveToFile(folder.KitPath("image"), format, 1, false));
    AGImage::SetMaxBytes(1200 * 1000 * 4);
    EXPECT_FALSE(ImageOfFile(folder.Path("image")).IsEmpty());
    AGImage::SetMaxBytes(1200 * 1000 * 4 - 1);
    const LogLines log;
    EXPECT_TRUE(ImageOfFile(folder.Path("image")).IsEmpty());
    const std::vector<std::string> line{
        "# AKLib Error -881: Can't read \"" + folder.Path("image") +
        "\": 1200 x 1000 pixels take 5 MB, above the limit of 4 MB (AGImage::SetMaxBytes)."};
    EXPECT_EQ(log.Take(), line);
    AGImage::SetMaxBytes(before);
  }
}

TEST(AGImageFileTest, Read_WhatIsNoImage_LeavesTheImageEmpty) {
  TempFolder folder;
  WriteBytes(folder.Path("empty.png"), "");
  WriteBytes(folder.Path("text.jpg"), "no image at all");
  ASSERT_EQ(::mkfifo(folder.Path("pipe.png").c_str(), 0600), 0);
  for (const char* name : {"empty.png", "text.jpg", "pipe.png", "missing.png", "."}) {
    AGImage image = Picture(2, 2, false);
    EXPECT_FALSE(image.SetupFromFile(folder.KitPath(name))) << name;
    EXPECT_TRUE(image.IsEmpty() && image.Width() == 0 && image.Kind() == AGImage::kKindEmpty) << name;
  }
  AGImage image;
  EXPECT_FALSE(image.SetupFromFile(AKFilePath()));
}

TEST(AGImageFileTest, Write_OpaqueImage_IsReadBackTheSame) {
  TempFolder folder;
  const AGImage image = Picture(61, 47, false);
  for (const AGImageFileFormat format : kFormats) {
    const std::string path = folder.Path("image");
    ASSERT_TRUE(image.SaveToFile(AKFilePath(path.c_str()), format, 1, false));
    const std::vector<unsigned char> foreign = ForeignPixels(path);
    // The best JPEG still rounds to whole brightness and colour differences.
    EXPECT_LE(Difference(Pixels(image), foreign), format == AGImageFileFormat::kJPEG ? 8 : 0);
    EXPECT_LE(Difference(Pixels(ImageOfFile(path)), foreign), format == AGImageFileFormat::kJPEG ? 1 : 0);
  }
}

TEST(AGImageFileTest, Write_TranslucentImage_IsMixedWithWhite_AndHasNoAlpha) {
  TempFolder folder;
  const AGImage image = Picture(61, 47, true);
  std::vector<unsigned char> onWhite = Pixels(image);
  for (std::size_t i = 0; i < onWhite.size(); i += 4) {
    const int white = 255 - onWhite[i + 3];
    for (std::size_t channel = 0; channel < 4; ++channel) onWhite[i + channel] += static_cast<unsigned char>(white);
  }
  for (const AGImageFileFormat format : kFormats) {
    const std::string path = folder.Path("image");
    ASSERT_TRUE(image.SaveToFile(AKFilePath(path.c_str()), format, 1, false));
    EXPECT_LE(Difference(ForeignPixels(path), onWhite), format == AGImageFileFormat::kJPEG ? 24 : 0);
    EXPECT_EQ(Output("identify -format %[channels] " + path), "srgb");
  }
}

TEST(AGImageFileTest, Write_HighResolution_IsTaggedWith144DotsAnInch) {
  TempFolder folder;
  const struct {
    AGImageFileFormat format;
    std::string type;
    std::string program;
    std::string answer;
  } cases[] = {
      {AGImageFileFormat::kJPEG, "JPEG", "exiftool -s3 -n -XResolution -YResolution -ResolutionUnit", "144\n144\n1\n"},
      {AGImageFileFormat::kPNG, "PNG", "exiftool -s3 -n -PixelsPerUnitX -PixelsPerUnitY -PixelUnits",
       "5669\n5669\n1\n"},
      {AGImageFileFormat::kTIFF, "TIFF", "tiffinfo", "  Resolution: 144, 144 pixels/inch\n"}};
  for (const auto& c : cases) {
    for (const bool high : {false, true}) {
      const std::string path = folder.Path("image");
      ASSERT_TRUE(Picture(3, 2, false).SaveToFile(AKFilePath(path.c_str()), c.format, 0.5, high));
      EXPECT_EQ(Output("identify -format '%m %wx%h' " + path), c.type + " 3x2");
      EXPECT_EQ(Output(c.program + " " + path).find(c.answer) != std::string::npos, high) << c.type;
    }
  }
}

TEST(AGImageFileTest, Write_JPEGQuality_LargerFilesForBetterPictures_ClampedAtItsEnds) {
  TempFolder folder;
  const AGImage image = Picture(200, 150, false);
  const auto save = [&](double quality) {
    EXPECT_TRUE(image.SaveToFile(folder.KitPath("image"), AGImageFileFormat::kJPEG, quality, false));
    return ReadBytes(folder.Path("image"));
  };
  std::size_t last = 0;
  for (int percent = 5; percent <= 100; percent += 5) {
    const std::size_t size = save(percent / 100.0).size();
    EXPECT_GT(size, last) << percent;
    last = size;
  }
  EXPECT_EQ(save(-3), save(0));
  EXPECT_EQ(save(std::nan("")), save(0));
  EXPECT_EQ(save(7), save(1));
}

TEST(AGImageFileTest, Write_Failing_LeavesTheOldFileAndNothingElse) {
  TempFolder folder;
  const AGImage image = Picture(40, 30, false);
  const struct {
    AGImage image;
    AKFilePath path;
    AGImageFileFormat format;
  } cases[] = {{AGImage(), folder.KitPath("old"), AGImageFileFormat::kPNG},
               {image, AKFilePath(), AGImageFileFormat::kPNG},
               {image, folder.KitPath("old"), AGImageFileFormat{0}},
               {image, folder.KitPath("old"), AGImageFileFormat{4}},
               {image, folder.KitPath("missing/new"), AGImageFileFormat::kTIFF},
               {image, folder.KitPath("old/new"), AGImageFileFormat::kTIFF},
               {image, folder.KitPath("."), AGImageFileFormat::kTIFF},
               {image, AKFilePath(folder.KitPath("old").Text() + AKString("\0x", 2)), AGImageFileFormat::kJPEG},
               {image, AKFilePath("/dev/full"), AGImageFileFormat::kJPEG},
               {image, AKFilePath("/proc/new"), AGImageFileFormat::kJPEG}};
  WriteBytes(folder.Path("old"), "old");
  for (const auto& c : cases) {
    EXPECT_FALSE(c.image.SaveToFile(c.path, c.format, 0.5, true)) << c.path.Text().CStr();
    EXPECT_EQ(ReadBytes(folder.Path("old")), "old");
    EXPECT_EQ(folder.EntryCount(), 1U);
  }
}

TEST(AGImageFileTest, Write_DiskFullHalfWay_LeavesTheOldFileAndNothingElse) {
  TempFolder folder;
  WriteBytes(folder.Path("old"), "old");
  const AGImage image = Picture(300, 300, false);
  rlimit old = {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{10000, old.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  for (const AGImageFileFormat format : kFormats) {
    EXPECT_FALSE(image.SaveToFile(folder.KitPath("old"), format, 1, false));
    EXPECT_EQ(ReadBytes(folder.Path("old")), "old");
    EXPECT_EQ(folder.EntryCount(), 1U);
  }
  ::setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, handler);
}

TEST(AGImageFileTest, Write_ThroughALink_ReplacesWhatItLeadsTo_WithItsPermissions) {
  TempFolder folder;
  WriteBytes(folder.Path("old"), "old");
  ASSERT_EQ(::chmod(folder.Path("old").c_str(), 0640), 0);
  std::filesystem::create_symlink("old", folder.Path("link"));
  ASSERT_TRUE(Picture(3, 2, false).SaveToFile(folder.KitPath("link"), AGImageFileFormat::kPNG, 0, false));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
  struct stat status = {};
  ASSERT_EQ(::stat(folder.Path("old").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
  EXPECT_EQ(ImageOfFile(folder.Path("old")).Width(), 3U);
}

}  // namespace
