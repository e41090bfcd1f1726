// JPEG by libjpeg-turbo: baseline and progressive, grey, colour and CMYK.
//
// libjpeg reports errors by a call that must not return, so by a long jump. Each function that a jump may come back to
// owns nothing with a destructor.
#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <vector>

// In this order, and after the standard library, whose types they use:
// clang-format off
#include <jpeglib.h>
#include <jerror.h>
// clang-format on

#include "platform/codecs/CodecPixels.h"
#include "platform/codecs/ImageCodec.h"
#include "platform/graphics/CGImageValue.h"

namespace platform {
namespace {

// A block of 8 by 8 pixels takes a bit at least, so that a byte holds 512 pixels.
constexpr std::uint64_t kMaxPixelsPerByte = 512;
// Arithmetic coding has no such bound; so many pixels are allowed in any file.
constexpr std::uint64_t kPixelsAlwaysAllowed = 1 << 16;
// Each scan of a progressive file goes over the whole image: a small file of many scans would take for ever.
constexpr int kMaxScans = 500;
// From here on colours are stored for every pixel and not for every four.
constexpr int kFullColorQuality = 90;

struct Errors {
  jpeg_error_mgr manager;  // first, so that a pointer to the one is a pointer to the other
  jmp_buf jump;
  bool reachedEnd;  // of the bytes; libjpeg then goes on as if there were a mark of the end
};

[[noreturn]] void Fail(j_common_ptr info) { std::longjmp(reinterpret_cast<Errors*>(info->err)->jump, 1); }

// libjpeg goes on after damage with what it can guess. A picture with a hole in it is no picture here. The end of the
// bytes is damage when something else than the mark of the end is missing: more is asked for, or codes of pixels lack.
void OnMessage(j_common_ptr info, int level) {
  if (level >= 0) return;
  auto* errors = reinterpret_cast<Errors*>(info->err);
  switch (info->err->msg_code) {
    case JWRN_JPEG_EOF:
      if (errors->reachedEnd) Fail(info);
      errors->reachedEnd = true;
      return;
    case JWRN_HIT_MARKER:
    case JWRN_HUFF_BAD_CODE:
    case JWRN_ARITH_BAD_CODE:
    case JWRN_MUST_RESYNC:
      Fail(info);
    default:
      return;
  }
}

void SetUp(Errors* errors) {
  jpeg_std_error(&errors->manager);
  errors->manager.error_exit = &Fail;
  errors->manager.emit_message = &OnMessage;
}

// --- Reading -----------------------------------------------------------------------------------------------------

void LimitScans(j_common_ptr info) {
  if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number > kMaxScans) Fail(info);
}

// `inverted`: no ink is 255, as in every file that carries the marker of the program that began with it.
void ConvertCMYKRow(std::uint32_t* row, std::size_t count, bool inverted) {
  const std::uint32_t flip = inverted ? 0 : 0xFFFFFFFF;
  for (std::size_t x = 0; x < count; ++x) {
    const std::uint32_t word = row[x] ^ flip;
    const std::uint32_t light = word >> 24;
    const auto channel = [word, light](int shift) { return ((word >> shift & 0xFF) * light + 127) / 255; };
    row[x] = 0xFF000000 | channel(0) << 16 | channel(8) << 8 | channel(16);
  }
}

class Reader {
 public:
  Reader() {
    SetUp(&errors_);
    info_.err = &errors_.manager;
  }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;
  ~Reader() { jpeg_destroy_decompress(&info_); }

  bool ReadHeader(ByteSpan file) {
    if (setjmp(errors_.jump) != 0) return false;
    jpeg_create_decompress(&info_);
    jpeg_mem_src(&info_, file.data(), file.size());
    jpeg_read_header(&info_, TRUE);
    progress_.progress_monitor = &LimitScans;
    info_.progress = &progress_;
    isCMYK_ = info_.jpeg_color_space == JCS_CMYK || info_.jpeg_color_space == JCS_YCCK;
    info_.out_color_space = isCMYK_ ? JCS_CMYK : JCS_EXT_BGRA;
    return true;
  }

  std::uint64_t Width() const { return info_.image_width; }
  std::uint64_t Height() const { return info_.image_height; }

  bool ReadPixels(NewPixels* pixels) {
    if (setjmp(errors_.jump) != 0) return false;
    jpeg_start_decompress(&info_);
    if (info_.output_components != 4) return false;
    while (info_.output_scanline < info_.output_height) {
      std::uint32_t* row = pixels->Row(info_.output_scanline);
      auto* bytes = reinterpret_cast<JSAMPROW>(row);
      jpeg_read_scanlines(&info_, &bytes, 1);
      if (isCMYK_) ConvertCMYKRow(row, pixels->Width(), info_.saw_Adobe_marker != FALSE);
    }
    const bool isWhole = HasAllScans();  // of a file that lacks its end the rest is not known afterwards
    jpeg_finish_decompress(&info_);
    return isWhole || !errors_.reachedEnd;
  }

