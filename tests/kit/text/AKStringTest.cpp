#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <thread>

#include "kit/text/AKString.h"

namespace {

std::string Std(const AKString& text) { return {text.CStr(), text.Length()}; }

// A random walk over several handles that share buffers, each shadowed by a std::string. Every step changes one handle;
// all of them are compared, so that a change that shows through a shared buffer is seen at once.
class RandomWalk {
 public:
  explicit RandomWalk(unsigned int seed) : random_(seed) {}

  void Step() {
    const unsigned int i = Below(kHandles);
    const unsigned int j = Below(kHandles);
    AKString& text = texts_[i];
    const AKString& other = texts_[j];
    std::string& model = models_[i];
    const std::string otherModel = models_[j];
    const unsigned int n = Below(model.size() + 3);
    const unsigned int from = Below(model.size() + 1);
    const unsigned int rest = static_cast<unsigned int>(model.size()) - from;
    const char c = "abA,\0 "[Below(6)];
    const std::function<void()> steps[] = {
        [&] { text = other, model = otherModel; },
        [&] { text.Append(other), model += otherModel; },
        [&] { text.Prepend(other), model = otherModel + model; },
        [&] { text.Assign(text.CStr() + from, rest), model = model.substr(from); },  // a part of its own bytes
        [&] { text.Append(text.CStr() + from, rest), model += model.substr(from); },
        [&] { text.Prepend(text.CStr() + from, rest), model = model.substr(from) + model; },
        [&] { text.Append(c), model += c; },
        [&] { text.Resize(n), model.resize(n); },
        [&] { text.SetMaxLength(n), model.resize(std::min<std::size_t>(n, model.size())); },
        [&] { text.RemoveFirstChars(n), model.erase(0, n); },
        [&] { text.RemoveLastChars(n), model.resize(model.size() - std::min<std::size_t>(n, model.size())); },
        [&] { Replace(&text, &model, other, texts_[Below(kHandles)], from); },
        [&] { text.Reverse(), model = std::string(model.rbegin(), model.rend()); },
        [&] { text.SetCapacity(n * 4); },
        [&] { text.Shrink(); },
        [&] { text.Clear(), model.clear(); },
        [&] { text.Free(), model.clear(); },
        [&] { text.MutableData()[model.size() / 2] = model[model.size() / 2] = model.empty() ? '\0' : c; },
    };
    steps[Below(model.size() > 200 ? 1 : std::size(steps))]();
  }

  void Check() {
    for (unsigned int i = 0; i < kHandles; ++i) {
      const unsigned int j = Below(kHandles);
      ASSERT_EQ(Std(texts_[i]), models_[i]);
      ASSERT_EQ(texts_[i].CStr()[texts_[i].Length()], '\0');
      ASSERT_LE(texts_[i].Length(), texts_[i].Capacity());
      ASSERT_EQ(texts_[i] < texts_[j], models_[i] < models_[j]);
      ASSERT_EQ(texts_[i] == texts_[j], models_[i] == models_[j]);
      CheckSearch(texts_[i], models_[i], texts_[j].SubString(0, Below(4)), Below(6));
    }
  }

 private:
  static constexpr unsigned int kHandles = 4;

  unsigned int Below(std::size_t limit) { return static_cast<unsigned int>(random_() % limit); }

  static void CheckSearch(const AKString& text, const std::string& model, const AKString& sub, unsigned int at) {
    unsigned int pos = 0;
    const std::size_t first = sub.IsEmpty() ? std::string::npos : model.find(Std(sub), at);
    ASSERT_EQ(text.Find(sub, at, &pos), first != std::string::npos);
    ASSERT_EQ(pos, static_cast<unsigned int>(first));
    const std::size_t last = model.rfind(Std(sub), static_cast<unsigned int>(model.size()) - (at + 1));
    ASSERT_EQ(text.FindFromEnd(sub, at, &pos), last != std::string::npos);
    ASSERT_EQ(pos, static_cast<unsigned int>(last));
  }

