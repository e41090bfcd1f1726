#include "kit/streams/ATNumbersLow.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

// Small writes are swapped on the stack: up to 16 bytes of 16- and 32-bit words, up to 32 of 64-bit ones.
constexpr std::uint64_t kStackSize = 32;
// Larger ones go in pieces that stay in the processor's cache between the swap and the copy.
constexpr std::uint64_t kPieceSize = 16384;

template <typename Word>
Word Swapped(Word word) {
  if constexpr (sizeof(Word) == 2) return __builtin_bswap16(word);
  if constexpr (sizeof(Word) == 4) return __builtin_bswap32(word);
  if constexpr (sizeof(Word) == 8) return __builtin_bswap64(word);
}

// Bytes behind the last whole word are copied as they are. Source and target may be the same, not overlap otherwise.
template <typename Word>
inline __attribute__((always_inline)) void SwapWords(unsigned char* target, const unsigned char* source,
                                                     std::uint64_t size) {
  const std::uint64_t words = size / sizeof(Word);
  for (std::uint64_t i = 0; i < words; ++i) {
    Word word;
    std::memcpy(&word, source + i * sizeof(Word), sizeof(Word));
    word = Swapped(word);
    std::memcpy(target + i * sizeof(Word), &word, sizeof(Word));
  }
  const std::uint64_t rest = size % sizeof(Word);
  if (rest != 0) std::memmove(target + size - rest, source + size - rest, rest);
}

inline __attribute__((always_inline)) void SwapAnyWords(unsigned char* target, const unsigned char* source,
                                                        std::uint64_t size, unsigned int wordSize) {
  switch (wordSize) {
    case 2:
      return SwapWords<std::uint16_t>(target, source, size);
    case 4:
      return SwapWords<std::uint32_t>(target, source, size);
    default:
      return SwapWords<std::uint64_t>(target, source, size);
  }
}

#if defined(__x86_64__)
// The same loops, which the compiler turns into byte shuffles where the processor has them.
__attribute__((target("avx2"))) void SwapBytesByShuffle(unsigned char* target, const unsigned char* source,
                                                        std::uint64_t size, unsigned int wordSize) {
  SwapAnyWords(target, source, size, wordSize);
}
#endif

void SwapBytes(unsigned char* target, const unsigned char* source, std::uint64_t size, unsigned int wordSize) {
#if defined(__x86_64__)
  if (size > kStackSize && __builtin_cpu_supports("avx2")) return SwapBytesByShuffle(target, source, size, wordSize);
#endif
  SwapAnyWords(target, source, size, wordSize);
}

}  // namespace

int AKFileWords::ReadSwapped(const AKFile& file, void* buffer, std::uint64_t size, unsigned int wordSize) {
  auto* bytes = static_cast<unsigned char*>(buffer);
  // A read that cannot be met is made in one, so that it fails as any other does.
  const std::uint64_t pieceSize = size > kPieceSize && file.HasBytes(size) ? kPieceSize : size;
  for (std::uint64_t done = 0; done < size;) {
    const std::uint64_t piece = std::min(size - done, pieceSize);
    if (const int status = file.Read(bytes + done, piece); status != 0) return status;
    SwapBytes(bytes + done, bytes + done, piece, wordSize);
    done += piece;
  }
  return 0;
}

int AKFileWords::WriteSwapped(AKFile& file, const void* buffer, std::uint64_t size, unsigned int wordSize) {
  const auto* bytes = static_cast<const unsigned char*>(buffer);
  if (size <= (wordSize == 8 ? kStackSize : kStackSize / 2)) {
    unsigned char swapped[kStackSize];
    SwapBytes(swapped, bytes, size, wordSize);
    return file.Write(swapped, size);
  }
  const std::unique_ptr<unsigned char[]> swapped(new unsigned char[std::min(size, kPieceSize)]);
  for (std::uint64_t done = 0; done < size;) {
    const std::uint64_t piece = std::min(size - done, kPieceSize);
    SwapBytes(swapped.get(), bytes + done, piece, wordSize);
    if (const int status = file.Write(swapped.get(), piece); status != 0) return status;
    done += piece;
  }
  return 0;
}
