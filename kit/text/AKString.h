// AKString: the kit's text type, a byte string.
//
// One handle to a shared, copy-on-write buffer (AKSharedBytes.h): copies are cheap, pass and store strings by value.
// Bytes are 8-bit characters, Mac OS Roman in memory unless a caller keeps another set (AKStringEncoding.h); the text
// is always followed by a NUL, and may hold NULs itself: operations that hand it to C functions stop at the first one.
//
// Lengths, indexes and counts are 32-bit unsigned byte positions from 0; a failed search gives kAKNotFound. Null
// pointers and indexes out of range give the neutral result of the operation. Only the allocator's exception is thrown.
#pragma once

#include <compare>
#include <cstdarg>
#include <cstring>
#include <string>
#include <utility>

#include "kit/containers/AKSharedBytes.h"
#include "kit/log/AKLog.h"

class AKFile;
class AKStringArray;

/// The index of a failed search.
inline constexpr unsigned int kAKNotFound = 0xFFFFFFFF;

class AKString {
 public:
  // Creating and assigning

  /// The empty string.
  constexpr AKString() noexcept = default;
  /// A copy of a C string; null gives the empty string.
  AKString(const char* text);
  /// Exactly `length` bytes; null or 0 gives the empty string.
  AKString(const char* text, unsigned int length) { bytes_.Assign(text, length); }
  /// A copy of the bytes, NULs included.
  AKString(const std::string& text);
  AKString(const AKString&) noexcept = default;
  AKString(AKString&&) noexcept = default;
  ~AKString() = default;

  AKString& operator=(const AKString&) noexcept = default;
  AKString& operator=(AKString&&) noexcept = default;
  ///@{
  /// Copies the text; null gives the empty string.
  AKString& operator=(const char* text) { return Assign(text); }
  AKString& operator=(const std::string& text) { return *this = AKString(text); }
  ///@}

  ///@{
  /// Replaces the text, which may be part of this string; null gives the empty string. Returns this string.
  AKString& Assign(const AKString& text);
  AKString& Assign(const char* text);
  AKString& Assign(const char* text, unsigned int length);
  ///@}
  ///@{
  /// printf formatting. A null or empty format, a failure or an empty result make the string empty. The arguments may
  /// point into this string.
  AKString& Assignf(const char* format, ...) AK_PRINTF_FORMAT(2, 3);
  AKString& Assignv(const char* format, va_list arguments);
  ///@}

  // Appending and prepending

  ///@{
  /// Adds a text, a byte or what printf makes of a format, behind the last byte. The text may be part of this string;
  /// null adds nothing. Returns this string.
  AKString& Append(const AKString& text);
  AKString& Append(const char* text);
  AKString& Append(const char* text, unsigned int length);
  AKString& Append(char byte) {
    bytes_.AppendByte(byte);
    return *this;
  }
  AKString& Appendf(const char* format, ...) AK_PRINTF_FORMAT(2, 3);
  AKString& Appendv(const char* format, va_list arguments);
  AKString& operator+=(const AKString& text) { return Append(text); }
  AKString& operator+=(const char* text) { return Append(text); }
  AKString& operator+=(char byte) { return Append(byte); }
  ///@}

  ///@{
  /// The same in front of the first byte.
  AKString& Prepend(const AKString& text);
  AKString& Prepend(const char* text);
  AKString& Prepend(const char* text, unsigned int length);
  AKString& Prependf(const char* format, ...) AK_PRINTF_FORMAT(2, 3);
  AKString& Prependv(const char* format, va_list arguments);
  ///@}

  // Reading bytes

  /// True for a length of 0.
  bool IsEmpty() const { return bytes_.IsEmpty(); }
  /// The number of bytes, the terminating NUL not counted.
  unsigned int Length() const { return bytes_.Length(); }
  /// How many bytes fit without a new buffer.
  unsigned int Capacity() const { return bytes_.Capacity(); }

  /// The NUL-terminated bytes, never null; valid until the string is modified or dies.
  const char* CStr() const { return bytes_.Data(); }
  /// The byte at `index`, NUL when the index is out of range.
  char operator[](unsigned int index) const { return index < Length() ? bytes_.Data()[index] : '\0'; }
  ///@{
  /// For range-based loops over the bytes; valid as long as CStr().
  const char* begin() const { return bytes_.Data(); }
  const char* end() const { return bytes_.Data() + Length(); }
  ///@}
  /// Length() bytes for the caller to write, private to this string; valid until the next call of any other member.
  char* MutableData() { return bytes_.Writable(); }

