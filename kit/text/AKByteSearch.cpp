#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "kit/os/AKLastByte_p.h"
#include "kit/text/AKByteSearch_p.h"

namespace {

/// Whether the rest of `sub` follows where its first byte stands. Its last byte tells most false starts apart.
bool RestMatches(const char* text, const char* sub, unsigned int subLength) {
  const unsigned int last = subLength - 1;
  return text[last] == sub[last] && (last < 2 || std::memcmp(text + 1, sub + 1, last - 1) == 0);
}

// Jumping from one occurrence of the first byte to the next is the fastest way while they are rare. A text full of
// false starts is handed to memmem, whose time never grows with the product of the two lengths.
constexpr unsigned int kFalseStarts = 16;

// A search in a copy that the text is turned into goes by pieces, so that it need not copy what follows a match.
std::size_t PieceFor(unsigned int subLength) { return std::max<std::size_t>(4096, 4 * std::size_t{subLength}); }

// toupper of the current locale: its table, since a call for each byte takes most of a search's time.
class Upper {
 public:
  char operator()(char byte) const { return static_cast<char>(table_[static_cast<unsigned char>(byte)]); }

 private:
  const int* table_ = *__ctype_toupper_loc();
};

std::string UpperCased(const char* text, std::size_t length) {
  std::string upper(text, length);
  std::transform(upper.begin(), upper.end(), upper.begin(), Upper());
  return upper;
}

std::string Reversed(const char* text, std::size_t length) {
  std::string reversed(text, length);
  std::reverse(reversed.begin(), reversed.end());
  return reversed;
}

/// As FindLast, of the occurrences that begin in the first `room` bytes.
const char* FindLastInPieces(const char* text, std::size_t room, const char* sub, unsigned int subLength) {
  const std::string wanted = Reversed(sub, subLength);
  while (room > 0) {
    const std::size_t piece = std::min(room, PieceFor(subLength));
    const std::size_t size = piece + subLength - 1;
    const std::string reversed = Reversed(text + room - piece, size);
    const void* const found = memmem(reversed.data(), size, wanted.data(), subLength);
    if (found != nullptr) {
      const auto at = static_cast<std::size_t>(static_cast<const char*>(found) - reversed.data());
      return text + room - 1 - at;
    }
    room -= piece;
  }
  return nullptr;
}

}  // namespace

const char* akbytes::Find(const char* text, unsigned int length, const char* sub, unsigned int subLength) {
  if (subLength > length) return nullptr;
  if (subLength == 0) return text;
  const char* const last = text + (length - subLength);
  const char* const end = text + length;
  for (unsigned int tries = 0; tries < kFalseStarts; ++tries) {
    if (text > last) return nullptr;
    text = static_cast<const char*>(std::memchr(text, sub[0], static_cast<std::size_t>(last - text) + 1));
    if (text == nullptr) return nullptr;
    if (RestMatches(text, sub, subLength)) return text;
    ++text;
  }
  return static_cast<const char*>(memmem(text, static_cast<std::size_t>(end - text), sub, subLength));
}

const char* akbytes::FindLast(const char* text, unsigned int latest, const char* sub, unsigned int subLength) {
  if (subLength == 0) return text + latest;
  std::size_t room = std::size_t{latest} + 1;
  for (unsigned int tries = 0; tries < kFalseStarts && room > 0; ++tries) {
    const char* const found = AKFindLastByte(text, sub[0], room);
    if (found == nullptr || RestMatches(found, sub, subLength)) return found;
    room = static_cast<std::size_t>(found - text);
  }
  return FindLastInPieces(text, room, sub, subLength);
}

bool akbytes::ContainsAnyCase(const char* text, unsigned int length, const char* sub, unsigned int subLength) {
  if (subLength > length || length == 0) return false;
  if (subLength == 0) return true;
  const std::string wanted = UpperCased(sub, subLength);
  const std::size_t starts = std::size_t{length} - subLength + 1;
  // Comparing at every start is the fastest way while few bytes agree.
  const Upper toUpper;
  std::size_t agreed = 0;
  std::size_t start = 0;
  for (; start < starts && agreed <= kFalseStarts + start; ++start) {
    std::size_t same = 0;
    while (same < subLength && toUpper(text[start + same]) == wanted[same]) ++same;
    if (same == subLength) return true;
    agreed += same;
  }
  while (start < starts) {
    const std::size_t piece = std::min(starts - start, PieceFor(subLength));
    const std::string upper = UpperCased(text + start, piece + subLength - 1);
    if (Find(upper.data(), static_cast<unsigned int>(upper.size()), wanted.data(), subLength) != nullptr) return true;
    start += piece;
  }
  return false;
}
