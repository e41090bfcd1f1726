#include "platform/graphics/PixelOrder.h"

#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace platform {
namespace {

constexpr std::size_t kPixelSize = 4;

void CopyPlain(unsigned char* target, const unsigned char* source, std::size_t count) {
  for (std::size_t i = 0; i < count * kPixelSize; i += kPixelSize) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, source + i, sizeof(pixel));
    pixel = __builtin_bswap32(pixel);
    std::memcpy(target + i, &pixel, sizeof(pixel));
  }
}

#if defined(__x86_64__)
// Eight pixels an instruction, where the processor has it.
__attribute__((target("avx2"))) void CopyWide(unsigned char* target, const unsigned char* source, std::size_t count) {
  const __m256i order = _mm256_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12, 3, 2, 1, 0, 7, 6, 5, 4,
                                         11, 10, 9, 8, 15, 14, 13, 12);
  constexpr std::size_t kPixels = 8;
  for (; count >= kPixels; count -= kPixels, target += 32, source += 32) {
    const __m256i pixels = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(source));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(target), _mm256_shuffle_epi8(pixels, order));
  }
  CopyPlain(target, source, count);
}
#endif

}  // namespace

void CopyBytesReversed(unsigned char* target, const unsigned char* source, std::size_t count) {
#if defined(__x86_64__)
  static const bool isWide = __builtin_cpu_supports("avx2") != 0;
  if (isWide) {
    CopyWide(target, source, count);
    return;
  }
#endif
  CopyPlain(target, source, count);
}

}  // namespace platform
