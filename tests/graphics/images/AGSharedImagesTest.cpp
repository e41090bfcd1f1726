// Images that are shared by the name of a resource. The resources stand beside the test program.
#include "graphics/images/AGSharedImages.h"
#include "kit/files/AKFileUtilsMacOS.h"
#include "tests/graphics/images/ImageTestSupport.h"

namespace {

class AGSharedImagesTest : public testing::Test {
 protected:
  AGSharedImagesTest() {
    AGImage::LowInitialize(0);
    PutResource("ak_test_a.png", "rgba8.png");
    PutResource("ak_test_b.jpg", "baseline.jpg");
  }
  ~AGSharedImagesTest() override {
    AGImage::LowTerminate();
    for (const std::string& path : paths_) std::filesystem::remove(path);
    EXPECT_EQ(AGImage::GetImageGlobalCount(), count_);
    EXPECT_EQ(AGImage::GetImageGlobalBytes(), bytes_);
  }

  void PutResource(const char* name, const char* sample) {
    const std::string path = AKFileUtilsMacOS::GetApplicationBundleResourceFilePath(AKString(name)).Text().CStr();
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::filesystem::copy_file(image_test::Sample(sample), path, std::filesystem::copy_options::overwrite_existing);
    paths_.push_back(path);
  }
  unsigned int Loaded() const { return AGImage::GetImageGlobalCount() - count_; }

  const AKString a_{"ak_test_a.png"};
  const AKString b_{"ak_test_b.jpg"};
  const unsigned int count_ = AGImage::GetImageGlobalCount();
  const unsigned long long bytes_ = AGImage::GetImageGlobalBytes();

 private:
  std::vector<std::string> paths_;
};

TEST_F(AGSharedImagesTest, Share_LoadsOnce_UntilTheLastGoes) {
  AGImage first;
  ASSERT_TRUE(first.SetupFromResources(a_));
  EXPECT_TRUE(first.SetupFromResources(a_));
  AGImage second(first);
  EXPECT_EQ(second.Kind(), AGImage::kKindShared);
  EXPECT_EQ(second.NativeImage(), first.NativeImage());
  EXPECT_EQ(Loaded(), 1U);
  EXPECT_EQ(AGImage::GetImageGlobalBytes() - bytes_, 19U * 13 * 4);
  first.Clear();
  EXPECT_EQ(Loaded(), 1U);
  EXPECT_EQ(second.Width(), 19U);
  second.Clear();
  EXPECT_EQ(Loaded(), 0U);
  EXPECT_EQ(AGImage::GetImageGlobalSharedCount(), 0U);
}

TEST_F(AGSharedImagesTest, Keep_LeavesImagesLoadedUntilTheEnd) {
  AGImage::LowInitialize(0x1FF);
  EXPECT_EQ(AGImage::Options(), 0x100U);
  AGImage image;
  image.SetupFromResources(a_);
  image.Clear();
  EXPECT_EQ(AGImage::GetImageGlobalSharedCount(), 1U);
  AGSharedImages::Shared().UnregisterImage(a_);
  image.SetupFromResources(a_);
  AGImage::SetOption(AGImage::kOptionKeepShared, false);
  image.Clear();
  EXPECT_EQ(Loaded(), 0U);
}

TEST_F(AGSharedImagesTest, Switch_ToANameInUse_DoesNotReload) {
  AGImage one;
  AGImage other;
  one.SetupFromResources(a_);
  other.SetupFromResources(b_);
  CGImage* const native = other.NativeImage();
  EXPECT_TRUE(one.SetupFromResources(b_));
  EXPECT_EQ(one.NativeImage(), native);
  EXPECT_EQ(one.Width(), 37U);
  EXPECT_EQ(Loaded(), 1U);
  one = image_test::Picture(2, 2, false);
  EXPECT_EQ(one.Kind(), AGImage::kKindOwned);
  EXPECT_TRUE(one.ResourceName().IsEmpty());
  EXPECT_TRUE(one.SetupFromResources(one.ResourceName() + b_));
  EXPECT_FALSE(one.SetupFromResources(kAKNullString));
  EXPECT_TRUE(one.IsEmpty());
  EXPECT_EQ(Loaded(), 1U);
}

TEST_F(AGSharedImagesTest, Missing_OrNoImage_IsLogged_AndLeavesTheImageEmpty) {
  PutResource("ak_test_text.png", "../CMakeLists.txt");
  const file_test::LogLines lines;
  for (const char* name : {"ak_test_missing.png", "ak_test_text.png"}) {
    AGImage image;
    image.SetupFromResources(a_);
    EXPECT_FALSE(image.SetupFromResources(AKString(name)));
    EXPECT_TRUE(image.IsEmpty());
    EXPECT_EQ(Loaded(), 0U);
    EXPECT_EQ(file_test::LogLines::Take(),
              std::vector<std::string>{std::string("# AKLib Error -895: Can't find resource \"") + name + "\"."});
  }
}

}  // namespace
