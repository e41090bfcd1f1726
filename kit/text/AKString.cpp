#include "kit/text/AKString.h"

#include <strings.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

constinit const AKString kAKNullString;

namespace {

unsigned int CheckedLength(std::size_t length) {
  if (length > AKSharedBytes::kMaxLength) throw std::bad_alloc();
  return static_cast<unsigned int>(length);
}

unsigned int CStringLength(const char* text) { return text == nullptr ? 0 : CheckedLength(std::strlen(text)); }

AKString Formatted(const char* format, va_list arguments) {
  AKString result;
  if (format == nullptr || format[0] == '\0') return result;
  char* bytes = nullptr;
  errno = 0;
  const int length = vasprintf(&bytes, format, arguments);
  if (length < 0 && errno == ENOMEM) throw std::bad_alloc();  // a format that makes no text is another matter
  if (length < 0) return result;
  const std::unique_ptr<char, decltype(&std::free)> text(bytes, &std::free);
  result.Assign(text.get(), static_cast<unsigned int>(length));
  return result;
}

AKString Joined(const char* first, unsigned int firstLength, const char* second, unsigned int secondLength) {
  AKString result;
  result.SetCapacity(CheckedLength(std::size_t{firstLength} + secondLength));
  result.Append(first, firstLength);
  return result.Append(second, secondLength);
}

}  // namespace

AKString::AKString(const char* text) { bytes_.Assign(text, CStringLength(text)); }
AKString::AKString(const std::string& text) { bytes_.Assign(text.data(), CheckedLength(text.size())); }

AKString& AKString::Assign(const AKString& text) { return *this = text; }

AKString& AKString::Assign(const char* text) { return Assign(text, CStringLength(text)); }

AKString& AKString::Assign(const char* text, unsigned int length) {
  bytes_.Assign(text, length);
  return *this;
}

AKString& AKString::Assignf(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  Assignv(format, arguments);
  va_end(arguments);
  return *this;
}

AKString& AKString::Assignv(const char* format, va_list arguments) { return *this = Formatted(format, arguments); }

AKString& AKString::Append(const AKString& text) {
  if (IsEmpty() && Capacity() == 0) return *this = text;  // sharing costs no copy
  return Append(text.CStr(), text.Length());
}

AKString& AKString::Append(const char* text) { return Append(text, CStringLength(text)); }

AKString& AKString::Append(const char* text, unsigned int length) {
  bytes_.Append(text, length);
  return *this;
}

AKString& AKString::Appendf(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  Appendv(format, arguments);
  va_end(arguments);
  return *this;
}

AKString& AKString::Appendv(const char* format, va_list arguments) { return Append(Formatted(format, arguments)); }

AKString& AKString::Prepend(const AKString& text) { return Prepend(text.CStr(), text.Length()); }

AKString& AKString::Prepend(const char* text) { return Prepend(text, CStringLength(text)); }

AKString& AKString::Prepend(const char* text, unsigned int length) {
  if (text == nullptr || length == 0) return *this;
  AKString result = Joined(text, length, CStr(), Length());
  Swap(&result);
  return *this;
}

AKString& AKString::Prependf(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  Prependv(format, arguments);
  va_end(arguments);
  return *this;
}

AKString& AKString::Prependv(const char* format, va_list arguments) { return Prepend(Formatted(format, arguments)); }

bool AKString::SetMaxLength(unsigned int length) {
  if (Length() <= length) return false;
  bytes_.Resize(length);
  return true;
}

std::strong_ordering AKString::operator<=>(const AKString& other) const {
  const int difference = std::memcmp(CStr(), other.CStr(), std::min(Length(), other.Length()));
  return difference != 0 ? difference <=> 0 : Length() <=> other.Length();
}

bool AKString::operator==(const char* text) const {
  const std::size_t length = text == nullptr ? 0 : std::strlen(text);
  return length == Length() && (length == 0 || std::memcmp(CStr(), text, length) == 0);
}

int AKString::Compare(const AKString& other, bool caseSensitive) const {
  if (this == &other) return 0;
  if (!caseSensitive) return strcasecmp(CStr(), other.CStr());
  const int difference = std::memcmp(CStr(), other.CStr(), std::min(Length(), other.Length()));
  if (difference != 0) return difference;
  if (Length() == other.Length()) return 0;
  return Length() < other.Length() ? -1 : 1;
}

bool AKString::IsEqual(const AKString& other, bool caseSensitive) const {
  if (this == &other) return true;
  return caseSensitive ? *this == other : strcasecmp(CStr(), other.CStr()) == 0;
}

AKString operator+(const AKString& first, const AKString& second) {
  return Joined(first.CStr(), first.Length(), second.CStr(), second.Length());
}

AKString operator+(const AKString& first, const char* second) {
  return Joined(first.CStr(), first.Length(), second, CStringLength(second));
}

AKString operator+(const char* first, const AKString& second) {
  return Joined(first, CStringLength(first), second.CStr(), second.Length());
}
