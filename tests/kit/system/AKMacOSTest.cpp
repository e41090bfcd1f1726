#include <gtest/gtest.h>

#include "kit/system/AKMacOS.h"

namespace {

struct NativeText {
  explicit NativeText(CFStringRef text) : ref(text) {}
  NativeText(const NativeText&) = delete;
  NativeText& operator=(const NativeText&) = delete;
  ~NativeText() {
    if (ref != nullptr) CFRelease(ref);
  }
  const CFStringRef ref;
};

TEST(AKMacOS, EncodingNumbers_MapBothWays) {
  const std::pair<AKStringEncoding, CFStringEncoding> cases[] = {{1, 0}, {2, 0x0500}, {3, 0x08000100}, {0, 0xFFFFFFFF}};
  for (const auto& [kit, native] : cases) {
    EXPECT_EQ(AKMacOS::CFStringEncodingConvert(kit), native);
    EXPECT_EQ(AKMacOS::AKStringEncodingConvert(native), kit);
  }
  EXPECT_EQ(AKMacOS::CFStringEncodingConvert(4), 0xFFFFFFFFU);
  EXPECT_EQ(AKMacOS::AKStringEncodingConvert(1), 0U);
}

TEST(AKMacOS, Text_CrossesBothWays) {
  // e acute, the euro sign, and a smiling face that takes a surrogate pair.
  const AKString utf8("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  const NativeText text(AKMacOS::CFStringConvert(utf8, kCFStringEncodingUTF8));
  ASSERT_NE(text.ref, nullptr);
  ASSERT_EQ(CFStringGetLength(text.ref), 4);
  UniChar units[4] = {};
  CFStringGetCharacters(text.ref, CFRangeMake(1, 3), units);
  EXPECT_EQ(units[0], 0x20AC);
  EXPECT_EQ(units[1], 0xD83D);
  EXPECT_EQ(units[2], 0xDE00);
  EXPECT_EQ(AKMacOS::AKStringConvert(text.ref, kCFStringEncodingUTF8), utf8);
  EXPECT_EQ(AKMacOS::AKStringConvert(text.ref, kCFStringEncodingMacRoman), "\x8E\xDB?");
  EXPECT_EQ(AKMacOS::AKStringConvert(text.ref, kCFStringEncodingWindowsLatin1), "\xE9\x80?");
  EXPECT_EQ(AKMacOS::AKStringConvert(text.ref, 77), "");
  const UniChar lone[] = {'a', 0xDC00, 0xD800};
  const NativeText broken(CFStringCreateWithCharacters(kCFAllocatorDefault, lone, 3));
  EXPECT_EQ(AKMacOS::AKStringConvert(broken.ref, kCFStringEncodingUTF8),
            "a?"
            "?");
}

TEST(AKMacOS, TextThatCannotCross_GivesNullOrEmpty) {
  EXPECT_EQ(AKMacOS::CFStringConvert("", kCFStringEncodingUTF8), nullptr);
  EXPECT_EQ(AKMacOS::CFStringConvert("\xC3", kCFStringEncodingUTF8), nullptr);
  EXPECT_EQ(AKMacOS::CFStringConvert("a", 77), nullptr);
  EXPECT_EQ(AKMacOS::AKStringConvert(nullptr, kCFStringEncodingUTF8), "");
  EXPECT_EQ(CFStringCreateWithCString(kCFAllocatorDefault, "\x8E", kCFStringEncodingMacRoman), nullptr);
  const NativeText ascii(CFStringCreateWithCString(kCFAllocatorDefault, "abc", kCFStringEncodingMacRoman));
  EXPECT_EQ(AKMacOS::AKStringConvert(ascii.ref, kCFStringEncodingUTF8), "abc");
  const CFTypeRef kept = CFRetain(ascii.ref);
  CFRelease(kept);
  EXPECT_EQ(CFStringGetLength(ascii.ref), 3);
}

}  // namespace