  static void Replace(AKString* text, std::string* model, const AKString& find, const AKString& with,
                      unsigned int start) {
    const std::string sought = Std(find);
    const std::string put = Std(with);
    unsigned int count = 0;
    for (std::size_t p = sought.empty() || sought == put ? std::string::npos : start;
         (p = model->find(sought, p)) != std::string::npos; p += put.size(), ++count) {
      model->replace(p, sought.size(), put);
    }
    EXPECT_EQ(text->ReplaceAll(find, with, start), count);
  }

  std::mt19937 random_;
  AKString texts_[kHandles];
  std::string models_[kHandles];
};

TEST(AKString, RandomEdits_OfHandlesThatShareBuffers_FollowTheModel) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  RandomWalk walk(seed);
  for (int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i) {
    walk.Step();
    walk.Check();
  }
}

TEST(AKString, Format_OfTheStringItself_UsesTheOldText) {
  AKString text("ab");
  text.Assignf("<%s%s>", text.CStr(), text.CStr());
  text.Appendf("%d%s", 7, text.CStr()).Prependf("%s|", text.CStr());
  EXPECT_EQ(text, "<abab>7<abab>|<abab>7<abab>");
}

TEST(AKString, NullEmptyAndHugeArguments_DoNothingOrEmpty) {
  const char* const null = nullptr;
  AKString& (AKString::*const assignf)(const char*, ...) = &AKString::Assignf;  // the compiler knows no null format
  AKString& (AKString::*const appendf)(const char*, ...) = &AKString::Appendf;
  AKString text("abc");
  (text.Append(null).Append(null, 5).Append("x", 0).Prepend(null).Prepend(null, 5).*appendf)(null);
  EXPECT_FALSE(text.RemoveFirstChars(0) || text.Find("a", 0xFFFFFFFF, nullptr));
  EXPECT_EQ(text, "abc");
  EXPECT_EQ(AKString(null).Length() + AKString("x").Assign(null).Length() + (AKString("x").*assignf)(null).Length(),
            0U);
  EXPECT_TRUE(text.RemoveLastChars(0xFFFFFFFF) && text.IsEmpty());
  EXPECT_THROW(text.SetCapacity(0xFFFFFFFF), std::bad_alloc);
}

TEST(AKString, SubStringAndSeparators) {
  const AKString text("a.b.c");
  const std::pair<AKString, const char*> results[] = {
      {text.SubString(1, 100), ".b.c"}, {text.SubString(1, 3), ".b"},
      {text.SubString(2, 2), ""},       {text.SubString(0xFFFFFFFF, 0xFFFFFFFF), ""},
      {text.AfterFirst("."), "b.c"},    {text.AfterLast("."), "c"},
      {text.BeforeFirst("."), "a"},     {text.BeforeLast("."), "a.b"},
      {text.BeforeFirst("a"), ""},      {text.AfterLast("x"), ""},
  };
  for (const auto& [result, expected] : results) EXPECT_EQ(result, expected);
}

TEST(AKString, GetToken_TakesTheLastByteThatStopsIt) {
  const std::tuple<const char*, unsigned int, const char*> cases[] = {
      {"Rounding:0.5", 0, "Rounding"},
      {"Rounding:0.5", 9, "0"},
      {"a b", 0, "a"},
      {"ab-", 0, "ab-"},
      {"abc!d", 0, "abc"},
      {"abc!", 3, "!"},
      {"!a", 0, ""},
      {"a", 1, ""},
      {"_x9\x8E", 0, "_x9\x8E"},
      {"a\x8Eq", 0, "a"},
      {"a", 0xFFFFFFFF, ""},
  };
  for (const auto& [text, start, token] : cases) EXPECT_EQ(AKString(text).GetToken(start), token) << text;
}

TEST(AKString, Comparison_WithAndWithoutCase) {
  const AKString abc("abc");
  const AKString empty;
  EXPECT_EQ(abc.Compare("ABC", false), 0);
  EXPECT_EQ(abc.Compare("abcd", true), -1);
  EXPECT_EQ(abc.Compare("ab", true), 1);
  EXPECT_LT(abc.Compare("\xE9", true), 0);  // bytes are unsigned
  EXPECT_TRUE(AKString("a\0b", 3).IsEqual(AKString("A\0c", 3), false));
  EXPECT_TRUE(abc.Contains("BC", false) && abc.Contains("", true) && empty.Contains(empty, true));
  EXPECT_FALSE(abc.Contains("BC", true) || empty.Contains("", true) || empty.Contains("", false));
}

