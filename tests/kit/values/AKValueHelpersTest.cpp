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

}  // namespace
