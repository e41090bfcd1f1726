#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueHelpers.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

AKValue Number(long long number) { return AKValueSetasSInt(number); }

// "A.B=1 C=2": the paths of all values but dictionaries, an empty dictionary as "A={}".
std::string Flat(const AKDictionary& dictionary, const std::string& prefix = "") {
  std::string text;
  dictionary.ForEach([&](const AKString& key, const AKValue& value) {
    const std::string path = prefix + key.CStr();
    const AKDictionary* const inner = value.GetasAKDictionary();
    std::string entry = path + "=" + (inner != nullptr ? "{}" : std::to_string(AKValueGetasSInt(value, true)));
    if (inner != nullptr && !inner->IsEmpty()) entry = Flat(*inner, path + ".");
    text += (text.empty() ? "" : " ") + entry;
  });
  return text;
}

// A dictionary of that many levels would overflow the stack when it goes.
TEST(AKDictionary, Nesting_BeyondItsLimit_IsRefusedAndChangesNothing) {
  const auto pathOf = [](unsigned int names) {
    std::string path = "A";
    for (unsigned int i = 1; i < names; ++i) path += ".A";
    return AKString(path);
  };
  AKDictionary dictionary;
  EXPECT_EQ(dictionary.SetValue(pathOf(100000), Number(1)), -881);
  EXPECT_EQ(dictionary.AddValue(pathOf(513), Number(1)), -881);
  EXPECT_EQ(dictionary.ReplaceValue(pathOf(513), Number(1)), -873);
  EXPECT_TRUE(dictionary.IsEmpty());
  AKDictionary inner;
  EXPECT_EQ(inner.SetValue(pathOf(112), Number(1)), 0);
  const AKValue value = AKValueSetasAKDictionary(inner);
  EXPECT_EQ(dictionary.SetValue(pathOf(401), value), -881);
  EXPECT_EQ(dictionary.SetValue(pathOf(400), value), 0);
  EXPECT_TRUE(dictionary.ContainsKey(pathOf(512)));
  EXPECT_EQ(dictionary.SetValue(pathOf(512), AKValueSetasAKDictionary(AKDictionary())), -881);
  EXPECT_EQ(dictionary.SetValue(pathOf(600), Number(2)), 0);  // ends at the number in its way
  EXPECT_EQ(AKValueGetasSInt(dictionary.GetValue(pathOf(512)), false), 2);
}

enum class Call { kAdd, kSet, kReplace, kRemove, kCopy };

TEST(AKDictionary, KeyPaths_OfEachCall_GiveTheirStatusAndContent) {
  const struct {
    Call call;
    const char* path;
    int status;
    const char* after;
  } steps[] = {
      {Call::kSet, "A.B.C", 0, "A.B.C=0"},
      {Call::kAdd, "A.B.C", -872, "A.B.C=0"},
      {Call::kReplace, "A.X", -873, "A.B.C=0"},
      {Call::kReplace, "X.Y", -873, "A.B.C=0"},
      {Call::kReplace, "A.B.C", 0, "A.B.C=4"},
      {Call::kAdd, "A.B.D", 0, "A.B.C=4 A.B.D=5"},
      {Call::kAdd, "A.B.C.E", -872, "A.B.C=4 A.B.D=5"},
      {Call::kCopy, "A.B.C.E", -874, "A.B.C=4 A.B.D=5"},
      {Call::kRemove, "A.B.C.E", -874, "A.B.C=4 A.B.D=5"},
      {Call::kCopy, "A.Q", -873, "A.B.C=4 A.B.D=5"},
      {Call::kCopy, "A.Q.R", -873, "A.B.C=4 A.B.D=5"},
      {Call::kSet, "A.B.C.E.F", 0, "A.B.C=11 A.B.D=5"},  // the value in the way gives place
      {Call::kReplace, "A.B.D.E", 0, "A.B.C=11 A.B.D=12"},
      {Call::kSet, "_9", 0, "A.B.C=11 A.B.D=12 _9=13"},
      {Call::kSet, "A.B", 0, "A.B=14 _9=13"},
      {Call::kRemove, "A.B", 0, "A={} _9=13"},
      {Call::kRemove, "A.B", -873, "A={} _9=13"},
      {Call::kSet, "A..B", -874, "A={} _9=13"},
      {Call::kAdd, ".A", -874, "A={} _9=13"},
      {Call::kReplace, "A.", -874, "A={} _9=13"},
      {Call::kRemove, "A-B", -874, "A={} _9=13"},
      {Call::kCopy, "", -874, "A={} _9=13"},
      {Call::kSet, "\xE9", -874, "A={} _9=13"},
  };
  AKDictionary dictionary;
  int number = 0;
  for (const auto& step : steps) {
    SCOPED_TRACE(step.path);
    AKValue value = Number(number++);
    int status = 0;
    if (step.call == Call::kAdd) status = dictionary.AddValue(step.path, value);
    if (step.call == Call::kSet) status = dictionary.SetValue(step.path, value);
    if (step.call == Call::kReplace) status = dictionary.ReplaceValue(step.path, value);
    if (step.call == Call::kRemove) status = dictionary.RemoveValue(step.path);
    if (step.call == Call::kCopy) status = dictionary.GetValueCopy(step.path, &value);
    EXPECT_EQ(status, step.status);
    EXPECT_EQ(Flat(dictionary), step.after);
    EXPECT_TRUE(step.call != Call::kCopy || value == Number(number - 1));
  }
}

