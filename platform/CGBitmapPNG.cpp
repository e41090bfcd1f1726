// The pixels of a bitmap context as a PNG file in memory.
#include <png.h>

#include <csetjmp>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "CoreGraphics/CGBitmapContext.h"
#include "platform/CGContextState.h"

namespace {

struct Output {
  unsigned char* bytes = nullptr;
  std::size_t size = 0;
  std::size_t capacity = 0;
};

void Append(png_structp png, png_bytep data, png_size_t count) {
  auto* output = static_cast<Output*>(png_get_io_ptr(png));
  if (count > output->capacity - output->size) {
    const std::size_t capacity = (output->size + count) * 2;
    void* grown = std::realloc(output->bytes, capacity);
    if (grown == nullptr) png_error(png, "out of memory");
    output->bytes = static_cast<unsigned char*>(grown);
    output->capacity = capacity;
  }
  std::memcpy(output->bytes + output->size, data, count);
  output->size += count;
}

unsigned char Unpremultiply(unsigned int component, unsigned int alpha) {
  const unsigned int value = (component * 255 + alpha / 2) / alpha;
  return static_cast<unsigned char>(value < 255 ? value : 255);
}

// One row as red, green, blue, alpha, not premultiplied.
void ConvertRow(const BitmapInfo& info, std::size_t y, unsigned char* out) {
  const auto* in = static_cast<const unsigned char*>(info.data) + y * info.bytesPerRow;
  const bool alphaFirst = info.bitmapInfo == kCGBitmapAlphaFirst;
  for (std::size_t x = 0; x < info.width; ++x, in += 4, out += 4) {
    const unsigned int alpha = alphaFirst ? in[0] : in[3];
    if (alpha == 0) {
      std::memset(out, 0, 4);
      continue;
    }
    out[0] = Unpremultiply(alphaFirst ? in[1] : in[2], alpha);
    out[1] = Unpremultiply(alphaFirst ? in[2] : in[1], alpha);
    out[2] = Unpremultiply(alphaFirst ? in[3] : in[0], alpha);
    out[3] = static_cast<unsigned char>(alpha);
  }
}

// libpng reports errors by a long jump back to here: nothing with a destructor may be made in this function.
bool WritePixels(png_structp png, png_infop header, const BitmapInfo& info, unsigned char* row) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_IHDR(png, header, static_cast<png_uint_32>(info.width), static_cast<png_uint_32>(info.height), 8,
               PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, header);
  for (std::size_t y = 0; y < info.height; ++y) {
    ConvertRow(info, y, row);
    png_write_row(png, row);
  }
  png_write_end(png, header);
  return true;
}

bool Encode(const BitmapInfo& info, Output* output) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop header = png != nullptr ? png_create_info_struct(png) : nullptr;
  bool written = false;
  if (header != nullptr) {
    std::vector<unsigned char> row(info.width * 4);
    png_set_write_fn(png, output, &Append, nullptr);
    written = WritePixels(png, header, info, row.data());
  }
  png_destroy_write_struct(&png, &header);
  return written;
}

}  // namespace

void* CGBitmapContextCopyPNG(CGContextRef context, size_t* size) {
  if (size != nullptr) *size = 0;
  if (context == nullptr || context->bitmap == nullptr || size == nullptr) return nullptr;
  Output output;
  if (!Encode(*context->bitmap, &output)) {
    std::free(output.bytes);
    return nullptr;
  }
  *size = output.size;
  return output.bytes;
}
