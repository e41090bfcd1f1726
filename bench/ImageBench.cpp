// Image files of 12 megapixels against the codec libraries alone, and their scaling against cairo by hand. Each side
// reads to, or writes from, the same premultiplied 32-bit pixels in memory and the same kind of file on the disk.
#include <cairo.h>
#include <png.h>
#include <stdlib.h>
#include <tiffio.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

// It uses types of the standard library, which it does not include:
// clang-format off
#include <jpeglib.h>
// clang-format on

#include "bench/Ratio.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/images/AGImage.h"
#include "kit/files/AKFilePath.h"

namespace {

constexpr unsigned int kWidth = 4000;
constexpr unsigned int kHeight = 3000;
constexpr int kQuality = 80;

struct FileCloser {
  void operator()(FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<FILE, FileCloser>;

// Something like a photograph: soft shapes and noise; translucent on one side.
AGImage Photograph(bool translucent) {
  AGBitmap bitmap(kWidth, kHeight, 0U);
  std::uint32_t noise = 1;
  for (unsigned int y = 0; y < kHeight; ++y) {
    for (unsigned int x = 0; x < kWidth; ++x) {
      noise = noise * 1664525 + 1013904223;
      const unsigned int alpha = translucent && x < kWidth / 4 ? 64 + x % 128 : 255;
      const auto channel = [&](unsigned int value) {
        return static_cast<unsigned char>((value % 240 + (noise >> 28)) * alpha / 255);
      };
      bitmap.SetPixelColor(
          x, y, AGColor(channel(x / 17), channel(y / 13), channel((x + y) / 29), static_cast<unsigned char>(alpha)));
    }
  }
  return AGImage(bitmap);
}

const AGImage& Opaque() {
  static const AGImage image = Photograph(false);
  return image;
}

// Premultiplied, blue first, as a native image's.
std::vector<unsigned char> PixelsOf(const AGImage& image) {
  const AGBitmap bitmap(image, 0);
  std::vector<unsigned char> pixels(bitmap.ByteCount());
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = bitmap.Pixels()[i / 4 * 4 + 3 - i % 4];
  return pixels;
}

class TemporaryFile {
 public:
  TemporaryFile() { ::close(::mkstemp(path_.data())); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { ::unlink(path_.c_str()); }
  const char* Path() const { return path_.c_str(); }

 private:
  std::string path_ = "/tmp/ak_image_bench_XXXXXX";
};

void Premultiply(unsigned char* row) {
  for (unsigned char* pixel = row; pixel < row + 4 * kWidth; pixel += 4) {
    const unsigned int alpha = pixel[3];
    for (int i = 0; i < 3; ++i) pixel[i] = static_cast<unsigned char>((pixel[i] * alpha + 127) / 255);
  }
}

void ReadPNG(const char* path, unsigned char* pixels) {
  const FileHandle file(std::fopen(path, "rb"));
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file.get());
  png_read_info(png, info);
  const bool hasAlpha = png_get_color_type(png, info) == PNG_COLOR_TYPE_RGB_ALPHA;
  png_set_bgr(png);
  if (!hasAlpha) png_set_filler(png, 255, PNG_FILLER_AFTER);
  png_read_update_info(png, info);
  for (unsigned int y = 0; y < kHeight; ++y) {
    unsigned char* row = pixels + std::size_t{y} * kWidth * 4;
    png_read_row(png, row, nullptr);
    if (hasAlpha) Premultiply(row);
  }
  png_read_end(png, nullptr);
  png_destroy_read_struct(&png, &info, nullptr);
}

void WritePNG(const char* path, const unsigned char* pixels) {
  const FileHandle file(std::fopen(path, "wb"));
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file.get());
  png_set_IHDR(png, info, kWidth, kHeight, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  png_set_bgr(png);
  png_set_filler(png, 0, PNG_FILLER_AFTER);
  for (unsigned int y = 0; y < kHeight; ++y) png_write_row(png, pixels + std::size_t{y} * kWidth * 4);
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  ::fsync(::fileno(file.get()));
}

void ReadJPEG(const char* path, unsigned char* pixels) {
  const FileHandle file(std::fopen(path, "rb"));
  jpeg_error_mgr errors;
  jpeg_decompress_struct info = {};
  info.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&info);
  jpeg_stdio_src(&info, file.get());
  jpeg_read_header(&info, TRUE);
  info.out_color_space = JCS_EXT_BGRA;
  jpeg_start_decompress(&info);
  while (info.output_scanline < kHeight) {
    unsigned char* row = pixels + std::size_t{info.output_scanline} * kWidth * 4;
    jpeg_read_scanlines(&info, &row, 1);
  }
  jpeg_finish_decompress(&info);
  jpeg_destroy_decompress(&info);
}

void WriteJPEG(const char* path, const unsigned char* pixels) {
  const FileHandle file(std::fopen(path, "wb"));
  jpeg_error_mgr errors;
  jpeg_compress_struct info = {};
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  jpeg_stdio_dest(&info, file.get());
  info.image_width = kWidth;
  info.image_height = kHeight;
  info.input_components = 4;
  info.in_color_space = JCS_EXT_BGRX;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, kQuality, TRUE);
  jpeg_start_compress(&info, TRUE);
  while (info.next_scanline < kHeight) {
    auto* row = const_cast<unsigned char*>(pixels + std::size_t{info.next_scanline} * kWidth * 4);
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  std::fflush(file.get());
  ::fsync(::fileno(file.get()));
}

void ReadTIFF(const char* path, unsigned char* pixels) {
  TIFF* tiff = TIFFOpen(path, "r");
  auto* words = reinterpret_cast<std::uint32_t*>(pixels);
  TIFFReadRGBAImageOriented(tiff, kWidth, kHeight, words, ORIENTATION_TOPLEFT, 1);
  for (std::size_t i = 0; i < std::size_t{kWidth} * kHeight; ++i) {
    words[i] = (words[i] & 0xFF00FF00) | (words[i] >> 16 & 0xFF) | (words[i] & 0xFF) << 16;
  }
  TIFFClose(tiff);
}

void WriteTIFF(const char* path, const unsigned char* pixels) {
  TIFF* tiff = TIFFOpen(path, "w");
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kWidth);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kHeight);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 5);
  std::vector<unsigned char> row(kWidth * 3);
  for (unsigned int y = 0; y < kHeight; ++y) {
    const unsigned char* source = pixels + std::size_t{y} * kWidth * 4;
    for (unsigned int x = 0; x < kWidth; ++x, source += 4) {
      row[3 * x] = source[2];
      row[3 * x + 1] = source[1];
      row[3 * x + 2] = source[0];
    }
    TIFFWriteScanline(tiff, row.data(), y, 0);
  }
  TIFFFlush(tiff);
  ::fsync(TIFFFileno(tiff));
  TIFFClose(tiff);
}

