#include "host/listings/JsonWriter.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "host/text/DisplayText.h"
#include "host/text/Utf8Check.h"
#include "kit/containers/AKMemoryBlock.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueArray.h"

namespace host {
namespace {

void AppendEscaped(std::string* text, char byte) {
  const auto code = static_cast<unsigned char>(byte);
  if (byte == '"' || byte == '\\') {
    *text += '\\';
    *text += byte;
  } else if (byte == '\n') {
    *text += "\\n";
  } else if (code < 32 || code == 127) {
    char escape[8];
    std::snprintf(escape, sizeof(escape), "\\u%04x", code);
    *text += escape;
  } else {
    *text += byte;
  }
}

std::string Hexadecimal(const AKMemoryBlock& block) {
  std::string digits;
  for (unsigned int i = 0; i < block.Size(); ++i) {
    char pair[4];
    std::snprintf(pair, sizeof(pair), "%02x", block.Data()[i]);
    digits += pair;
  }
  return digits;
}

}  // namespace

void JsonWriter::BeforeValue() {
  if (!afterKey_ && !filled_.empty()) {
    if (filled_.back()) text_ += ", ";
    filled_.back() = true;
  }
  afterKey_ = false;
}

void JsonWriter::Open(char bracket) {
  BeforeValue();
  text_ += bracket;
  filled_.push_back(false);
}

void JsonWriter::Close(char bracket) {
  text_ += bracket;
  filled_.pop_back();
}

void JsonWriter::Key(std::string_view name) {
  String(name);
  text_ += ": ";
  afterKey_ = true;
}

void JsonWriter::String(std::string_view utf8) {
  BeforeValue();
  text_ += '"';
  while (!utf8.empty()) {
    const std::size_t good = FindInvalidUtf8(utf8);
    for (const char byte : utf8.substr(0, good)) AppendEscaped(&text_, byte);
    utf8.remove_prefix(good);
    if (utf8.empty()) break;
    text_ += "\xEF\xBF\xBD";
    utf8.remove_prefix(1);
  }
  text_ += '"';
}

void JsonWriter::Number(double number) {
  if (!std::isfinite(number)) {
    Null();
    return;
  }
  BeforeValue();
  char digits[40];
  text_.append(digits, std::to_chars(digits, digits + sizeof(digits), number).ptr);
}

void JsonWriter::Integer(long long number) {
  BeforeValue();
  text_ += std::to_string(number);
}

void JsonWriter::Bool(bool value) {
  BeforeValue();
  text_ += value ? "true" : "false";
}

void JsonWriter::Null() {
  BeforeValue();
  text_ += "null";
}

void JsonWriter::Value(const AKValue& value) {
  bool flag = false;
  long long integer = 0;
  double number = 0;
  switch (value.Type()) {
    case kAKValueTypeBool:
      value.GetasBool(&flag, false);
      Bool(flag);
      break;
    case kAKValueTypeInteger:
      value.GetasInteger(&integer, false);
      Integer(integer);
      break;
    case kAKValueTypeFloat:
      value.GetasFloat(&number, false);
      Number(number);
      break;
    case kAKValueTypeString:
      String(DisplayText(*value.GetasAKString()));
      break;
    case kAKValueTypeDictionary:
      BeginObject();
      value.GetasAKDictionary()->ForEach([this](const AKString& key, const AKValue& entry) {
        Key(DisplayText(key));
        Value(entry);
      });
      EndObject();
      break;
    case kAKValueTypeArray:
      BeginArray();
      for (const AKValue& entry : *value.GetasAKValueArray()) Value(entry);
      EndArray();
      break;
    case kAKValueTypeBinary:
      String(Hexadecimal(*value.GetasBinary()));
      break;
    default:
      Null();
  }
}

void JsonWriter::String(std::string_view name, std::string_view utf8) {
  Key(name);
  String(utf8);
}

void JsonWriter::Number(std::string_view name, double number) {
  Key(name);
  Number(number);
}

void JsonWriter::Integer(std::string_view name, long long number) {
  Key(name);
  Integer(number);
}

void JsonWriter::Bool(std::string_view name, bool value) {
  Key(name);
  Bool(value);
}

}  // namespace host
