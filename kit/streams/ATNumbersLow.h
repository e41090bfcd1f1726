// Arrays of numbers in files: the one rule by which every multi-byte number is read and written.
//
// An array is `count` elements of `elementSize` bytes (0: the size of T), each made of one or several numbers of type
// T. When the file's order is not the host's, every T is byte-swapped by itself, so a point of two doubles is one
// element with two swapped words. `endian` is 0 (the file's default order), 1 (big) or 2 (little). The status is that
// of the file; a count of 0 succeeds without touching the file.
#pragma once

#include <cstdint>

#include "kit/streams/AKFile.h"

/// The byte-order work behind ATNumbersLow, by word size in bytes (1, 2, 4 or 8).
class AKFileWords {
 public:
  ///@{
  /// `size` bytes, the words of `wordSize` bytes in them in the other order than the host's.
  static int ReadSwapped(const AKFile& file, void* buffer, std::uint64_t size, unsigned int wordSize);
  static int WriteSwapped(AKFile& file, const void* buffer, std::uint64_t size, unsigned int wordSize);
  ///@}

  /// Whether numbers of that order are not the host's; 0 is the file's own.
  static bool MustSwap(const AKFile& file, unsigned int endian) {
    return ((endian != 0 ? endian : file.Endianness()) & AKFile::kEndianHost) == 0;
  }
};

/// Arrays of numbers of type T. `flags` only tells types apart; it changes no behaviour.
template <typename T, unsigned int flags>
class ATNumbersLow {
 public:
  /// Reads `count` elements; the buffer may be half filled after a failure.
  static int ReadFromFile(const AKFile& file, T* buffer, unsigned int count, unsigned int elementSize,
                          unsigned int endian) {
    const std::uint64_t size = SizeOf(count, elementSize);
    if (sizeof(T) == 1 || !AKFileWords::MustSwap(file, endian)) return file.Read(buffer, size);
    return AKFileWords::ReadSwapped(file, buffer, size, sizeof(T));
  }

  /// Writes `count` elements; the buffer stays as it is.
  static int WriteToFile(AKFile& file, const T* buffer, unsigned int count, unsigned int elementSize,
                         unsigned int endian) {
    const std::uint64_t size = SizeOf(count, elementSize);
    if (sizeof(T) == 1 || !AKFileWords::MustSwap(file, endian)) return file.Write(buffer, size);
    return AKFileWords::WriteSwapped(file, buffer, size, sizeof(T));
  }

  /// Moves the position behind `count` elements.
  static int SkipFromFile(const AKFile& file, unsigned int count, unsigned int elementSize) {
    const std::uint64_t size = SizeOf(count, elementSize);
    return size == 0 ? 0 : file.Skip(size);
  }

 private:
  static std::uint64_t SizeOf(unsigned int count, unsigned int elementSize) {
    return std::uint64_t{count} * (elementSize != 0 ? elementSize : sizeof(T));
  }
};
