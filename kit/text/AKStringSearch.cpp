// AKString: search, extraction and classification.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

#include "kit/text/AKByteSearch_p.h"
#include "kit/text/AKString.h"

namespace {

bool IsTokenByte(unsigned char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte == '_';
}

template <typename Test>
bool AllBytes(const AKString& text, Test test) {
  return std::all_of(text.begin(), text.end(), [&](char byte) { return test(static_cast<unsigned char>(byte)); });
}

void Store(unsigned int* output, unsigned int value) {
  if (output != nullptr) *output = value;
}

}  // namespace

bool AKString::Contains(const AKString& sub, bool caseSensitive) const {
  if (this == &sub) return true;
  if (caseSensitive) return !IsEmpty() && akbytes::Find(CStr(), Length(), sub.CStr(), sub.Length()) != nullptr;
  return akbytes::ContainsAnyCase(CStr(), Length(), sub.CStr(), sub.Length());
}

bool AKString::StartsWith(const AKString& prefix, AKString* rest) const {
  const bool matches = Length() >= prefix.Length() && std::memcmp(CStr(), prefix.CStr(), prefix.Length()) == 0;
  if (rest != nullptr) *rest = matches ? SubString(prefix.Length(), Length()) : AKString();
  return matches;
}

bool AKString::EndsWith(const AKString& suffix, AKString* rest) const {
  const unsigned int start = Length() - suffix.Length();
  const bool matches = Length() >= suffix.Length() && std::memcmp(CStr() + start, suffix.CStr(), suffix.Length()) == 0;
  if (rest != nullptr) *rest = matches ? SubString(0, start) : AKString();
  return matches;
}

bool AKString::Find(const AKString& sub, unsigned int start, unsigned int* pos) const {
  Store(pos, kAKNotFound);
  if (sub.IsEmpty() || start >= Length()) return false;
  const char* const found = akbytes::Find(CStr() + start, Length() - start, sub.CStr(), sub.Length());
  if (found == nullptr) return false;
  Store(pos, static_cast<unsigned int>(found - CStr()));
  return true;
}

bool AKString::FindFromEnd(const AKString& sub, unsigned int fromEnd, unsigned int* pos) const {
  Store(pos, kAKNotFound);
  // Unsigned wrap-around is wanted: a start that passes below zero stands beyond the end.
  const unsigned int latest = Length() - (fromEnd + 1);
  if (sub.Length() > Length()) return false;
  const unsigned int firstTry = std::min(latest, Length() - sub.Length());
  const char* const found = akbytes::FindLast(CStr(), firstTry, sub.CStr(), sub.Length());
  if (found == nullptr) return false;
  Store(pos, static_cast<unsigned int>(found - CStr()));
  return true;
}

AKString AKString::SubString(unsigned int start, unsigned int end) const {
  const unsigned int limit = std::min(end, Length());
  if (start >= limit) return {};
  if (start == 0 && limit == Length()) return *this;
  return {CStr() + start, limit - start};
}

AKString AKString::AfterFirst(const AKString& separator) const {
  unsigned int pos = 0;
  return Find(separator, 0, &pos) ? SubString(pos + separator.Length(), Length()) : AKString();
}

AKString AKString::AfterLast(const AKString& separator) const {
  unsigned int pos = 0;
  return FindFromEnd(separator, 0, &pos) ? SubString(pos + separator.Length(), Length()) : AKString();
}

AKString AKString::BeforeFirst(const AKString& separator) const {
  unsigned int pos = 0;
  return Find(separator, 0, &pos) ? SubString(0, pos) : AKString();
}

AKString AKString::BeforeLast(const AKString& separator) const {
  unsigned int pos = 0;
  return FindFromEnd(separator, 0, &pos) ? SubString(0, pos) : AKString();
}

AKString AKString::GetToken(unsigned int start) const { return AKStringGetTokenT(*this, start, IsTokenByte); }

int AKString::Scanf(unsigned int start, const char* format, ...) const {
  va_list arguments;
  va_start(arguments, format);
  const int count = Scanv(start, format, arguments);
  va_end(arguments);
  return count;
}

int AKString::Scanv(unsigned int start, const char* format, va_list arguments) const {
  if (format == nullptr || format[0] == '\0' || start >= Length()) return 0;
  return std::max(0, std::vsscanf(CStr() + start, format, arguments));
}

bool AKString::IsAlpha() const {
  return AllBytes(*this, [](unsigned char byte) { return std::isalpha(byte) != 0; });
}

bool AKString::IsAlphaNum() const {
  return AllBytes(*this, [](unsigned char byte) { return std::isalnum(byte) != 0; });
}

bool AKString::IsDigit() const {
  return AllBytes(*this, [](unsigned char byte) { return byte < 128 && std::isdigit(byte) != 0; });
}

bool AKString::IsPureAscii(unsigned int* badPos) const {
  Store(badPos, kAKNotFound);
  for (unsigned int i = 0; i < Length(); ++i) {
    const auto byte = static_cast<unsigned char>(CStr()[i]);
    if (byte == 0) return true;
    if ((byte >= 32 && byte < 128) || byte == '\t' || byte == '\n' || byte == '\r') continue;
    Store(badPos, i);
    return false;
  }
  return true;
}

unsigned int AKString::CountLinesToPosition(unsigned int pos, unsigned int* line, unsigned int* column) const {
  unsigned int lines = IsEmpty() ? 0 : 1;
  unsigned int columns = lines;
  const unsigned int end = std::min(pos, Length());
  for (unsigned int i = 0; i < end && CStr()[i] != '\0'; ++i) {
    if (CStr()[i] == '\n' || CStr()[i] == '\r') {
      ++lines;
      columns = 1;
    } else {
      ++columns;
    }
  }
  Store(line, lines);
  Store(column, columns);
  return lines;
}

unsigned int AKString::CountLinesToEnd(unsigned int* line, unsigned int* column) const {
  return CountLinesToPosition(kAKNotFound, line, column);
}
