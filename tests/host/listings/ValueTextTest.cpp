// Values as commands print them, as text and as JSON.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/listings/JsonListing.h"
#include "host/listings/JsonWriter.h"
#include "host/model/ObjectProperties.h"
#include "kit/values/AKValueHelpers.h"

namespace host {
namespace {

TEST(ValueTextTest, EachType) {
  AKValueArray array(2);
  array[0] = AKValueSetasBool(true);
  AKDictionary inner;
  inner.SetValue("x", AKValueSetasSInt(std::numeric_limits<long long>::min()));
  AKDictionary outer;
  outer.SetValue("In", AKValueSetasAKDictionary(inner));
  outer.SetValue("Name", AKValueSetasAKString("a \"b\"\\"));
  const unsigned char bytes[] = {0, 0x1F, 0xFF};
  const struct {
    AKValue value;
    const char* text;
    const char* json;
  } cases[] = {{AKValue(), "", "null"},
               {AKValueSetasBool(true), "1", "true"},
               {AKValueSetasBool(false), "0", "false"},
               {AKValueSetasSInt(-7), "-7", "-7"},
               {AKValueSetasFloat64(0.1), "0.1", "0.1"},
               {AKValueSetasFloat64(-1e300), "-1e+300", "-1e+300"},
               {AKValueSetasFloat64(std::nan("")), "nan", "null"},
               {AKValueSetasFloat64(INFINITY), "inf", "null"},
               {AKValueSetasAKString("two\nlines\x7F"), "two\nlines\x7F", R"("two\nlines\u007f")"},
               {AKValueSetasAKValueArray(array), "(data)", "[true, null]"},
               {AKValueSetasBinary(AKMemoryBlock(bytes, 3)), "(data)", R"("001fff")"},
               {AKValueSetasAKDictionary(outer), "{In={x=-9223372036854775808} Name=a \"b\"\\}",
                R"({"In": {"x": -9223372036854775808}, "Name": "a \"b\"\\"})"}};
  for (const auto& [value, text, json] : cases) {
    EXPECT_EQ(TextOf(value), text);
    EXPECT_EQ(JsonOfValue(value), json + std::string("\n"));
  }
}

// Bytes that are no UTF-8 are one replacement character each.
TEST(ValueTextTest, Strings_AreAlwaysUtf8) {
  const std::pair<std::string, std::string> cases[] = {{"", ""},
                                                       {"a\xFF\xFE"
                                                        "b",
                                                        "a\xEF\xBF\xBD\xEF\xBF\xBD"
                                                        "b"},
                                                       {"\xC3\xA9\xC3", "\xC3\xA9\xEF\xBF\xBD"},
                                                       {std::string("\0\x01\t", 3), "\\u0000\\u0001\\u0009"}};
  for (const auto& [bytes, json] : cases) {
    JsonWriter writer;
    writer.String(bytes);
    EXPECT_EQ(writer.Line(), "\"" + json + "\"\n");
  }
}

}  // namespace
}  // namespace host
