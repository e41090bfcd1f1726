#include "platform/codecs/TIFFSamples.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace platform {
namespace {

template <typename T>
double Load(const unsigned char* at) {
  T value;
  std::memcpy(&value, at, sizeof(value));
  return static_cast<double>(value);
}

template <typename T>
double LoadPart(const unsigned char* at) {
  return std::max(Load<T>(at), 0.0) / static_cast<double>(std::numeric_limits<T>::max());
}

// A floating-point number of 16 bits: the sign, 5 bits of the exponent, 10 of the mantissa.
double LoadHalf(const unsigned char* at) {
  std::uint16_t word = 0;
  std::memcpy(&word, at, sizeof(word));
  const int exponent = word >> 10 & 31;
  const int mantissa = word & 1023;
  const double size = exponent == 0    ? std::ldexp(mantissa, -24)
                      : exponent == 31 ? (mantissa == 0 ? INFINITY : NAN)
                                       : std::ldexp(mantissa + 1024, exponent - 25);
  return (word & 0x8000) != 0 ? -size : size;
}

// Not a number is none.
double Cut(double value) { return value > 0 ? std::min(value, 1.0) : 0; }

std::uint32_t ByteOf(double part) { return static_cast<std::uint32_t>(Cut(part) * 255 + 0.5); }

// X, Y and Z of a colour relative to those of the white.
double FromLabScale(double t) { return t > 6.0 / 29 ? t * t * t : 108.0 / 841 * (t - 4.0 / 29); }

// The curve of sRGB (IEC 61966-2-1).
double Encoded(double linear) {
  return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
}

using Matrix = double[3][3];

void Multiply(const Matrix& a, const Matrix& b, Matrix* product) {
  Matrix result;
  for (int i = 0; i < 3; ++i) {
    for (int k = 0; k < 3; ++k) result[i][k] = a[i][0] * b[0][k] + a[i][1] * b[1][k] + a[i][2] * b[2][k];
  }
  std::memcpy(product, &result, sizeof(result));
}

// The responses of the eye by Bradford, and back.
constexpr Matrix kToCones = {{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}};
constexpr Matrix kFromCones = {
    {0.9869929, -0.1470543, 0.1599627}, {0.4323053, 0.5183603, 0.0492912}, {-0.0085287, 0.0400428, 0.9684867}};
constexpr Matrix kLinearSRGB = {
    {3.2404542, -1.5371385, -0.4985314}, {-0.9692660, 1.8760108, 0.0415560}, {0.0556434, -0.2040259, 1.0572252}};
constexpr double kD65[3] = {0.95047, 1, 1.08883};
constexpr double kD50[2] = {0.34567, 0.35850};  // x and y

}  // namespace

// A strip or a tile: all samples of its pixels one after the other, or plane by plane.
struct TIFFSamples::Block {
  const unsigned char* At(std::size_t row, std::size_t column, std::size_t sample) const {
    const std::size_t inRow = isPlanar ? column : column * count + sample;
    return bytes.get() + (isPlanar ? sample * size : 0) + row * rowBytes + inRow * sampleBytes;
  }

  std::unique_ptr<unsigned char[]> bytes;
  std::size_t size;  // of a plane
  std::size_t rowBytes;
  std::size_t sampleBytes;
  std::size_t count;
  bool isPlanar;
  bool isTile;
  std::uint32_t width;
  std::uint32_t height;
};

TIFFSamples::TIFFSamples(TIFF* tiff) : tiff_(tiff) {
  std::uint16_t planes = PLANARCONFIG_CONTIG;
  TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &bits_);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &count_);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &format_);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &planes);
  if (TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &photometric_) == 0) photometric_ = UINT16_MAX;
  isPlanar_ = planes == PLANARCONFIG_SEPARATE && count_ > 1;
  isGrey_ = photometric_ == PHOTOMETRIC_MINISBLACK || photometric_ == PHOTOMETRIC_MINISWHITE;
  isLab_ = (photometric_ == PHOTOMETRIC_CIELAB || photometric_ == PHOTOMETRIC_ICCLAB) && count_ >= 3 &&
           (bits_ == 8 || bits_ == 16) && format_ != SAMPLEFORMAT_IEEEFP;
  hasAlpha_ = FindAlpha();
  if (isLab_) FindWhite();
}