void Save(const AGImage& image, const char* path, AGImageFileFormat format) {
  if (!image.SaveToFile(AKFilePath(path), format, kQuality / 100.0, false)) std::abort();
}

bool ReadPair(const char* name, AGImageFileFormat format, void (*read)(const char*, unsigned char*)) {
  const auto file = std::make_shared<TemporaryFile>();
  // A file is written when it is first needed, so that another program of the pairs does not pay for it.
  const auto prepare = [file, format] {
    if (FileHandle(std::fopen(file->Path(), "rb")) == nullptr || ::truncate(file->Path(), 0) != 0) std::abort();
    Save(Opaque(), file->Path(), format);
  };
  return ratio::Pair(
      name, 1.1,
      [=](benchmark::State& state) {
        prepare();
        for (auto _ : state) {
          AGImage image;
          if (!image.SetupFromFile(AKFilePath(file->Path()))) state.SkipWithError("not read");
        }
      },
      [=](benchmark::State& state) {
        prepare();
        for (auto _ : state) {
          const std::unique_ptr<unsigned char, decltype(&std::free)> pixels(
              static_cast<unsigned char*>(std::calloc(std::size_t{kWidth} * kHeight, 4)), &std::free);
          read(file->Path(), pixels.get());
        }
      });
}

bool WritePair(const char* name, AGImageFileFormat format, void (*write)(const char*, const unsigned char*)) {
  const auto file = std::make_shared<TemporaryFile>();
  return ratio::Pair(
      name, 1.1,
      [=](benchmark::State& state) {
        for (auto _ : state) Save(Opaque(), file->Path(), format);
      },
      [=](benchmark::State& state) {
        const std::vector<unsigned char> pixels = PixelsOf(Opaque());
        for (auto _ : state) write(file->Path(), pixels.data());
      });
}

