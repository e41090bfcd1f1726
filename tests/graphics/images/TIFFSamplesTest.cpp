// TIFF files of wide, floating-point, grey-and-alpha and Lab samples, written here by libtiff, against what their
// numbers mean.
#include <tiffio.h>

#include <cmath>
#include <cstring>
#include <random>

#include "tests/graphics/images/ImageTestSupport.h"

namespace {

using file_test::TempFolder;
using image_test::Difference;
using image_test::ForeignPixels;
using image_test::ImageOfFile;
using image_test::Pixels;

constexpr unsigned int kWidth = 37;
constexpr unsigned int kHeight = 29;
constexpr int kNoAlpha = -1;

struct Kind {
  const char* name;
  std::uint16_t bits;
  std::uint16_t format;
  std::uint16_t photometric;
  std::uint16_t samples;
  int alpha;
  bool planar = false;
  bool tiled = false;
  bool bigEndian = false;
  float white[2] = {0, 0};  // x and y; 0 for none

  unsigned int Bytes() const { return bits / 8U; }
};

// Samples of all pixels, each of the kind's bytes.
using Samples = std::vector<unsigned char>;

void Put(TIFF* tiff, const Kind& kind, const Samples& samples, std::uint16_t plane, std::uint16_t perPixel) {
  const bool isTile = kind.tiled;
  const unsigned int blockWidth = isTile ? 16 : kWidth;
  const unsigned int blockHeight = isTile ? 16 : 7;
  const std::size_t pixel = std::size_t{kind.Bytes()} * kind.samples;
  const std::size_t part = std::size_t{kind.Bytes()} * perPixel;
  for (unsigned int y = 0; y < kHeight; y += blockHeight) {
    for (unsigned int x = 0; x < kWidth; x += blockWidth) {
      std::vector<unsigned char> block(blockWidth * blockHeight * part);
      const unsigned int rows = std::min(blockHeight, kHeight - y);
      for (unsigned int row = 0; row < rows; ++row) {
        for (unsigned int column = 0; column < std::min(blockWidth, kWidth - x); ++column) {
          std::memcpy(&block[(row * blockWidth + column) * part],
                      &samples[((y + row) * kWidth + x + column) * pixel + plane * part], part);
        }
      }
      const auto size = static_cast<tmsize_t>(isTile ? block.size() : rows * blockWidth * part);
      if (isTile) {
        TIFFWriteEncodedTile(tiff, TIFFComputeTile(tiff, x, y, 0, plane), block.data(), size);
      } else {
        TIFFWriteEncodedStrip(tiff, TIFFComputeStrip(tiff, y, plane), block.data(), size);
      }
    }
  }
}

void Write(const std::string& path, const Kind& kind, const Samples& samples) {
  TIFF* tiff = TIFFOpen(path.c_str(), kind.bigEndian ? "wb" : "wl");
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kWidth);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kHeight);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, kind.samples);
  TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, kind.format);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.planar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  if (kind.tiled) {
    TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
    TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
  } else {
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 7);
  }
  if (kind.white[1] != 0) TIFFSetField(tiff, TIFFTAG_WHITEPOINT, kind.white);
  if (kind.alpha != kNoAlpha) {
    const auto extra = static_cast<std::uint16_t>(kind.alpha);
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &extra);
  }
  const std::uint16_t planes = kind.planar ? kind.samples : 1;
  for (std::uint16_t plane = 0; plane < planes; ++plane) {
    Put(tiff, kind, samples, plane, kind.planar ? 1 : kind.samples);
  }
  TIFFClose(tiff);
}

template <typename T>
void Append(T value, Samples* samples) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(&value);
  samples->insert(samples->end(), bytes, bytes + sizeof(value));
}

// Appends a sample near `part`, which may lie outside 0 to 1, and returns what it stands for.
double AppendSample(const Kind& kind, double part, Samples* samples) {
  const struct {
    std::uint16_t word;
    double part;
  } halves[] = {{0, 0},      {0x3C00, 1}, {0x3800, 0.5}, {0x3200, 0.1875},
                {0x0001, 0}, {0xB800, 0}, {0x7C00, 1},   {0x7E00, 0}};
  const double inside = part > 0 ? std::min(part, 1.0) : 0;
  if (kind.format == SAMPLEFORMAT_IEEEFP) {
    if (kind.bits == 16) {
      const auto& half = halves[samples->size() * 7 / 2 % 8];
      return Append(half.word, samples), half.part;
    }
    kind.bits == 32 ? Append(static_cast<float>(part), samples) : Append(part, samples);
    return inside;
  }
  if (kind.format == SAMPLEFORMAT_INT) {
    return Append(static_cast<std::int32_t>(std::isnan(part) ? 0 : std::clamp(part, -1.0, 1.0) * 2147483647), samples),
           inside;
  }
  const auto integer = static_cast<std::uint64_t>(std::ldexp(inside, kind.bits) * (1 - 1e-12));
  for (unsigned int i = 0; i < kind.Bytes(); ++i) samples->push_back(static_cast<unsigned char>(integer >> (8 * i)));
  return static_cast<double>(integer) / (std::ldexp(1, kind.bits) - 1);
}