TEST(AKString, StartsAndEndsWith_GiveTheRest) {
  AKString rest("-x-x.png");
  EXPECT_TRUE(rest.StartsWith("-x", &rest) && rest.EndsWith(".png", &rest));
  EXPECT_EQ(rest, "-x");
  EXPECT_FALSE(AKString("-i").StartsWith("-id:", &rest));
  EXPECT_EQ(rest, "");
  rest = "old";
  EXPECT_FALSE(AKString("ng").EndsWith(".png", &rest));
  EXPECT_EQ(rest, "");
}

TEST(AKString, Replace_OfTheStringItself) {
  AKString text("aaa");
  EXPECT_EQ(text.ReplaceAll("a", "aa", 0), 3U);
  EXPECT_TRUE(text.ReplaceFirst("aa", "b", 1) && !text.ReplaceFirst("x", "y", 0) && !text.ReplaceFirst("a", "a", 0));
  EXPECT_EQ(text, "abaaa");
  EXPECT_EQ(text.ReplaceAll(text, "a-a", 0), 1U);
  EXPECT_EQ(text.ReplaceAll("a", text, 0), 2U);
  EXPECT_TRUE(text.RemoveBegin("a-") && text.RemoveEnd("-a") && !text.RemoveEnd("-"));
  EXPECT_EQ(text, "a-a");
}

TEST(AKString, Trimming_OfQuotesBlanksAndZeros) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"'abc\"", "abc", "'abc\""}, {"\"", "", "\""},           {"a'", "a", "a'"}, {" \t a  b\t", " \t a  b\t", "a  b"},
      {" \t", " \t", ""},          {"\n x ", "\n x ", "\n x"}, {"", "", ""},
  };
  for (const auto& [original, without_quotes, without_blanks] : cases) {
    AKString text(original);
    EXPECT_EQ(text.RemoveExtraQuotes(), std::string(original) != without_quotes);
    EXPECT_EQ(text, without_quotes);
    text = original;
    EXPECT_EQ(text.RemoveExtraSpacesAndTabs(), std::string(original) != without_blanks);
    EXPECT_EQ(text, without_blanks);
  }
  AKString zeros("a\0b00\0\0", 7);
  EXPECT_TRUE(zeros.RemoveTrailingZeros() && !zeros.RemoveTrailingZeros());
  EXPECT_EQ(Std(zeros), std::string("a\0b00", 5));
}

TEST(AKString, Classification_OfBytes) {
  EXPECT_TRUE(AKString().IsAlpha() && AKString().IsDigit() && AKString("aZ").IsAlpha() && AKString("a0").IsAlphaNum());
  EXPECT_FALSE(AKString("a0").IsAlpha() || AKString("1\xB2").IsDigit() || AKString("a_").IsAlphaNum());
  EXPECT_EQ(AKString("hELLO wORLD").ToCapitalized(), "Hello world");
  const std::pair<AKString, unsigned int> cases[] = {
      {"a\tb\r\n\x7F", kAKNotFound}, {"a\x01", 1}, {"\x80", 0}, {AKString("a\0\x01", 3), kAKNotFound}};
  for (const auto& [text, expected] : cases) {
    unsigned int bad = 77;
    EXPECT_EQ(text.IsPureAscii(&bad), expected == kAKNotFound);
    EXPECT_EQ(bad, expected);
  }
}

TEST(AKString, CountLines_CountsCrLfTwice) {
  const std::tuple<AKString, unsigned int, unsigned int, unsigned int> cases[] = {
      {"a\r\nb", kAKNotFound, 3, 2}, {"a\r\nb", 1, 1, 2}, {"", 5, 0, 0}, {AKString("\0\n", 2), kAKNotFound, 1, 1}};
  for (const auto& [text, pos, line, column] : cases) {
    unsigned int l = 77;
    unsigned int c = 77;
    EXPECT_EQ(text.CountLinesToPosition(pos, &l, &c), line);
    EXPECT_TRUE(l == line && c == column) << l << " " << c;
  }
}

