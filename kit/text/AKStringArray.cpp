#include "kit/text/AKStringArray.h"

#include <algorithm>
#include <functional>

namespace {

/// A set of single bytes.
class ByteSet {
 public:
  explicit ByteSet(const char* bytes) {
    for (; *bytes != '\0'; ++bytes) members_[static_cast<unsigned char>(*bytes)] = true;
  }
  bool operator()(char byte) const { return members_[static_cast<unsigned char>(byte)]; }

 private:
  bool members_[256] = {};
};

}  // namespace

AKStringArray AKString::SplitToArray(const char* separators, const char* trimChars) const {
  AKStringArray pieces;
  if (IsEmpty()) return pieces;
  const ByteSet isSeparator(separators != nullptr ? separators : ",;");
  const ByteSet isTrimmed(trimChars != nullptr ? trimChars : " \t\n\r");
  for (const char* start = begin();;) {
    const char* const stop = std::find_if(start, end(), std::cref(isSeparator));
    const char* const first = std::find_if_not(start, stop, std::cref(isTrimmed));
    const char* last = stop;
    while (last > first && isTrimmed(last[-1])) --last;
    pieces.Append(AKString(first, static_cast<unsigned int>(last - first)));
    if (stop == end()) return pieces;
    start = stop + 1;
  }
}

AKString& AKString::BuildFromArray(const AKStringArray& array, const AKString& separator) {
  AKString result;
  constexpr std::uint64_t kBytesPerElement = 16;
  result.SetCapacity(
      static_cast<unsigned int>(std::min<std::uint64_t>(kBytesPerElement * array.Count(), AKSharedBytes::kMaxLength)));
  for (const AKString& element : array) {
    if (!result.IsEmpty()) result.Append(separator.CStr(), separator.Length());
    result.Append(element.CStr(), element.Length());
  }
  Swap(&result);
  return *this;
}

AKStringArray& AKStringArray::AssignWithCStrings(const char* const* list) {
  unsigned int count = 0;
  while (list != nullptr && list[count] != nullptr) ++count;
  return AssignWithCStrings(list, count);
}

AKStringArray& AKStringArray::AssignWithCStrings(const char* const* list, unsigned int count) {
  AKStringArray strings;
  if (list != nullptr) {
    strings.Reserve(count);
    for (unsigned int i = 0; i < count; ++i) strings.Append(AKString(list[i]));
  }
  Swap(&strings);
  return *this;
}

AKString AKStringArray::ConcatToString(const AKString& separator) const {
  AKString text;
  text.BuildFromArray(*this, separator);
  return text;
}

AKStringArray& AKStringArray::ToUpperCase() {
  for (AKString& text : *this) text.ToUpperCase();
  return *this;
}

AKStringArray& AKStringArray::ToLowerCase() {
  for (AKString& text : *this) text.ToLowerCase();
  return *this;
}

AKStringArray& AKStringArray::ToCapitalized() {
  for (AKString& text : *this) text.ToCapitalized();
  return *this;
}
