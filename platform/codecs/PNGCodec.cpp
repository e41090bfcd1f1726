// PNG by libpng: all colour types and depths, interlaced or not.
//
// libpng reports errors by a long jump. Each function that a jump may come back to owns nothing with a destructor.
#include <png.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstring>
#include <vector>

#include "platform/codecs/CodecPixels.h"
#include "platform/codecs/ImageCodec.h"
#include "platform/graphics/CGImageValue.h"

namespace platform {
namespace {

// What deflate can make of one byte at the very most.
constexpr std::uint64_t kMaxInflation = 1032;
constexpr double kInchesPerMeter = 1 / 0.0254;

[[noreturn]] void Fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void Ignore(png_structp, png_const_charp) {}

// --- Reading -----------------------------------------------------------------------------------------------------

// The last chunk, which says nothing but that it is the last.
constexpr unsigned char kEnd[] = {0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};

// What a file lacks that ends behind a whole chunk or within the last one: so much of the last one.
ByteSpan MissingEnd(ByteSpan file) {
  constexpr std::size_t kSignature = 8;
  constexpr std::uint64_t kAroundData = 12;  // length, name and check sum of a chunk
  ByteSpan rest = file.subspan(std::min(file.size(), kSignature));
  while (rest.size() >= kAroundData) {
    const std::uint64_t size = kAroundData + png_get_uint_32(rest.data());
    if (size > rest.size()) break;
    if (std::memcmp(rest.data(), kEnd, kAroundData) == 0) return {};
    rest = rest.subspan(size);
  }
  const bool isItsStart = rest.size() < kAroundData && std::equal(rest.begin(), rest.end(), kEnd);
  return isItsStart ? ByteSpan(kEnd).subspan(rest.size()) : ByteSpan();
}

struct Input {
  ByteSpan rest;
  ByteSpan behind;  // is read after it
};

void ReadBytes(png_structp png, png_bytep out, png_size_t count) {
  auto* input = static_cast<Input*>(png_get_io_ptr(png));
  if (count > input->rest.size() + input->behind.size()) png_error(png, "the file ends early");
  for (ByteSpan* part : {&input->rest, &input->behind}) {
    const std::size_t taken = std::min(count, part->size());
    std::copy_n(part->begin(), taken, out);
    *part = part->subspan(taken);
    out += taken;
    count -= taken;
  }
}

class Reader {
 public:
  explicit Reader(ByteSpan file)
      : input_{file, MissingEnd(file)},
        png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, &Fail, &Ignore)),
        info_(png_ == nullptr ? nullptr : png_create_info_struct(png_)) {
    if (info_ != nullptr) png_set_read_fn(png_, &input_, &ReadBytes);
  }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;
  ~Reader() { png_destroy_read_struct(&png_, &info_, nullptr); }

  bool IsValid() const { return info_ != nullptr; }

  bool ReadHeader() {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    png_read_info(png_, info_);
    return true;
  }

  std::uint64_t Width() const { return png_get_image_width(png_, info_); }
  std::uint64_t Height() const { return png_get_image_height(png_, info_); }
  std::uint64_t RowBytes() const { return png_get_rowbytes(png_, info_); }
  bool HasAlpha() const {
    return (png_get_color_type(png_, info_) & PNG_COLOR_MASK_ALPHA) != 0 ||
           png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
  }

  /// Native pixels; `*translucent` tells whether one of them is not opaque.
  bool ReadPixels(NewPixels* pixels, bool* translucent) {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    const bool hasAlpha = HasAlpha();
    png_set_expand(png_);
    png_set_scale_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_bgr(png_);
    if (!hasAlpha) png_set_filler(png_, 0xFF, PNG_FILLER_AFTER);
    const int passCount = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    if (png_get_rowbytes(png_, info_) != pixels->Width() * 4) return false;
    for (int pass = 1; pass <= passCount; ++pass) {
      for (std::size_t y = 0; y < pixels->Height(); ++y) {
        png_read_row(png_, reinterpret_cast<png_bytep>(pixels->Row(y)), nullptr);
        // While the row is still in the processor's cache.
        if (hasAlpha && pass == passCount) *translucent |= PremultiplyRow(pixels->Row(y), pixels->Width());
      }
    }
    png_read_end(png_, nullptr);
    return true;
  }

 private:
  Input input_;
  png_structp png_;
  png_infop info_;
};

bool Sniff(ByteSpan head) { return head.size() >= 8 && png_sig_cmp(head.data(), 0, 8) == 0; }

CGImageRef Decode(ByteSpan file, RefusedSize* refused) {
  Reader reader(file);
  if (!reader.IsValid() || !reader.ReadHeader()) return nullptr;
  if (reader.RowBytes() * reader.Height() > file.size() * kMaxInflation) return nullptr;
  NewPixels pixels(reader.Width(), reader.Height(), UINT64_MAX, refused);
  bool translucent = false;
  if (!pixels.IsValid() || !reader.ReadPixels(&pixels, &translucent)) return nullptr;
  return pixels.MakeImage(translucent);
}

// --- Writing -----------------------------------------------------------------------------------------------------

void WriteBytes(png_structp png, png_bytep data, png_size_t count) {
  if (!static_cast<ByteSink*>(png_get_io_ptr(png))->Append(data, count)) png_error(png, "out of memory");
}
void Flush(png_structp) {}

void WriteResolution(png_structp png, png_infop info, const EncodeOptions& options) {
  if (!(options.dotsPerInchX > 0 && options.dotsPerInchY > 0)) return;
  const auto perMeter = [](double dotsPerInch) {
    return static_cast<png_uint_32>(std::lround(std::min(dotsPerInch, 1e6) * kInchesPerMeter));
  };
  png_set_pHYs(png, info, perMeter(options.dotsPerInchX), perMeter(options.dotsPerInchY), PNG_RESOLUTION_METER);
}

bool Write(png_structp png, png_infop info, const CGImage& image, const EncodeOptions& options, bool withAlpha,
           unsigned char* row) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  const auto width = static_cast<png_uint_32>(image.pixels.Width());
  const auto height = static_cast<png_uint_32>(image.pixels.Height());
  png_set_IHDR(png, info, width, height, 8, withAlpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  WriteResolution(png, info, options);
  png_write_info(png, info);
  for (png_uint_32 y = 0; y < height; ++y) {
    (withAlpha ? StoreStraightRGBA : StoreRGBOverWhite)(ImageRow(image, y), width, row);
    png_write_row(png, row);
  }
  png_write_end(png, info);
  return true;
}

bool Encode(const CGImage& image, const EncodeOptions& options, ByteSink* sink) {
  const bool withAlpha = image.hasAlpha && options.keepsAlpha;
  std::vector<unsigned char> row(image.pixels.Width() * 4);
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, &Fail, &Ignore);
  png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);
  bool written = false;
  if (info != nullptr) {
    png_set_write_fn(png, sink, &WriteBytes, &Flush);
    written = Write(png, info, image, options, withAlpha, row.data());
  }
  png_destroy_write_struct(&png, &info);
  return written;
}

}  // namespace

const ImageCodec kPNGCodec = {"public.png", &Sniff, &Decode, &Encode};

}  // namespace platform