TEST(AKString, Copies_BetweenThreads_KeepTheCount) {
  const AKString shared("some text that all threads share");
  std::thread threads[4];
  for (std::thread& thread : threads) {
    thread = std::thread([&shared] {
      for (int i = 0; i < 20000; ++i) AKString(shared).Append(i % 16 == 0 ? "!" : "");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(shared, "some text that all threads share");
}

TEST(AKString, Find_InATextOfFalseStarts_IsLinear) {
  // 64 MB of the same byte, and a pattern with another in its middle: the product of the lengths would take minutes.
  AKString text;
  text.Resize(64U << 20);
  AKString sub;
  sub.Resize(1U << 20);
  sub.MutableData()[sub.Length() / 2] = 'x';
  EXPECT_FALSE(text.Find(sub, 0, nullptr));
}

TEST(AKStringGenerateUUID, ManyCalls_GiveDifferentVersion4Texts) {
  const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
  std::set<std::string> seen;
  for (int i = 0; i < 100; ++i) seen.insert(Std(AKStringGenerateUUID()));
  EXPECT_EQ(seen.size(), 100U);
  for (const std::string& text : seen) EXPECT_TRUE(std::regex_match(text, form)) << text;
}

// Lengths at which a search that compares at every start would take hours.
TEST(AKString, Searches_InTextsOfFalseStarts_EndSoon) {
  constexpr unsigned int kLength = 4 << 20;
  const std::string half(kLength / 2, 'a');
  const AKString text((half + half).c_str());
  const AKString falseAtFront(("b" + half).c_str());
  const AKString falseInside((half + "b" + half).substr(kLength / 4, kLength / 2).c_str());
  EXPECT_FALSE(text.Contains(falseInside, false));
  EXPECT_FALSE(text.Contains(falseAtFront, false));
  unsigned int pos = 0;
  EXPECT_FALSE(text.FindFromEnd(falseInside, 0, &pos));
  const AKString withMatch = AKString("b") + half.c_str() + "xb" + half.c_str();
  EXPECT_TRUE((withMatch + half.c_str()).FindFromEnd(AKString(half.c_str()) + "xb", 0, &pos));
  EXPECT_EQ(pos, 1U);
}

TEST(AKString, Searches_AtRandom_FindWhatAPlainSearchFinds) {
  std::mt19937 random(11);
  for (int i = 0; i < 3000; ++i) {
    SCOPED_TRACE("seed 11, step " + std::to_string(i));
    std::string text(random() % (i % 10 == 0 ? 20000 : 60), 'a');
    for (std::size_t k = random() % 8; k > 0 && !text.empty(); --k) text[random() % text.size()] = "bBA"[random() % 3];
    const std::size_t start = text.empty() ? 0 : random() % text.size();
    const std::string sub = text.substr(start, random() % 40) + (random() % 2 == 0 ? "b" : "");
    const unsigned int fromEnd = random() % 30;
    const auto latest = static_cast<unsigned int>(text.size()) - (fromEnd + 1);
    const std::size_t wanted = text.rfind(sub, latest > text.size() ? std::string::npos : latest);
    unsigned int pos = 0;
    ASSERT_EQ(AKString(text).FindFromEnd(AKString(sub), fromEnd, &pos), wanted != std::string::npos);
    ASSERT_EQ(pos, wanted == std::string::npos ? kAKNotFound : wanted);
    std::string upper = text;
    std::string upperSub = sub;
    for (std::string* each : {&upper, &upperSub}) {
      for (char& byte : *each) byte = static_cast<char>(std::toupper(byte));
    }
    ASSERT_EQ(AKString(text).Contains(AKString(sub), false),
              !text.empty() && upper.find(upperSub) != std::string::npos);
  }
}

}  // namespace
