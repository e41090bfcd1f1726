#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "kit/files/AKFilePath.h"
#include "kit/values/AKValueHelpers.h"

namespace {

using Standard = std::filesystem::path;

std::string TextOf(const AKFilePath& path) { return path.Text().CStr(); }

// Few letters, so that names, dots and separators meet in every way. A doubled separator at the beginning is left out:
// the standard leaves its meaning to the system.
std::string RandomPath(std::mt19937& random) {
  std::string text;
  for (unsigned int length = random() % 12; length > 0; --length) text += "//..ab"[random() % 6];
  while (text.rfind("//", 0) == 0) text.erase(0, 1);
  return text;
}

std::vector<std::string> ComponentsOf(const AKFilePath& path) {
  std::vector<std::string> names;
  for (const AKString& name : path.Components()) names.emplace_back(name.CStr());
  return names;
}

TEST(AKFilePath, RandomPaths_AgainstTheStandardLibrary_Agree) {
  constexpr unsigned int kSeed = 7;
  std::mt19937 random(kSeed);
  for (int i = 0; i < 20000; ++i) {
    const std::string first = RandomPath(random);
    const std::string second = RandomPath(random);
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ": \"" + first + "\" and \"" + second + "\"");
    const AKFilePath path(first.c_str());
    const AKFilePath other(second.c_str());
    const Standard standard(first);
    const Standard standardOther(second);
    std::vector<std::string> names;
    for (const Standard& name : standard) names.push_back(name.string());
    ASSERT_EQ(ComponentsOf(path), names);
    ASSERT_EQ(path.FileName().CStr(), standard.filename().string());
    ASSERT_EQ(path.FileNameWithoutExtension().CStr(), standard.stem().string());
    ASSERT_EQ(path.Extension().CStr(), standard.extension().string());
    ASSERT_EQ(Standard(TextOf(path.Folder())), standard.has_relative_path() ? standard.parent_path() : standard);
    ASSERT_EQ(TextOf(path / other), (standard / standardOther).string());
    ASSERT_EQ(path == other, standard == standardOther);
    ASSERT_EQ(path < other, standard < standardOther);
    AKFilePath changed = path;
    changed.Simplify();
    ASSERT_EQ(TextOf(changed), standard.lexically_normal().string());
    ASSERT_EQ(TextOf(path.RelativeTo(other)), standard.lexically_relative(standardOther).string());
    changed = path;
    changed.SetExtension("c");
    ASSERT_EQ(TextOf(changed), Standard(first).replace_extension("c").string());
    changed = path;
    changed.SetFileName("c.d");
    ASSERT_EQ(TextOf(changed), Standard(first).replace_filename("c.d").string());
  }
}

TEST(AKFilePath, FolderAndName_SetOneByOne_MakeAPath) {
  AKFilePath path;
  path.SetPath("/home/user");
  EXPECT_EQ(TextOf(path), "/home/user/");
  path.SetFileName("file.txt");
  EXPECT_EQ(TextOf(path), "/home/user/file.txt");
  path.SetPath("/else/");
  EXPECT_EQ(TextOf(path), "/else/file.txt");
  path.SetPath("");
  EXPECT_EQ(TextOf(path), "file.txt");
  EXPECT_TRUE(path.HasExtension("TXT") && path.HasExtension(".txt") && !path.HasExtension("tx"));
  EXPECT_EQ(TextOf(AKFilePath("../b").AbsoluteFrom(AKFilePath("/x/a"))), "/x/b");
}

}  // namespace