// The sample behind the colours, when the file says that it is alpha; behind red, green and blue, as libtiff has it,
// also when it says nothing.
bool TIFFSamples::FindAlpha() {
  std::uint16_t extra = 0;
  const std::uint16_t* kinds = nullptr;
  if (TIFFGetField(tiff_, TIFFTAG_EXTRASAMPLES, &extra, &kinds) == 0 || extra == 0 || count_ <= (isGrey_ ? 1 : 3)) {
    return false;
  }
  isPremultiplied_ = kinds[0] != EXTRASAMPLE_UNASSALPHA;
  return kinds[0] != EXTRASAMPLE_UNSPECIFIED || photometric_ == PHOTOMETRIC_RGB;
}

void TIFFSamples::FindWhite() {
  const float* given = nullptr;
  double x = kD50[0];
  double y = kD50[1];
  if (TIFFGetField(tiff_, TIFFTAG_WHITEPOINT, &given) != 0 && given[0] > 0 && given[1] > 0 &&
      given[0] + given[1] <= 1) {
    x = static_cast<double>(given[0]);
    y = static_cast<double>(given[1]);
  }
  const double white[3] = {x / y, 1, (1 - x - y) / y};
  Matrix adapt = {};
  for (int i = 0; i < 3; ++i) {
    const double* cone = kToCones[i];
    const double wanted = cone[0] * kD65[0] + cone[1] * kD65[1] + cone[2] * kD65[2];
    adapt[i][i] = wanted / (cone[0] * white[0] + cone[1] * white[1] + cone[2] * white[2]);
  }
  const Matrix fromParts = {{white[0], 0, 0}, {0, white[1], 0}, {0, 0, white[2]}};
  Multiply(kToCones, fromParts, &toSRGB_);
  Multiply(adapt, toSRGB_, &toSRGB_);
  Multiply(kFromCones, toSRGB_, &toSRGB_);
  Multiply(kLinearSRGB, toSRGB_, &toSRGB_);
}

bool TIFFSamples::IsWide() const {
  if (!isGrey_ && !(photometric_ == PHOTOMETRIC_RGB && count_ >= 3)) return false;
  if (format_ == SAMPLEFORMAT_IEEEFP) return bits_ == 16 || bits_ == 32 || bits_ == 64;
  return (bits_ == 32 || bits_ == 64) && (format_ == SAMPLEFORMAT_UINT || format_ == SAMPLEFORMAT_INT);
}

bool TIFFSamples::HasGreyAlpha() const { return isGrey_ && hasAlpha_ && (bits_ == 8 || bits_ == 16); }

double TIFFSamples::Sample(const unsigned char* at) const {
  if (format_ == SAMPLEFORMAT_IEEEFP) {
    return Cut(bits_ == 16 ? LoadHalf(at) : bits_ == 32 ? Load<float>(at) : Load<double>(at));
  }
  const bool isSigned = format_ == SAMPLEFORMAT_INT;
  switch (bits_) {
    case 8:
      return LoadPart<std::uint8_t>(at);
    case 16:
      return LoadPart<std::uint16_t>(at);
    case 32:
      return isSigned ? LoadPart<std::int32_t>(at) : LoadPart<std::uint32_t>(at);
    default:
      return isSigned ? LoadPart<std::int64_t>(at) : LoadPart<std::uint64_t>(at);
  }
}

TIFFSamples::Color TIFFSamples::LabToColor(double lightness, double a, double b) const {
  const double y = (lightness + 16) / 116;
  const double parts[3] = {FromLabScale(y + a / 500), FromLabScale(y), FromLabScale(y - b / 200)};
  const auto channel = [&](int i) {
    const double* row = toSRGB_[i];
    return Cut(Encoded(row[0] * parts[0] + row[1] * parts[1] + row[2] * parts[2]));
  };
  return {channel(0), channel(1), channel(2)};
}