TEST(TIFFSamplesTest, Read_EachKindOfSamples_CountsThemFromNoneToFull) {
  const struct {
    Kind kind;
    bool foreign;  // another program reads it in the same way
  } cases[] = {
      {{"grey alpha 8", 8, SAMPLEFORMAT_UINT, PHOTOMETRIC_MINISBLACK, 2, EXTRASAMPLE_UNASSALPHA}, true},
      {{"grey alpha 8 planar", 8, SAMPLEFORMAT_UINT, PHOTOMETRIC_MINISBLACK, 2, EXTRASAMPLE_UNASSALPHA, true}, false},
      {{"grey alpha 16", 16, SAMPLEFORMAT_UINT, PHOTOMETRIC_MINISBLACK, 2, EXTRASAMPLE_UNASSALPHA}, true},
      {{"grey alpha 16 tiled", 16, SAMPLEFORMAT_UINT, PHOTOMETRIC_MINISBLACK, 2, EXTRASAMPLE_UNASSALPHA, false, true,
        true},
       true},
      {{"grey alpha 8 premultiplied", 8, SAMPLEFORMAT_UINT, PHOTOMETRIC_MINISBLACK, 2, EXTRASAMPLE_ASSOCALPHA}, false},
      {{"inverse grey alpha", 8, SAMPLEFORMAT_UINT, PHOTOMETRIC_MINISWHITE, 2, EXTRASAMPLE_UNASSALPHA}, false},
      {{"grey 32", 32, SAMPLEFORMAT_UINT, PHOTOMETRIC_MINISBLACK, 1, kNoAlpha}, true},
      {{"inverse grey 32", 32, SAMPLEFORMAT_UINT, PHOTOMETRIC_MINISWHITE, 1, kNoAlpha}, false},
      {{"rgb 32 big endian", 32, SAMPLEFORMAT_UINT, PHOTOMETRIC_RGB, 3, kNoAlpha, false, false, true}, true},
      {{"rgb signed 32", 32, SAMPLEFORMAT_INT, PHOTOMETRIC_RGB, 3, kNoAlpha, true}, false},
      {{"grey float", 32, SAMPLEFORMAT_IEEEFP, PHOTOMETRIC_MINISBLACK, 1, kNoAlpha}, false},
      {{"rgb float planar tiled", 32, SAMPLEFORMAT_IEEEFP, PHOTOMETRIC_RGB, 3, kNoAlpha, true, true}, false},
      {{"rgba float", 32, SAMPLEFORMAT_IEEEFP, PHOTOMETRIC_RGB, 4, EXTRASAMPLE_UNASSALPHA, false, true}, false},
      {{"rgb double", 64, SAMPLEFORMAT_IEEEFP, PHOTOMETRIC_RGB, 3, kNoAlpha, false, false, true}, false},
      {{"rgb half", 16, SAMPLEFORMAT_IEEEFP, PHOTOMETRIC_RGB, 3, kNoAlpha}, false},
  };
  std::mt19937 random(20261122);
  std::uniform_real_distribution<double> parts(-0.2, 1.2);
  const TempFolder folder;
  for (const auto& [kind, foreign] : cases) {
    Samples samples;
    std::vector<unsigned char> expected;
    for (unsigned int i = 0; i < kWidth * kHeight; ++i) {
      double part[4] = {};
      for (unsigned int k = 0; k < kind.samples; ++k) {
        const bool isColor = k + 1 < kind.samples || kind.alpha == kNoAlpha;
        part[k] = AppendSample(kind, i == 7 && isColor ? std::nan("") : parts(random), &samples);
      }
      const unsigned int colors = kind.samples < 3 ? 1 : 3;
      const double alpha = kind.alpha == kNoAlpha ? 1 : part[colors];
      for (unsigned int k = 0; k < 3; ++k) {
        double color = part[colors == 1 ? 0 : k];
        if (kind.photometric == PHOTOMETRIC_MINISWHITE) color = 1 - color;
        color = kind.alpha == EXTRASAMPLE_ASSOCALPHA ? std::min(color, alpha) : color * alpha;
        expected.push_back(static_cast<unsigned char>(std::lround(color * 255)));
      }
      expected.push_back(static_cast<unsigned char>(std::lround(alpha * 255)));
    }
    const std::string path = folder.Path("image.tif");
    Write(path, kind, samples);
    const std::vector<unsigned char> pixels = Pixels(ImageOfFile(path));
    EXPECT_LE(Difference(pixels, expected), 1) << kind.name;
    if (!foreign) continue;
    EXPECT_LE(Difference(pixels, ForeignPixels(path)), 1) << kind.name;
  }
}

