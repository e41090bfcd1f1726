// Alpha in image files of the native layer, and its numbers, dictionaries and locations.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <vector>

#include "AKPlatform/AKPixelOrder.h"
#include "CoreFoundation/CFNumber.h"
#include "CoreGraphics/CGBitmapContext.h"
#include "CoreGraphics/CGImage.h"
#include "CoreServices/CoreServices.h"
#include "ImageIO/CGImageDestination.h"
#include "ImageIO/CGImageSource.h"

namespace {

CFURLRef NewURL(const std::string& path, bool isDirectory) {
  CFStringRef text = CFStringCreateWithCString(nullptr, path.c_str(), kCFStringEncodingUTF8);
  CFURLRef url = CFURLCreateWithFileSystemPath(nullptr, text, kCFURLPOSIXPathStyle, isDirectory);
  CFRelease(text);
  return url;
}

CGContextRef NewContext(std::vector<unsigned char>* pixels) {
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  CGContextRef context = CGBitmapContextCreate(pixels->data(), 256, 256, 8, 1024, space, kCGBitmapAlphaFirst);
  CGColorSpaceRelease(space);
  return context;
}

// Every premultiplied grey level at every alpha, beside its complement to the alpha.
TEST(CGImageFileTest, PNGAndTIFF_KeepEveryPremultipliedPixel) {
  std::vector<unsigned char> pixels(256 * 1024);
  for (std::size_t alpha = 0; alpha < 256; ++alpha) {
    for (std::size_t level = 0; level <= alpha; ++level) {
      unsigned char* pixel = &pixels[alpha * 1024 + level * 4];
      pixel[0] = static_cast<unsigned char>(alpha);
      pixel[1] = pixel[2] = static_cast<unsigned char>(level);
      pixel[3] = static_cast<unsigned char>(alpha - level);
    }
  }
  std::string path = (std::filesystem::temp_directory_path() / "ak_test_XXXXXX").string();
  ::close(::mkstemp(path.data()));
  CFURLRef url = NewURL(path, false);
  CGContextRef context = NewContext(&pixels);
  CGImageRef image = CGBitmapContextCreateImage(context);
  for (CFStringRef type : {kUTTypePNG, kUTTypeTIFF}) {
    CGImageDestinationRef destination = CGImageDestinationCreateWithURL(url, type, 1, nullptr);
    EXPECT_FALSE(CGImageDestinationFinalize(destination));
    CGImageDestinationAddImage(destination, image, nullptr);
    EXPECT_TRUE(CGImageDestinationFinalize(destination));
    EXPECT_FALSE(CGImageDestinationFinalize(destination));
    CFRelease(destination);
    CGImageSourceRef source = CGImageSourceCreateWithURL(url, nullptr);
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(CGImageSourceCreateImageAtIndex(source, 1, nullptr), nullptr);
    CGImageRef read = CGImageSourceCreateImageAtIndex(source, 0, nullptr);
    CFRelease(source);
    std::vector<unsigned char> copy(pixels.size());
    CGContextRef copyContext = NewContext(&copy);
    CGContextDrawImage(copyContext, CGRectMake(0, 0, 256, 256), read);
    EXPECT_TRUE(copy == pixels);
    CGContextRelease(copyContext);
    CGImageRelease(read);
  }
  CGImageRelease(image);
  CGContextRelease(context);
  CFRelease(url);
  std::filesystem::remove(path);
}

TEST(CFNumberTest, Convert_TellsWhatIsLost) {
  const double reals[] = {2.75, 3e9, -2147483648.0, 1e300, std::nan(""), 16777217};
  const struct {
    bool fitsInt;
    std::int32_t asInt;
    bool fitsFloat;
  } expected[] = {{false, 2, true},  {false, 7, true}, {true, INT32_MIN, true},
                  {false, 7, false}, {false, 7, true}, {true, 16777217, false}};
  for (std::size_t i = 0; i < std::size(reals); ++i) {
    CFNumberRef number = CFNumberCreate(nullptr, kCFNumberFloat64Type, &reals[i]);
    std::int32_t integer = 7;
    float real = 0;
    EXPECT_EQ(CFNumberGetValue(number, kCFNumberSInt32Type, &integer), expected[i].fitsInt) << reals[i];
    EXPECT_EQ(integer, expected[i].asInt) << reals[i];
    EXPECT_EQ(CFNumberGetValue(number, kCFNumberFloat32Type, &real), expected[i].fitsFloat) << reals[i];
    CFRelease(number);
  }
}

TEST(CFDictionaryTest, Find_ByContent_FirstOfEqualKeys_HoldingReferences) {
  const auto text = [](const char* bytes) { return CFStringCreateWithCString(nullptr, bytes, kCFStringEncodingUTF8); };
  const void* keys[] = {text("one"), text("two"), text("one")};
  const void* values[] = {kCFBooleanTrue, text("value"), kCFBooleanFalse};
  CFDictionaryRef dictionary =
      CFDictionaryCreate(nullptr, keys, values, 3, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks);
  const void* value = values[1];
  for (const void* object : {keys[0], keys[1], keys[2], value}) CFRelease(object);
  CFStringRef one = text("one");
  CFStringRef two = text("two");
  EXPECT_EQ(CFDictionaryGetValue(dictionary, one), kCFBooleanTrue);
  EXPECT_EQ(CFStringGetLength(static_cast<CFStringRef>(CFDictionaryGetValue(dictionary, two))), 5);
  CFRelease(one);
  CFRelease(two);
  CFRelease(dictionary);
}

TEST(CFURLTest, Path_ComesBackWithoutItsEnd_AndBadTextHasNoLocation) {
  const struct {
    const char* path;
    CFIndex length;
    bool isDirectory;
  } cases[] = {{"/", 1, true}, {"/a//", 2, true}, {"a/b", 3, false}};
  for (const auto& c : cases) {
    CFURLRef url = NewURL(c.path, false);
    CFStringRef path = CFURLCopyFileSystemPath(url, kCFURLPOSIXPathStyle);
    EXPECT_EQ(CFStringGetLength(path), c.length) << c.path;
    EXPECT_EQ(CFURLHasDirectoryPath(url), c.isDirectory) << c.path;
    CFRelease(path);
    CFRelease(url);
  }
  for (const std::vector<UniChar>& units :
       {std::vector<UniChar>{}, {'a', 0}, {0xD800}, {0xD800, 'a'}, {0xDC00, 0xD800}}) {
    CFStringRef text = CFStringCreateWithCharacters(nullptr, units.data(), static_cast<CFIndex>(units.size()));
    EXPECT_EQ(CFURLCreateWithFileSystemPath(nullptr, text, kCFURLPOSIXPathStyle, false), nullptr);
    CFRelease(text);
  }
}

}  // namespace