  // Length and room

  /// Makes the length exactly `length`; new bytes are NUL.
  void Resize(unsigned int length) { bytes_.Resize(length); }
  /// Reserves room for at least `capacity` bytes.
  void SetCapacity(unsigned int capacity) { bytes_.Reserve(capacity); }
  /// True when the text was longer than `length` and was cut.
  bool SetMaxLength(unsigned int length);
  /// Releases spare capacity.
  void Shrink() { bytes_.Shrink(); }
  /// Length 0; the buffer may keep its capacity.
  void Clear() { bytes_.Clear(); }
  /// Length 0; the buffer is released.
  void Free() { bytes_.Free(); }
  /// Exchanges two strings; nothing is copied.
  void Swap(AKString* other) noexcept { bytes_.Swap(&other->bytes_); }

  // Comparing

  /// The bytes as unsigned values over the shorter length, then the shorter string first.
  std::strong_ordering operator<=>(const AKString& other) const;
  ///@{
  /// The same bytes; null equals the empty string.
  bool operator==(const AKString& other) const {
    return Length() == other.Length() && std::memcmp(CStr(), other.CStr(), Length()) == 0;
  }
  bool operator==(const char* text) const;
  ///@}

  ///@{
  /// Negative, 0 or positive. With `caseSensitive` false: strcasecmp, which stops at the first NUL.
  int Compare(const AKString& other, bool caseSensitive) const;
  bool IsEqual(const AKString& other, bool caseSensitive) const;
  ///@}
  /// True when `sub` begins before the end of the text: every non-empty text contains the empty string, and the empty
  /// text contains nothing but itself as the same object.
  bool Contains(const AKString& sub, bool caseSensitive) const;
  /// `rest`, which may be null, receives what follows the prefix, and is emptied when there is no match.
  bool StartsWith(const AKString& prefix, AKString* rest = nullptr) const;
  /// `rest`, which may be null, receives what precedes the suffix, and is emptied when there is no match.
  bool EndsWith(const AKString& suffix, AKString* rest = nullptr) const;

  // Searching and cutting out (AKStringSearch.cpp)

  /// The first occurrence of `sub` at or after `start`. An empty `sub` is never found. `pos` may be null.
  bool Find(const AKString& sub, unsigned int start, unsigned int* pos) const;
  /// The last occurrence of `sub` that begins at or before Length() - (fromEnd + 1). An empty `sub` is found there, or
  /// at the end when that index would be negative. `pos` may be null.
  bool FindFromEnd(const AKString& sub, unsigned int fromEnd, unsigned int* pos) const;
  /// The bytes from `start` up to, not including, `end`: an end index, not a count.
  AKString SubString(unsigned int start, unsigned int end) const;
  ///@{
  /// The bytes after or before the first or the last occurrence of `separator`.
  AKString AfterFirst(const AKString& separator) const;
  AKString AfterLast(const AKString& separator) const;
  AKString BeforeFirst(const AKString& separator) const;
  AKString BeforeLast(const AKString& separator) const;
  ///@}
  /// The run of ASCII letters, digits and underscores from `start`, as AKStringGetTokenT has it.
  AKString GetToken(unsigned int start) const;
  ///@{
  /// vsscanf from byte `start`. Returns the number of converted items, 0 on failure.
  int Scanf(unsigned int start, const char* format, ...) const __attribute__((format(scanf, 3, 4)));
  int Scanv(unsigned int start, const char* format, va_list arguments) const;
  ///@}

  // Replacing and removing (AKStringEdit.cpp)

