#include <gtest/gtest.h>

#include "kit/values/AKValueHelpers.h"

namespace {

// A value as text: "{x:1 y:2}", "[a b]", texts and numbers as they are.
std::string Shown(const AKValue& value) {
  if (const AKDictionary* const dictionary = value.GetasAKDictionary()) {
    std::string text;
    dictionary->ForEach([&](const AKString& key, const AKValue& entry) {
      text += (text.empty() ? "" : " ") + std::string(key.CStr()) + ":" + Shown(entry);
    });
    return "{" + text + "}";
  }
  if (const AKValueArray* const array = value.GetasAKValueArray()) {
    std::string text;
    for (const AKValue& item : *array) text += (text.empty() ? "" : " ") + Shown(item);
    return "[" + text + "]";
  }
  if (const AKString* const text = value.GetasAKString()) return text->CStr();
  AKString number;
  return number.Assignf("%g", AKValueGetasFloat64(value, true)).CStr();
}

TEST(AKValueHelpers, Setters_OfEachType_StoreItsConvention) {
  const AKUniChars units = [] {
    AKUniChars result;
    result.Append(0x41);
    result.Append(0x20AC);
    return result;
  }();
  AGPointArray points;
  points.Append({1, 2});
  points.Append({3, 4});
  AGColorArray colors;
  colors.Append(AGColor(1, 2, 3));
  const struct {
    AKValue value;
    const char* shown;
  } cases[] = {
      {AKValueSetasAGPoint({1, 2}), "{x:1 y:2}"},
      {AKValueSetasAGSize({1, 2}), "{height:2 width:1}"},
      {AKValueSetasAGRect({1, 2, 3, 4}), "{x1:1 x2:3 y1:2 y2:4}"},
      {AKValueSetasAGInterval({1, 2}), "{beg:1 end:2}"},
      {AKValueSetasAGPlacement(0), "{h:Left v:Bottom}"},
      {AKValueSetasAGPlacement(0x23), "{h:Right v:Top}"},
      {AKValueSetasAGPlacement(0x77), "{h:Stretch v:Stretch}"},
      {AKValueSetasAGPlacement(0x11), "{h:Center v:Center}"},
      {AKValueSetasAGColor(AGColor(255, 0, 7, 128)), "(255;000;007;128)"},
      {AKValueSetasAKUniChars(units), "0041;20AC"},
      {AKValueSetasAKUniChars(AKUniChars()), ""},
      {AKValueSetasAGPointArray(points), "[{x:1 y:2} {x:3 y:4}]"},
      {AKValueSetasAGColorArray(colors), "[(001;002;003;255)]"},
      {AKValueSetasAKStringArray({"a", "", "b"}), "[a  b]"},
      {AKValueSetasAKFilePathArray({AKFilePath("/a/b")}), "[/a/b]"},
      {AKValueSetasAKClassID(AKClassID("StdRect")), "StdRect"},
      {AKValueSetasUInt(~0ULL), "-1"},
  };
  for (const auto& expected : cases) EXPECT_EQ(Shown(expected.value), expected.shown);
}

TEST(AKValueHelpers, Getters_OfWhatTheSettersStore_GiveItBack) {
  const AGRect rect{1, -2, 0.1, 4e9};
  EXPECT_EQ(AKValueGetasAGRect(AKValueSetasAGRect(rect), false), rect);
  EXPECT_EQ(AKValueGetasAGInterval(AKValueSetasAGInterval({7, 8}), false), (AGInterval{7, 8}));
  EXPECT_EQ(AKValueGetasAGSize(AKValueSetasAGSize({7, 8}), false), (AGSize{7, 8}));
  EXPECT_EQ(AKValueGetasAGColor(AKValueSetasAGColor(AGColor(1, 2, 3, 4)), false), AGColor(1, 2, 3, 4));
  EXPECT_EQ(AKValueGetasAKFilePath(AKValueSetasAKFilePath(AKFilePath("a/./b")), false).Text(), AKString("a/./b"));
  AKUniChars units(70000);
  for (unsigned int i = 0; i < units.Count(); ++i) units[i] = static_cast<unsigned short>(i);
  EXPECT_TRUE(AKValueGetasAKUniChars(AKValueSetasAKUniChars(units), false) == units);
  for (AGPlacement bits = 0; bits < 256; ++bits) {
    // Stretch comes back with the centre bit; far edge wins over centre; bits 8 and 0x80 mean nothing.
    AGPlacement wanted = 0;
    for (const unsigned int shift : {0U, 4U}) {
      const AGPlacement axis = bits >> shift & 7;
      wanted |= ((axis & 4) != 0 ? 5U : (axis & 2) != 0 ? 2U : axis) << shift;
    }
    EXPECT_EQ(AKValueGetasAGPlacement(AKValueSetasAGPlacement(bits), false), wanted) << bits;
  }
}

TEST(AKValueHelpers, Getters_OfWrongValues_FailAndLeaveTheOutputAlone) {
  AKDictionary dictionary;
  for (const char* key : {"x1", "y1", "x2"}) dictionary.SetValue(key, AKValueSetasFloat64(1));
  AGRect rect{9, 9, 9, 9};
  EXPECT_FALSE(AKValueGetasAGRect(AKValueSetasAKDictionary(dictionary), &rect, true));
  dictionary.SetValue("y2", AKValueSetasAKString("5"));
  EXPECT_FALSE(AKValueGetasAGRect(AKValueSetasAKDictionary(dictionary), &rect, false));
  EXPECT_EQ(rect, (AGRect{9, 9, 9, 9}));
  EXPECT_TRUE(AKValueGetasAGRect(AKValueSetasAKDictionary(dictionary), &rect, true));
  EXPECT_EQ(rect, (AGRect{1, 1, 1, 5}));
  AGPlacement placement = 9;
  EXPECT_FALSE(AKValueGetasAGPlacement(AKValueSetasAKDictionary(dictionary), &placement, true));
  AKUniChars units(1);
  for (const char* text : {"41", "0041;", "0041;20A", "0041,20AC", "004G", ";0041"}) {
    EXPECT_FALSE(AKValueGetasAKUniChars(AKValueSetasAKString(text), &units, true)) << text;
  }
  EXPECT_EQ(units.Count(), 1U);
  AKStringArray strings(1);
  AKValueArray mixed(2);
  mixed[0].SetasAKString("a");
  EXPECT_FALSE(AKValueGetasAKStringArray(AKValueSetasAKValueArray(mixed), &strings, true));
  EXPECT_EQ(strings.Count(), 1U);
  unsigned char narrow = 0;
  EXPECT_TRUE(AKValueGetasUInt(AKValueSetasSInt(0x1FF), &narrow, false));
  EXPECT_EQ(narrow, 255);
  AKClassID id("Old");
  EXPECT_FALSE(AKValueGetasAKClassID(AKValueSetasSInt(1), &id));
  EXPECT_STREQ(id.chars, "Old");
  EXPECT_STREQ(AKValueGetasAKClassID(AKValueSetasAKString("LongerThan7")).chars, "LongerT");
}

TEST(AKValueEnums, EnumsAndFlags_ByTable_TravelAsWords) {
  const AKValueEnums table[] = {{1, "Bold"}, {4, "Italic"}, {5, "BoldItalic"}, {0, ""}, {8, "Hidden"}};
  const AKValueEnums withNone[] = {{0, "None"}, {2, "Two"}, {0, nullptr}};
  const struct {
    const AKValueEnums* table;
    unsigned int flags;
    const char* flagWords;
    const char* enumWord;
    unsigned int readBack;
  } cases[] = {{table, 5, "Bold Italic BoldItalic", "BoldItalic", 5},
               {table, 1, "Bold", "Bold", 1},
               {table, 8, "", "", 0},
               {table, 0, "", "", 0},
               {table, 7, "Bold Italic BoldItalic", "", 5},
               {withNone, 0, "None", "None", 0},
               {withNone, 2, "None Two", "Two", 2},
               {nullptr, 3, "", "", 0}};
  for (const auto& expected : cases) {
    const AKValue flags = AKValueSetasFlags(expected.flags, expected.table);
    EXPECT_EQ(Shown(flags), expected.flagWords);
    EXPECT_EQ(Shown(AKValueSetasEnum(expected.flags, expected.table)), expected.enumWord);
    EXPECT_EQ(AKValueGetasFlags(flags, expected.table), expected.readBack);
  }
  unsigned int number = 77;
  EXPECT_TRUE(AKValueGetasFlags(AKValueSetasAKString("Italic  Nonsense Bold"), &number, table));
  EXPECT_EQ(number, 5U);
  for (const char* word : {"", "bold", "Bold ", "Hidden"}) {
    EXPECT_FALSE(AKValueGetasEnum(AKValueSetasAKString(word), &number, table)) << word;
  }
  EXPECT_FALSE(AKValueGetasFlags(AKValueSetasSInt(1), &number, table));
  EXPECT_EQ(number, 5U);
}

// All four forms of a type: both setters make the same value, both getters give back what went in; of a value of
// another kind one getter leaves its output alone and the other is zero or empty.
template <typename T, typename Set, typename Make, typename Get, typename Found>
void CheckForms(const char* name, const T& content, Set set, Make make, Get get, Found found) {
  SCOPED_TRACE(name);
  AKMemoryBlock block;
  block.Assign("xyz", 3);
  const AKValue other = std::is_same_v<T, AKMemoryBlock> ? AKValueSetasBool(true) : AKValueSetasBinary(block);
  AKValue value;
  set(&value, content);
  EXPECT_TRUE(value == make(content));
  T output{};
  EXPECT_TRUE(get(value, &output) && output == content);
  EXPECT_TRUE(found(value) == content);
  EXPECT_FALSE(get(other, &output));
  EXPECT_TRUE(output == content);
  EXPECT_TRUE(found(other) == T{});
}
#define CHECK_FORMS(Name, ...)                                                         \
  CheckForms(                                                                          \
      #Name, __VA_ARGS__, [](AKValue* v, const auto& c) { AKValueSetas##Name(v, c); }, \
      [](const auto& c) { return AKValueSetas##Name(c); },                             \
      [](const AKValue& v, auto* c) { return AKValueGetas##Name(v, c, false); },       \
      [](const AKValue& v) { return AKValueGetas##Name(v, false); })

TEST(AKValueHelpers, AllFormsOfEachType_AgreeAndLeaveWhatTheyCannotRead) {
  AKDictionary dictionary;
  dictionary.SetValue("a", AKValueSetasSInt(1));
  AKMemoryBlock block;
  block.Assign("ab", 2);
  AKUniChars units;
  units.Append(0x20AC);
  CHECK_FORMS(Bool, true);
  CHECK_FORMS(SInt, static_cast<signed char>(-3));
  CHECK_FORMS(SInt, static_cast<short>(-300));
  CHECK_FORMS(SInt, -300000);
  CHECK_FORMS(SInt, -3000000000LL);
  CHECK_FORMS(UInt, static_cast<unsigned char>(200));
  CHECK_FORMS(UInt, static_cast<unsigned short>(60000));
  CHECK_FORMS(UInt, 4000000000U);
  CHECK_FORMS(UInt, ~0ULL);
  CHECK_FORMS(Float32, 1.1F);
  CHECK_FORMS(Float64, 1.1);
  CHECK_FORMS(AKString, AKString("text"));
  CHECK_FORMS(AKFilePath, AKFilePath("/a/b"));
  CHECK_FORMS(AKUniChars, units);
  CHECK_FORMS(AKStringArray, AKStringArray{"a", ""});
  CHECK_FORMS(AKFilePathArray, AKFilePathArray{AKFilePath("/a"), AKFilePath("b")});
  CHECK_FORMS(AKValueArray, AKValueArray{AKValueSetasSInt(1), AKValueSetasBool(true)});
  CHECK_FORMS(AKDictionary, dictionary);
  CHECK_FORMS(Binary, block);
  CHECK_FORMS(AGCoord, -2.5);
  CHECK_FORMS(AGPoint, AGPoint{1, 2});
  CHECK_FORMS(AGSize, AGSize{1, 2});
  CHECK_FORMS(AGRect, AGRect{1, 2, 3, 4});
  CHECK_FORMS(AGInterval, AGInterval{1, 2});
  CHECK_FORMS(AGPlacement, AGPlacement{0x22});
  CHECK_FORMS(AGPointArray, AGPointArray{{1, 2}, {3, 4}});
  CHECK_FORMS(AGColorArray, AGColorArray{AGColor(1, 2, 3, 4)});
  // An array with one element that is none of its kind is not read at all.
  AKValue strange;
  strange.SetasAKValueArray({AKValueSetasAGPoint({1, 2}), AKValueSetasBool(true)});
  AGPointArray points = {{5, 5}};
  EXPECT_FALSE(AKValueGetasAGPointArray(strange, &points, false));
  EXPECT_EQ(points.Count(), 1U);
}

}  // namespace
