// Writes JSON (RFC 8259): one value on one line, UTF-8.
//
// Values are written in order; commas and colons come by themselves. Bytes that are no UTF-8 become U+FFFD; numbers are
// the shortest that read back the same, and null where JSON has none (infinite, not a number).
#pragma once

#include <string>
#include <string_view>
#include <vector>

class AKValue;

namespace host {

class JsonWriter {
 public:
  void BeginObject() { Open('{'); }
  void EndObject() { Close('}'); }
  void BeginArray() { Open('['); }
  void EndArray() { Close(']'); }
  /// The name of the next value within an object.
  void Key(std::string_view name);

  void String(std::string_view utf8);
  void Number(double number);
  void Integer(long long number);
  void Bool(bool value);
  void Null();
  /// A kit value: dictionaries become objects, arrays arrays, blocks of bytes hexadecimal digits, empty values null.
  void Value(const AKValue& value);

  // A name and its value.

  void String(std::string_view name, std::string_view utf8);
  void Number(std::string_view name, double number);
  void Integer(std::string_view name, long long number);
  void Bool(std::string_view name, bool value);

  /// All that was written, with a line end.
  std::string Line() const { return text_ + "\n"; }

 private:
  void Open(char bracket);
  void Close(char bracket);
  void BeforeValue();

  std::string text_;
  std::vector<bool> filled_;  // of each open bracket: whether a value stands in it
  bool afterKey_ = false;
};

}  // namespace host