std::uint32_t TIFFSamples::PixelAt(const Block& block, std::size_t row, std::size_t column) const {
  const auto at = [&](std::size_t sample) { return block.At(row, column, sample); };
  Color color{};
  if (isLab_) {
    // a and b are signed, or begin at -128.
    const auto ab = [&](std::size_t sample) {
      const unsigned char* p = at(sample);
      if (photometric_ == PHOTOMETRIC_ICCLAB) return bits_ == 8 ? *p - 128.0 : Load<std::uint16_t>(p) / 256 - 128;
      return bits_ == 8 ? Load<std::int8_t>(p) : Load<std::int16_t>(p) / 256;
    };
    const bool isLong = photometric_ == PHOTOMETRIC_ICCLAB && bits_ == 16;  // 100 is 0xFF00
    color = LabToColor(Sample(at(0)) * 100 * (isLong ? 65535.0 / 65280 : 1), ab(1), ab(2));
  } else if (isGrey_) {
    const double light = photometric_ == PHOTOMETRIC_MINISWHITE ? 1 - Sample(at(0)) : Sample(at(0));
    color = {light, light, light};
  } else {
    color = {Sample(at(0)), Sample(at(1)), Sample(at(2))};
  }
  const double alpha = hasAlpha_ ? Sample(at(isGrey_ ? 1 : 3)) : 1;
  const auto channel = [&](double part) { return ByteOf(isPremultiplied_ ? std::min(part, alpha) : part * alpha); };
  return ByteOf(alpha) << 24 | channel(color.red) << 16 | channel(color.green) << 8 | channel(color.blue);
}

bool TIFFSamples::ReadBlock(std::uint32_t x, std::uint32_t y, const Block& block) const {
  const std::uint16_t planes = isPlanar_ ? count_ : std::uint16_t{1};
  for (std::uint16_t plane = 0; plane < planes; ++plane) {
    unsigned char* const to = block.bytes.get() + plane * block.size;
    const auto size = static_cast<tmsize_t>(block.size);
    const tmsize_t read = block.isTile ? TIFFReadEncodedTile(tiff_, TIFFComputeTile(tiff_, x, y, 0, plane), to, size)
                                       : TIFFReadEncodedStrip(tiff_, TIFFComputeStrip(tiff_, y, plane), to, size);
    if (read < 0) return false;
  }
  return true;
}

bool TIFFSamples::Read(NewPixels* pixels, std::uint64_t maxBlock, bool* translucent) const {
  Block block{};
  block.isTile = TIFFIsTiled(tiff_) != 0;
  block.isPlanar = isPlanar_;
  block.count = count_;
  block.sampleBytes = bits_ / 8;
  block.width = static_cast<std::uint32_t>(pixels->Width());
  if (block.isTile) TIFFGetField(tiff_, TIFFTAG_TILEWIDTH, &block.width);
  TIFFGetFieldDefaulted(tiff_, block.isTile ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, &block.height);
  block.height = std::min(block.height, block.isTile ? block.height : static_cast<std::uint32_t>(pixels->Height()));
  block.rowBytes = static_cast<std::size_t>(block.isTile ? TIFFTileRowSize(tiff_) : TIFFScanlineSize(tiff_));
  block.size = static_cast<std::size_t>(block.isTile ? TIFFTileSize(tiff_) : TIFFStripSize(tiff_));
  const std::size_t planes = isPlanar_ ? count_ : 1;
  if (block.width == 0 || block.height == 0 || block.rowBytes == 0 || block.size / block.rowBytes < block.height ||
      block.rowBytes < block.width * block.sampleBytes * (isPlanar_ ? 1 : count_) || block.size > maxBlock / planes) {
    return false;
  }
  block.bytes.reset(new (std::nothrow) unsigned char[block.size * planes]());
  if (block.bytes == nullptr) return false;
  for (std::uint32_t y = 0; y < pixels->Height(); y += block.height) {
    for (std::uint32_t x = 0; x < pixels->Width(); x += block.width) {
      if (!ReadBlock(x, y, block)) return false;
      const std::size_t rows = std::min<std::size_t>(block.height, pixels->Height() - y);
      const std::size_t columns = std::min<std::size_t>(block.width, pixels->Width() - x);
      for (std::size_t row = 0; row < rows; ++row) {
        std::uint32_t* out = pixels->Row(y + row) + x;
        for (std::size_t column = 0; column < columns; ++column) out[column] = PixelAt(block, row, column);
        *translucent |= HasTranslucent(out, columns);
      }
    }
  }
  return true;
}

}  // namespace platform