bool ScalePair(const char* name, bool translucent, unsigned int width, AGImageQuality quality, cairo_filter_t filter) {
  const unsigned int height = width * 3 / 4;
  return ratio::Pair(
      name, 1.0,
      [=](benchmark::State& state) {
        const AGImage image = Photograph(translucent);
        AGBitmap window(width, height, AGBitmap::kFlagLittleEndian);
        const AGContext context = window.GetContextOfBitmap();
        for (auto _ : state) context.DrawImage(image, AGRect{0, 0, 1.0 * width, 1.0 * height}, false, quality);
      },
      [=](benchmark::State& state) {
        std::vector<unsigned char> pixels = PixelsOf(Photograph(translucent));
        cairo_surface_t* image =
            cairo_image_surface_create_for_data(pixels.data(), CAIRO_FORMAT_ARGB32, kWidth, kHeight, kWidth * 4);
        cairo_surface_t* window =
            cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(width), static_cast<int>(height));
        for (auto _ : state) {
          cairo_t* cairo = cairo_create(window);
          cairo_scale(cairo, 1.0 * width / kWidth, 1.0 * height / kHeight);
          cairo_set_source_surface(cairo, image, 0, 0);
          cairo_pattern_set_filter(cairo_get_source(cairo), filter);
          cairo_paint(cairo);
          cairo_destroy(cairo);
        }
        cairo_surface_destroy(window);
        cairo_surface_destroy(image);
      });
}

// A part of it as large as the window, one pixel a pixel, upright or turned.
bool TurnPair(const char* name, double angle) {
  constexpr unsigned int kSide = 1000;
  return ratio::Pair(
      name, 1.0,
      [=](benchmark::State& state) {
        AGBitmap window(kSide, kSide, AGBitmap::kFlagLittleEndian);
        const AGContext context = window.GetContextOfBitmap();
        const AGAffineTransform turn = AGAffineTransformRotation(angle, {kSide / 2.0, kSide / 2.0});
        for (auto _ : state) context.DrawImage(Opaque(), AGPoint{-1500, -1000}, turn, kAGImageQualityDefault);
      },
      [=](benchmark::State& state) {
        std::vector<unsigned char> pixels = PixelsOf(Opaque());
        cairo_surface_t* image =
            cairo_image_surface_create_for_data(pixels.data(), CAIRO_FORMAT_ARGB32, kWidth, kHeight, kWidth * 4);
        cairo_surface_t* window = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide);
        for (auto _ : state) {
          cairo_t* cairo = cairo_create(window);
          cairo_translate(cairo, kSide / 2.0, kSide / 2.0);
          cairo_rotate(cairo, angle);
          cairo_set_source_surface(cairo, image, -2000, -1500);
          cairo_paint(cairo);
          cairo_destroy(cairo);
        }
        cairo_surface_destroy(window);
        cairo_surface_destroy(image);
      });
}

const bool kRegistered[] = {
    TurnPair("12 MP on 1,000 x 1,000 pixels, 1:1", 0),
    TurnPair("12 MP on 1,000 x 1,000 pixels, turned", 0.3),
    ReadPair("12 MP PNG read", AGImageFileFormat::kPNG, &ReadPNG),
    ReadPair("12 MP JPEG read", AGImageFileFormat::kJPEG, &ReadJPEG),
    ReadPair("12 MP TIFF read", AGImageFileFormat::kTIFF, &ReadTIFF),
    WritePair("12 MP PNG written", AGImageFileFormat::kPNG, &WritePNG),
    WritePair("12 MP JPEG written", AGImageFileFormat::kJPEG, &WriteJPEG),
    WritePair("12 MP TIFF written", AGImageFileFormat::kTIFF, &WriteTIFF),
    ScalePair("12 MP into 1,000 pixels, high", false, 1000, 3, CAIRO_FILTER_BEST),
    ScalePair("12 MP translucent into 900 pixels, high", true, 900, 3, CAIRO_FILTER_BEST),
    ScalePair("12 MP into 1,000 pixels, high / good filter", false, 1000, 3, CAIRO_FILTER_GOOD),
    ScalePair("12 MP into 900 pixels, high / good filter", false, 900, 3, CAIRO_FILTER_GOOD),
};

}  // namespace