// CIE 1976 L*a*b* under D50 to sRGB, as B. Lindbloom publishes the formulas and matrices.
std::vector<unsigned char> FromLab(double lightness, double a, double b) {
  constexpr double kEpsilon = 216.0 / 24389;
  constexpr double kKappa = 24389.0 / 27;
  const double fy = (lightness + 16) / 116;
  const double fx = fy + a / 500;
  const double fz = fy - b / 200;
  const auto part = [&](double f) { return f * f * f > kEpsilon ? f * f * f : (116 * f - 16) / kKappa; };
  const double x = 0.96422 * part(fx);
  const double y = lightness > kKappa * kEpsilon ? fy * fy * fy : lightness / kKappa;
  const double z = 0.82521 * part(fz);
  const double linear[3] = {3.1338561 * x - 1.6168667 * y - 0.4906146 * z,
                            -0.9787684 * x + 1.9161415 * y + 0.0334540 * z,
                            0.0719453 * x - 0.2289914 * y + 1.4052427 * z};
  std::vector<unsigned char> pixel;
  for (const double c : linear) {
    const double encoded = c <= 0.0031308 ? 12.92 * c : 1.055 * std::pow(c, 1 / 2.4) - 0.055;
    pixel.push_back(static_cast<unsigned char>(std::lround(std::clamp(encoded, 0.0, 1.0) * 255)));
  }
  pixel.push_back(255);
  return pixel;
}

TEST(TIFFSamplesTest, Read_Lab_IsTheColourThatTheFormulasGive) {
  const TempFolder folder;
  std::mt19937 random(20261122);
  for (const std::uint16_t photometric : {PHOTOMETRIC_CIELAB, PHOTOMETRIC_ICCLAB}) {
    for (const std::uint16_t bits : {8, 16}) {
      const bool isICC = photometric == PHOTOMETRIC_ICCLAB;
      Samples samples;
      std::vector<unsigned char> expected;
      for (unsigned int i = 0; i < kWidth * kHeight; ++i) {
        const unsigned int l = random() % 256;
        const int a = static_cast<int>(random() % 160) - 80;
        const int b = static_cast<int>(random() % 160) - 80;
        const double stored[] = {l / 255.0 * 100, double(a), double(b)};
        const std::vector<unsigned char> pixel = FromLab(stored[0], stored[1], stored[2]);
        expected.insert(expected.end(), pixel.begin(), pixel.end());
        if (bits == 8) {
          for (const int part : {int(l), a + (isICC ? 128 : 0), b + (isICC ? 128 : 0)}) {
            samples.push_back(static_cast<unsigned char>(part));
          }
        } else {
          Append(static_cast<std::uint16_t>(isICC ? l * 256 : l * 257), &samples);
          for (const int part : {a, b}) Append(static_cast<std::uint16_t>((part + (isICC ? 128 : 0)) * 256), &samples);
        }
      }
      const std::string path = folder.Path("image.tif");
      Write(path, {"lab", bits, SAMPLEFORMAT_UINT, photometric, 3, kNoAlpha}, samples);
      EXPECT_LE(Difference(Pixels(ImageOfFile(path)), expected), 1) << photometric << " " << bits;
    }
  }
}

// Whatever white the file is seen under, its greys are greys of the same lightness; one that is none counts as D50.
TEST(TIFFSamplesTest, Read_LabUnderAnyWhite_KeepsGreys) {
  const TempFolder folder;
  const float whites[][2] = {{0.3127F, 0.3290F}, {0.4476F, 0.4074F}, {0.8F, 0.9F}};
  for (const auto& white : whites) {
    Samples samples;
    std::vector<unsigned char> expected;
    for (unsigned int i = 0; i < kWidth * kHeight; ++i) {
      const auto lightness = static_cast<unsigned char>(i * 7);
      samples.insert(samples.end(), {lightness, 0, 0});
      const std::vector<unsigned char> pixel = FromLab(lightness / 255.0 * 100, 0, 0);
      expected.insert(expected.end(), pixel.begin(), pixel.end());
    }
    Kind kind{"white", 8, SAMPLEFORMAT_UINT, PHOTOMETRIC_CIELAB, 3, kNoAlpha};
    std::copy(white, white + 2, kind.white);
    Write(folder.Path("image.tif"), kind, samples);
    EXPECT_LE(Difference(Pixels(ImageOfFile(folder.Path("image.tif"))), expected), 1) << white[0];
  }
}

}  // namespace
