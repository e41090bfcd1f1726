// AKString: replacement, removal, trimming and case.
#include <algorithm>
#include <cctype>
#include <cstring>

#include "kit/text/AKByteSearch_p.h"
#include "kit/text/AKString.h"

namespace {

bool IsQuote(char byte) { return byte == '\'' || byte == '"'; }

/// What makes a replacement pointless whatever the text holds.
bool MayReplace(const AKString& text, const AKString& find, const AKString& with, unsigned int start) {
  return !find.IsEmpty() && start < text.Length() && !(find == with);
}

template <typename Map>
void MapBytes(AKString* text, Map map) {
  if (text->IsEmpty()) return;
  char* const bytes = text->MutableData();
  std::transform(bytes, bytes + text->Length(), bytes,
                 [&](char byte) { return static_cast<char>(map(static_cast<unsigned char>(byte))); });
}

}  // namespace

bool AKString::ReplaceFirst(const AKString& find, const AKString& with, unsigned int start) {
  unsigned int pos = 0;
  if (!MayReplace(*this, find, with, start) || !Find(find, start, &pos)) return false;
  AKString result;
  result.SetCapacity(Length() - find.Length() + with.Length());
  result.Append(CStr(), pos).Append(with.CStr(), with.Length());
  const unsigned int rest = pos + find.Length();
  result.Append(CStr() + rest, Length() - rest);
  Swap(&result);
  return true;
}

unsigned int AKString::ReplaceAll(const AKString& find, const AKString& with, unsigned int start) {
  if (!MayReplace(*this, find, with, start)) return 0;
  if (find.Length() == with.Length()) return ReplaceAllInPlace(find, with, start);
  AKString result;
  unsigned int count = 0;
  const char* copied = begin();
  for (const char* from = begin() + start;;) {
    const char* const found = akbytes::Find(from, static_cast<unsigned int>(end() - from), find.CStr(), find.Length());
    if (found == nullptr) break;
    if (count == 0) result.SetCapacity(Length());
    ++count;
    result.Append(copied, static_cast<unsigned int>(found - copied)).Append(with.CStr(), with.Length());
    copied = from = found + find.Length();
  }
  if (count == 0) return 0;
  result.Append(copied, static_cast<unsigned int>(end() - copied));
  Swap(&result);
  return count;
}

unsigned int AKString::ReplaceAllInPlace(const AKString& find, const AKString& with, unsigned int start) {
  const unsigned int length = find.Length();
  unsigned int pos = 0;
  // Either argument may be this string itself: then there is one match, the whole text, or none.
  if (!Find(find, start, &pos)) return 0;
  char* const last = MutableData() + Length();
  char* at = last - Length() + pos;
  unsigned int count = 0;
  while (at != nullptr) {
    std::memcpy(at, with.CStr(), length);
    at += length;
    ++count;
    at = const_cast<char*>(akbytes::Find(at, static_cast<unsigned int>(last - at), find.CStr(), length));
  }
  return count;
}

bool AKString::RemoveFirst(const AKString& find, unsigned int start) { return ReplaceFirst(find, {}, start); }

unsigned int AKString::RemoveAll(const AKString& find, unsigned int start) { return ReplaceAll(find, {}, start); }

bool AKString::RemoveBegin(const AKString& prefix) {
  if (!StartsWith(prefix)) return false;
  bytes_.Erase(0, prefix.Length());
  return true;
}

bool AKString::RemoveEnd(const AKString& suffix) {
  if (!EndsWith(suffix)) return false;
  bytes_.Erase(Length() - suffix.Length(), suffix.Length());
  return true;
}

bool AKString::RemoveFirstChars(unsigned int count) {
  if (count == 0 || IsEmpty()) return false;
  if (static_cast<int>(Length()) <= static_cast<int>(count)) {
    Clear();
  } else {
    bytes_.Erase(0, std::min(count, Length()));
  }
  return true;
}

bool AKString::RemoveLastChars(unsigned int count) {
  if (count == 0 || IsEmpty()) return false;
  if (static_cast<int>(Length()) <= static_cast<int>(count)) {
    Clear();
  } else {
    const unsigned int removed = std::min(count, Length());
    bytes_.Erase(Length() - removed, removed);
  }
  return true;
}

bool AKString::RemoveExtraQuotes() {
  const bool atEnd = !IsEmpty() && IsQuote(CStr()[Length() - 1]);
  if (atEnd) RemoveLastChars(1);
  const bool atFront = !IsEmpty() && IsQuote(CStr()[0]);
  if (atFront) RemoveFirstChars(1);
  return atEnd || atFront;
}

bool AKString::RemoveExtraSpacesAndTabs() {
  const auto isBlank = [](char byte) { return byte == ' ' || byte == '\t'; };
  const char* const first = std::find_if_not(begin(), end(), isBlank);
  const char* last = end();
  while (last > first && isBlank(last[-1])) --last;
  const unsigned int start = static_cast<unsigned int>(first - begin());
  const unsigned int length = static_cast<unsigned int>(last - first);
  if (length == Length()) return false;
  Assign(CStr() + start, length);
  return true;
}

bool AKString::RemoveTrailingZeros() {
  unsigned int length = Length();
  while (length > 0 && CStr()[length - 1] == '\0') --length;
  if (length == Length()) return false;
  Resize(length);
  return true;
}

AKString& AKString::ToUpperCase() {
  MapBytes(this, [](unsigned char byte) { return std::toupper(byte); });
  return *this;
}

AKString& AKString::ToLowerCase() {
  MapBytes(this, [](unsigned char byte) { return std::tolower(byte); });
  return *this;
}

AKString& AKString::ToCapitalized() {
  ToLowerCase();
  if (!IsEmpty()) {
    char* const first = MutableData();
    *first = static_cast<char>(std::toupper(static_cast<unsigned char>(*first)));
  }
  return *this;
}

AKString& AKString::Reverse() {
  if (!IsEmpty()) std::reverse(MutableData(), MutableData() + Length());
  return *this;
}