TEST(AKDictionary, Merge_WithEqualKeys_TakesWholeEntries) {
  AKDictionary first;
  AKDictionary second;
  first.SetValue("A.B", Number(1));
  first.SetValue("C", Number(2));
  second.SetValue("A.D", Number(3));
  second.SetValue("E", Number(4));
  AKDictionary merged(first);
  merged.Merge(second, true);
  EXPECT_EQ(Flat(merged), "A.D=3 C=2 E=4");
  merged = first;
  merged.Merge(second, false);
  EXPECT_EQ(Flat(merged), "A.B=1 C=2 E=4");
  merged.Merge(merged, true);
  merged.Merge(*merged.GetValue("A").GetasAKDictionary(), true);
  EXPECT_EQ(Flat(merged), "A.B=1 B=1 C=2 E=4");
  EXPECT_EQ(Flat(first), "A.B=1 C=2");
}

// Keys of one letter, keys that share long beginnings, and keys that differ in length alone.
AKString RandomKey(std::mt19937& random, unsigned int range) {
  AKString key(random() % 3 == 0 ? "a_beginning_of_more_than_twenty_bytes_" : random() % 2 == 0 ? "k" : "");
  key.Appendf(random() % 2 == 0 ? "%u" : "%08u", static_cast<unsigned int>(random() % range));
  return key;
}

void ExpectSame(const AKDictionary& dictionary, const std::map<std::string, long long>& model) {
  ASSERT_EQ(dictionary.Count(), model.size());
  auto expected = model.begin();
  bool same = true;
  dictionary.ForEach([&](const AKString& key, const AKValue& value) {
    same = same && expected->first == key.CStr() && expected->second == AKValueGetasSInt(value, false);
    ++expected;
  });
  ASSERT_TRUE(same);
}

TEST(AKDictionary, RandomOperations_AgainstAnOrderedMap_KeepContentAndOrder) {
  for (unsigned int seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    AKDictionary dictionary;
    std::map<std::string, long long> model;
    const unsigned int range = seed % 2 == 0 ? 50 : 5000;
    for (unsigned int step = 0; step < 12000; ++step) {
      const bool shrinks = step / 3000 % 2 == 1;  // grows and shrinks by turns
      const AKString key = RandomKey(random, range);
      if (random() % 4 < (shrinks ? 1U : 3U)) {
        ASSERT_EQ(dictionary.SetValue(key, Number(step)), 0);
        model[key.CStr()] = step;
      } else {
        const auto near = model.lower_bound(key.CStr());
        const AKString gone = near == model.end() || random() % 4 == 0 ? key : AKString(near->first);
        ASSERT_EQ(dictionary.RemoveValue(gone), model.erase(gone.CStr()) == 1 ? 0 : -873);
      }
      const auto found = model.find(key.CStr());
      ASSERT_EQ(dictionary.ContainsKey(key), found != model.end());
    }
    ExpectSame(dictionary, model);
    const AKDictionary copy(dictionary);
    while (!model.empty()) {
      auto gone = model.lower_bound(RandomKey(random, range).CStr());
      if (gone == model.end()) gone = model.begin();
      ASSERT_EQ(dictionary.RemoveValue(gone->first.c_str()), 0);
      model.erase(gone);
    }
    EXPECT_TRUE(dictionary.IsEmpty());
    EXPECT_EQ(copy.IsEqual(dictionary), copy.IsEmpty());
  }
}

TEST(AKDictionary, BinFile_SavedTwice_IsReplacedWholeWithItsPermissions) {
  const file_test::TempFolder folder;
  AKDictionary dictionary;
  EXPECT_EQ(dictionary.SaveToBinFile(folder.KitPath("file")), 0);
  EXPECT_EQ(file_test::ReadBytes(folder.Path("file")), file_test::Bytes("'dict' 04000000 00000000"));
  std::filesystem::permissions(folder.Path("file"), std::filesystem::perms(0640));
  std::filesystem::create_symlink("file", folder.Path("link"));
  dictionary.SetValue("A.B", Number(5));
  EXPECT_EQ(dictionary.SaveToBinFile(folder.KitPath("link")), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
  EXPECT_EQ(std::filesystem::status(folder.Path("file")).permissions(), std::filesystem::perms(0640));
  AKDictionary loaded;
  EXPECT_EQ(loaded.LoadFromBinFile(folder.KitPath("file")), 0);
  EXPECT_TRUE(loaded == dictionary);
  EXPECT_EQ(folder.EntryCount(), 2U);
  EXPECT_EQ(dictionary.SaveToBinFile(folder.KitPath("missing/file")), -891);
  EXPECT_EQ(dictionary.SaveToBinFile(AKFilePath("/dev/full")), -889);
  EXPECT_EQ(loaded.LoadFromBinFile(folder.KitPath("missing")), -891);
  EXPECT_TRUE(loaded.IsEmpty());
}

}  // namespace