 private:
  // Whether nothing can be missing behind what was read, although no mark of the end was there.
  bool HasAllScans() const {
    if (info_.arith_code != FALSE) return false;  // its codes go on without an end
    if (info_.progressive_mode == FALSE) {
      return info_.comps_in_scan == info_.num_components || info_.input_scan_number >= info_.num_components;
    }
    for (int component = 0; component < info_.num_components; ++component) {
      const int* bits = info_.coef_bits[component];
      if (!std::all_of(bits, bits + DCTSIZE2, [](int missing) { return missing == 0; })) return false;
    }
    return true;
  }

  Errors errors_ = {};
  jpeg_progress_mgr progress_ = {};
  jpeg_decompress_struct info_ = {};
  bool isCMYK_ = false;
};

bool Sniff(ByteSpan head) { return head.size() >= 3 && head[0] == 0xFF && head[1] == 0xD8 && head[2] == 0xFF; }

CGImageRef Decode(ByteSpan file, RefusedSize* refused) {
  Reader reader;
  if (!reader.ReadHeader(file)) return nullptr;
  NewPixels pixels(reader.Width(), reader.Height(), file.size() * kMaxPixelsPerByte + kPixelsAlwaysAllowed, refused);
  if (!pixels.IsValid() || !reader.ReadPixels(&pixels)) return nullptr;
  return pixels.MakeImage(false);
}

// --- Writing -----------------------------------------------------------------------------------------------------

constexpr std::size_t kOutputStep = 1 << 16;

struct Output {
  jpeg_destination_mgr manager;  // first, so that a pointer to the one is a pointer to the other
  ByteSink* sink;
};

// Makes room behind the bytes that are there.
void Grow(j_compress_ptr info) {
  auto* output = reinterpret_cast<Output*>(info->dest);
  const std::size_t size = output->sink->Size();
  if (!output->sink->Resize(size + kOutputStep)) Fail(reinterpret_cast<j_common_ptr>(info));
  output->manager.next_output_byte = output->sink->MutableData() + size;
  output->manager.free_in_buffer = kOutputStep;
}

boolean GrowAgain(j_compress_ptr info) {
  Grow(info);
  return TRUE;
}

void Finish(j_compress_ptr info) {
  auto* output = reinterpret_cast<Output*>(info->dest);
  output->sink->Resize(output->sink->Size() - output->manager.free_in_buffer);
}

class Writer {
 public:
  explicit Writer(ByteSink* sink) {
    SetUp(&errors_);
    info_.err = &errors_.manager;
    output_.manager.init_destination = &Grow;
    output_.manager.empty_output_buffer = &GrowAgain;
    output_.manager.term_destination = &Finish;
    output_.sink = sink;
  }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;
  ~Writer() { jpeg_destroy_compress(&info_); }

  bool Write(const CGImage& image, const EncodeOptions& options, unsigned char* row) {
    if (setjmp(errors_.jump) != 0) return false;
    jpeg_create_compress(&info_);
    info_.dest = &output_.manager;
    info_.image_width = static_cast<JDIMENSION>(image.pixels.Width());
    info_.image_height = static_cast<JDIMENSION>(image.pixels.Height());
    // An opaque image's rows are what libjpeg can read; a translucent one's are mixed with white first.
    info_.input_components = image.hasAlpha ? 3 : 4;
    info_.in_color_space = image.hasAlpha ? JCS_EXT_RGB : JCS_EXT_BGRX;
    jpeg_set_defaults(&info_);
    SetOptions(options);
    jpeg_start_compress(&info_, TRUE);
    while (info_.next_scanline < info_.image_height) {
      const std::uint32_t* pixels = ImageRow(image, info_.next_scanline);
      if (image.hasAlpha) StoreRGBOverWhite(pixels, info_.image_width, row);
      auto* bytes = image.hasAlpha ? row : reinterpret_cast<JSAMPROW>(const_cast<std::uint32_t*>(pixels));
      jpeg_write_scanlines(&info_, &bytes, 1);
    }
    jpeg_finish_compress(&info_);
    return true;
  }

 private:
  void SetOptions(const EncodeOptions& options) {
    const int quality = static_cast<int>(std::lround(std::clamp(options.quality, 0.0, 1.0) * 100));
    jpeg_set_quality(&info_, quality, TRUE);
    if (quality >= kFullColorQuality) info_.comp_info[0].h_samp_factor = info_.comp_info[0].v_samp_factor = 1;
    if (!(options.dotsPerInchX > 0 && options.dotsPerInchY > 0)) return;
    info_.density_unit = 1;  // dots per inch
    info_.X_density = static_cast<UINT16>(std::lround(std::min(options.dotsPerInchX, 65535.0)));
    info_.Y_density = static_cast<UINT16>(std::lround(std::min(options.dotsPerInchY, 65535.0)));
  }

  Errors errors_ = {};
  Output output_ = {};
  jpeg_compress_struct info_ = {};
};

bool Encode(const CGImage& image, const EncodeOptions& options, ByteSink* sink) {
  std::vector<unsigned char> row(image.pixels.Width() * 3);
  return Writer(sink).Write(image, options, row.data());
}

}  // namespace

const ImageCodec kJPEGCodec = {"public.jpeg", &Sniff, &Decode, &Encode};

}  // namespace platform
