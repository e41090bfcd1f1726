// Pixels of TIFF files that libtiff's own conversion to 8 bits refuses or gets wrong: samples of 32 and 64 bits and of
// floating point, grey with alpha, and Lab.
//
// Integers count from 0 to the largest of their type, which is full light; what is below 0 is none. Floating point
// counts from 0 to 1, and what lies outside, or is no number, is cut. Nothing is stretched to the values of a file and
// no gamma applied. Lab is that of CIE 1976 under the file's white point, D50 without one, brought to that of sRGB by
// the Bradford matrix.
#pragma once

#include <tiffio.h>

#include <cstdint>

#include "platform/codecs/CodecPixels.h"

namespace platform {

class TIFFSamples {
 public:
  /// `tiff` is at its first image.
  explicit TIFFSamples(TIFF* tiff);

  /// False for pixels that are libtiff's matter.
  bool AreOurs() const { return isLab_ || IsWide() || HasGreyAlpha(); }
  /// Native pixels; `*translucent` tells whether one of them is not opaque. False for damage and, before anything is
  /// read, when a strip or tile would take more than `maxBlock` bytes.
  bool Read(NewPixels* pixels, std::uint64_t maxBlock, bool* translucent) const;

 private:
  struct Block;
  struct Color {
    double red, green, blue;
  };

  bool IsWide() const;
  bool HasGreyAlpha() const;
  bool FindAlpha();
  void FindWhite();
  bool ReadBlock(std::uint32_t x, std::uint32_t y, const Block& block) const;
  std::uint32_t PixelAt(const Block& block, std::size_t row, std::size_t column) const;
  Color LabToColor(double lightness, double a, double b) const;
  double Sample(const unsigned char* at) const;

  TIFF* tiff_;
  std::uint16_t bits_ = 1;
  std::uint16_t count_ = 1;  // samples a pixel
  std::uint16_t format_ = SAMPLEFORMAT_UINT;
  std::uint16_t photometric_ = PHOTOMETRIC_MINISBLACK;
  bool isPlanar_ = false;
  bool isLab_ = false;
  bool isGrey_ = false;
  bool hasAlpha_ = false;
  bool isPremultiplied_ = false;
  double toSRGB_[3][3] = {};  // from X, Y and Z, as parts of the white's
};

}  // namespace platform