  /// False when `find` is empty, equals `with`, or does not occur at or after `start`.
  bool ReplaceFirst(const AKString& find, const AKString& with, unsigned int start);
  /// Returns the number of replacements. The replacement text is not searched again.
  unsigned int ReplaceAll(const AKString& find, const AKString& with, unsigned int start);
  ///@{
  /// As replacing by nothing: whether, and how often, `find` was there at or after `start`.
  bool RemoveFirst(const AKString& find, unsigned int start);
  unsigned int RemoveAll(const AKString& find, unsigned int start);
  ///@}
  ///@{
  /// Removes a text that the string begins or ends with; false when it does not.
  bool RemoveBegin(const AKString& prefix);
  bool RemoveEnd(const AKString& suffix);
  ///@}
  ///@{
  /// False when `count` is 0 or the string is empty. Length and count are compared as signed numbers.
  bool RemoveFirstChars(unsigned int count);
  bool RemoveLastChars(unsigned int count);
  ///@}
  /// Removes a quote (' or ") at the end, then one at the front; the two need not match. True when any was removed.
  bool RemoveExtraQuotes();
  /// Trims spaces and tabs at both ends; inner runs stay. True when any was removed.
  bool RemoveExtraSpacesAndTabs();
  /// Removes trailing NUL bytes. True when any was removed.
  bool RemoveTrailingZeros();

  // Letters, kinds of text, lines

  ///@{
  /// These go byte by byte through the C library's tables of the current locale.
  AKString& ToUpperCase();
  AKString& ToLowerCase();
  ///@}
  /// All lower case but the first byte, which becomes upper case.
  AKString& ToCapitalized();
  /// The bytes in the opposite order.
  AKString& Reverse();
  ///@{
  /// Whether all bytes are letters, letters or digits, or digits, by the C library's tables of the current locale. True
  /// for the empty string.
  bool IsAlpha() const;
  bool IsAlphaNum() const;
  bool IsDigit() const;
  ///@}
  /// Up to the first NUL: only tab, line feed, carriage return and bytes 32 to 127. `badPos`, which may be null,
  /// receives the index of the first other byte, or kAKNotFound.
  bool IsPureAscii(unsigned int* badPos) const;
  ///@{
  /// Line and column, both from 1, of the byte at `pos` (0 and 0 for the empty string). CR and LF each end a line; a
  /// NUL stops the count. Returns the line; the outputs may be null.
  unsigned int CountLinesToPosition(unsigned int pos, unsigned int* line, unsigned int* column) const;
  unsigned int CountLinesToEnd(unsigned int* line, unsigned int* column) const;
  ///@}

  // Splitting and joining (AKStringArray.cpp)

  /// The pieces between the bytes of `separators` (null: ",;"), each without the bytes of `trimChars` (null: " \t\n\r")
  /// at its ends. Empty pieces are kept, the last one too; the empty string has none.
  AKStringArray SplitToArray(const char* separators = nullptr, const char* trimChars = nullptr) const;
  /// Joins the elements. A separator is added only once the text is not empty, so leading empty elements vanish.
  AKString& BuildFromArray(const AKStringArray& array, const AKString& separator);

  // Files (AKStringFile.cpp)

  ///@{
  /// The record of a string: a count, a multiple of 4, and as many bytes of NUL-padded UTF-8. Each returns the status
  /// of the first file operation that failed, 0 on success; a failed read leaves the string empty.
  int WriteToFile(AKFile& file) const;
  int ReadFromFile(const AKFile& file);
  static int SkipFromFile(const AKFile& file);
  ///@}

 private:
  /// For different texts of equal lengths.
  unsigned int ReplaceAllInPlace(const AKString& find, const AKString& with, unsigned int start);

  AKSharedBytes bytes_;
};

///@{
/// A new string of both texts; null adds nothing.
AKString operator+(const AKString& first, const AKString& second);
AKString operator+(const AKString& first, const char* second);
AKString operator+(const char* first, const AKString& second);
///@}

/// The token that begins at `start`: the run of bytes that `isTokenByte`, a function of an unsigned char, accepts. A
/// NUL ends it like a byte that is refused; a byte that ends it is part of it all the same when it is the last of the
/// text.
template <typename IsTokenByte>
AKString AKStringGetTokenT(const AKString& text, unsigned int start, IsTokenByte isTokenByte) {
  unsigned int end = start;
  for (; end < text.Length(); ++end) {
    const auto byte = static_cast<unsigned char>(text.CStr()[end]);
    if (byte == 0 || !isTokenByte(byte)) break;
  }
  if (end < text.Length() && end + 1 == text.Length()) ++end;
  return text.SubString(start, end);
}

/// The shared empty string that stands for "no text". It is known by its content, not by its address.
extern const AKString kAKNullString;

/// A new random UUID: 36 characters, upper-case hexadecimal digits in groups of 8-4-4-4-12.
AKString AKStringGenerateUUID();
