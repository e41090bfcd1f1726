#include "host/validator/Values.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "kit/containers/AKMemoryBlock.h"
#include "kit/values/AKValueArray.h"
#include "kit/values/AKValueHelpers.h"

namespace host::validator {
namespace {

constexpr double kNumbers[] = {0, 1, 0.5, 0.25, 2, 3, 7, 10, 33, 90, -1, -0.5, 100, 359.5, 1000, -1000};
constexpr long long kWholes[] = {0, 1, 2, 3, 5, 8, 13, 64, 100, -1, 255, 1000, -1000};
const char* const kTexts[] = {"", "a", "A text", "12", "with \"quotes\" and %s%d", "\xC4\xD6\x8E", "two\nlines"};

template <typename From, typename Make>
std::vector<AKValue> Made(const From& from, Make make) {
  std::vector<AKValue> values;
  for (const auto& one : from) values.push_back(make(one));
  return values;
}

AKValue Float(double number) { return AKValueSetasFloat64(number); }
AKValue Whole(long long number) {
  AKValue value;
  value.SetasInteger(number);
  return value;
}
AKValue String(const std::string& text) {
  return AKValueSetasAKString(AKString(text.data(), static_cast<unsigned int>(text.size())));
}
AKValue Bool(bool state) {
  AKValue value;
  value.SetasBool(state);
  return value;
}

bool IsNumber(const AKValue& value) {
  return value.Type() == kAKValueTypeFloat || value.Type() == kAKValueTypeInteger || value.Type() == kAKValueTypeBool;
}

}  // namespace

std::vector<AKValue> OrdinaryValues(const AKValue& old) {
  switch (old.Type()) {
    case kAKValueTypeBool:
      return {Bool(false), Bool(true), Bool(false)};
    case kAKValueTypeInteger:
      return Made(kWholes, &Whole);
    case kAKValueTypeFloat:
      return Made(kNumbers, &Float);
    case kAKValueTypeString:
      return Made(kTexts, &String);
    default:
      return {};
  }
}

AKValue RandomValue(const AKValue& old, Dice* dice) {
  const std::vector<AKValue> ordinary = OrdinaryValues(old);
  if (ordinary.empty()) return old;
  const std::size_t choice = dice->Below(ordinary.size() + 4);
  if (choice < ordinary.size()) return ordinary[choice];
  if (old.Type() == kAKValueTypeFloat) return Float(dice->Unit());
  if (old.Type() == kAKValueTypeInteger) return Whole(static_cast<long long>(dice->Below(40)));
  return ordinary[dice->Below(ordinary.size())];
}

std::vector<AKValue> ExtremeValues(const AKValue& old) {
  using Limits = std::numeric_limits<double>;
  static constexpr double kExtremes[] = {Limits::quiet_NaN(),
                                         Limits::infinity(),
                                         -Limits::infinity(),
                                         Limits::max(),
                                         -Limits::max(),
                                         Limits::min(),
                                         Limits::denorm_min(),
                                         -0.0,
                                         1e300,
                                         4294967296.0,
                                         -4294967296.0,
                                         2147483648.0,
                                         1e15};
  static constexpr long long kWholeExtremes[] = {INT64_MAX, INT64_MIN, INT32_MAX, INT32_MIN, 4294967295, 1LL << 40};
  switch (old.Type()) {
    case kAKValueTypeInteger:
      return Made(kWholeExtremes, &Whole);
    case kAKValueTypeFloat:
      return Made(kExtremes, &Float);
    case kAKValueTypeString: {
      std::string all;
      for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
      return {String(all), String(std::string(1 << 20, 'x')), String("%s%n%s%n%s%n%d%x"),
              String(std::string(300, '\n'))};
    }
    default:
      return OrdinaryValues(old);
  }
}

std::vector<AKValue> WrongValues(const AKValue& old) {
  AKMemoryBlock block;
  block.Allocate(3, true);
  AKDictionary dictionary;
  dictionary.SetValue("Some", Float(3));
  AKValueArray array;
  std::vector<AKValue> values = {AKValue()};
  const auto add = [&values](auto set) {
    values.emplace_back();
    set(&values.back());
  };
  add([&](AKValue* value) { value->SetasBinary(block); });
  add([&](AKValue* value) { value->SetasAKValueArray(array); });
  if (old.Type() != kAKValueTypeDictionary) add([&](AKValue* value) { value->SetasAKDictionary(dictionary); });
  if (IsNumber(old)) values.push_back(String("no number"));
  return values;
}

std::vector<Entry> EntriesOf(const AKDictionary& properties) {
  std::vector<Entry> entries;
  properties.ForEach([&](const AKString& key, const AKValue& value) { entries.push_back({key, value}); });
  return entries;
}

}  // namespace host::validator
