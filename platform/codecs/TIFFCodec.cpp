// TIFF by libtiff: strips or tiles, grey, palette, colour, CMYK, Lab, in either order of bytes. What libtiff does not
// convert is in TIFFSamples.h.
#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "platform/codecs/CodecPixels.h"
#include "platform/codecs/ImageCodec.h"
#include "platform/codecs/TIFFSamples.h"
#include "platform/graphics/CGImageValue.h"

namespace platform {
namespace {

// What one byte can hold at the very most: fax codes a blank row of any length in a bit, deflate and LZW make some
// 1,400 bytes of one.
constexpr std::uint64_t kMaxPixelsPerByte = 1 << 16;
constexpr std::uint64_t kMaxInflation = 1400;
constexpr std::uint64_t kPixelsAlwaysAllowed = 1 << 16;
constexpr std::uint64_t kMaxBlock = UINT32_MAX;

struct TiffDeleter {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
  void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};
using TiffHandle = std::unique_ptr<TIFF, TiffDeleter>;
using TiffOptions = std::unique_ptr<TIFFOpenOptions, TiffDeleter>;

// What libtiff says. It goes on after damage with what it can guess; here damage is the end of it.
struct Messages {
  bool tellOfDamage = false;
};

int OnError(TIFF*, void* data, const char*, const char*, va_list) {
  static_cast<Messages*>(data)->tellOfDamage = true;
  return 1;
}

// Warnings are of odd files that can be read all the same, but for one: a tag whose value lies beyond the file's end.
int OnWarning(TIFF*, void* data, const char*, const char* format, va_list) {
  constexpr char kTagCutOff[] = "IO error";
  if (std::strncmp(format, kTagCutOff, sizeof(kTagCutOff) - 1) == 0) static_cast<Messages*>(data)->tellOfDamage = true;
  return 1;
}

// Prints nothing, and takes no block above `maxBlock` bytes.
TiffOptions Options(std::uint64_t maxBlock, Messages* messages) {
  TiffOptions options(TIFFOpenOptionsAlloc());
  if (options == nullptr) return options;
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &OnError, messages);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &OnWarning, messages);
  TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(std::min(maxBlock, kMaxBlock)));
  return options;
}

// The bytes of a file: those that are read, or a sink's.
struct MemoryFile {
  ByteSpan bytes;
  ByteSink* sink = nullptr;
  std::uint64_t position = 0;

  std::uint64_t Size() const { return sink != nullptr ? sink->Size() : bytes.size(); }
};

tmsize_t ReadBytes(thandle_t handle, void* out, tmsize_t count) {
  auto* file = static_cast<MemoryFile*>(handle);
  if (count < 0 || file->position >= file->Size()) return 0;
  const std::uint64_t available =
      std::min<std::uint64_t>(static_cast<std::uint64_t>(count), file->Size() - file->position);
  const unsigned char* data = file->sink != nullptr ? file->sink->Data() : file->bytes.data();
  std::memcpy(out, data + file->position, available);
  file->position += available;
  return static_cast<tmsize_t>(available);
}

tmsize_t WriteBytes(thandle_t handle, void* data, tmsize_t count) {
  auto* file = static_cast<MemoryFile*>(handle);
  if (count < 0 || file->sink == nullptr) return -1;
  if (!file->sink->WriteAt(file->position, data, static_cast<std::size_t>(count))) return -1;
  file->position += static_cast<std::uint64_t>(count);
  return count;
}

toff_t SeekTo(thandle_t handle, toff_t offset, int whence) {
  auto* file = static_cast<MemoryFile*>(handle);
  const std::uint64_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file->position : file->Size();
  file->position = base + offset;
  return file->position;
}

int CloseFile(thandle_t) { return 0; }
toff_t SizeOf(thandle_t handle) { return static_cast<MemoryFile*>(handle)->Size(); }

int MapFile(thandle_t handle, void** data, toff_t* size) {
  auto* file = static_cast<MemoryFile*>(handle);
  if (file->sink != nullptr) return 0;
  *data = const_cast<unsigned char*>(file->bytes.data());  // libtiff only reads a mapped file
  *size = file->bytes.size();
  return 1;
}
void UnmapFile(thandle_t, void*, toff_t) {}

TiffHandle Open(MemoryFile* file, const char* mode, TIFFOpenOptions* options) {
  return TiffHandle(TIFFClientOpenExt("image", mode, file, &ReadBytes, &WriteBytes, &SeekTo, &CloseFile, &SizeOf,
                                      &MapFile, &UnmapFile, options));
}

// --- Reading -----------------------------------------------------------------------------------------------------

// libtiff's conversion of any kind of pixels to 8-bit red, green, blue and alpha, premultiplied.
class Converter {
 public:
  explicit Converter(TIFF* tiff) {
    char message[1024];
    valid_ = TIFFRGBAImageBegin(&image_, tiff, /*stop=*/1, message) != 0;
    // Pixels as they are stored: the order asked for is the order that there is.
    if (valid_) image_.req_orientation = image_.orientation;
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (valid_) TIFFRGBAImageEnd(&image_);
  }

  bool IsValid() const { return valid_; }
  bool HasAlpha() const { return image_.alpha != 0; }
  bool Convert(NewPixels* pixels) {
    return TIFFRGBAImageGet(&image_, pixels->Row(0), static_cast<std::uint32_t>(pixels->Width()),
                            static_cast<std::uint32_t>(pixels->Height())) != 0;
  }

 private:
  TIFFRGBAImage image_ = {};
  bool valid_ = false;
};

// How many pixels so many bytes of the file's compression can hold.
std::uint64_t MaxPixels(TIFF* tiff, std::uint64_t fileSize) {
  std::uint16_t compression = COMPRESSION_NONE;
  std::uint16_t bits = 1;
  std::uint16_t samples = 1;
  TIFFGetFieldDefaulted(tiff, TIFFTAG_COMPRESSION, &compression);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &bits);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &samples);
  const std::uint64_t pixelBits = std::max<std::uint64_t>(std::uint64_t{bits} * samples, 1);
  switch (compression) {
    case COMPRESSION_NONE:
      return fileSize * 8 / pixelBits;
    case COMPRESSION_LZW:
    case COMPRESSION_ADOBE_DEFLATE:
    case COMPRESSION_DEFLATE:
    case COMPRESSION_PACKBITS:
      return fileSize * kMaxInflation * 8 / pixelBits + kPixelsAlwaysAllowed;
    default:
      return fileSize * kMaxPixelsPerByte + kPixelsAlwaysAllowed;
  }
}

bool Sniff(ByteSpan head) {
  if (head.size() < 4 || head[0] != head[1] || (head[0] != 'I' && head[0] != 'M')) return false;
  const int version = head[0] == 'I' ? head[2] | head[3] << 8 : head[2] << 8 | head[3];
  return version == 42 || version == 43;
}

bool ConvertByLibrary(TIFF* tiff, NewPixels* pixels, bool* translucent) {
  Converter converter(tiff);
  if (!converter.IsValid() || !converter.Convert(pixels)) return false;
  for (std::size_t y = 0; y < pixels->Height(); ++y) {
    SwapRedAndBlue(pixels->Row(y), pixels->Width());
    *translucent |= HasTranslucent(pixels->Row(y), pixels->Width());
  }
  return true;
}

CGImageRef Decode(ByteSpan file, RefusedSize* refused) {
  // A strip or a tile is decoded in one block, which needs no more than the image's own bound of up to 64 bits a pixel.
  Messages messages;
  const std::uint64_t maxBlock = (1 << 20) + std::uint64_t{file.size()} * kMaxPixelsPerByte / 8;
  const TiffOptions options = Options(maxBlock, &messages);
  MemoryFile memory{file};
  const TiffHandle tiff = options == nullptr ? nullptr : Open(&memory, "r", options.get());
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  if (tiff == nullptr || TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width) == 0 ||
      TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height) == 0) {
    return nullptr;
  }
  NewPixels pixels(width, height, MaxPixels(tiff.get(), file.size()), refused);
  if (!pixels.IsValid()) return nullptr;
  bool translucent = false;
  const TIFFSamples samples(tiff.get());
  const bool done = samples.AreOurs() ? samples.Read(&pixels, std::min(maxBlock, kMaxBlock), &translucent)
                                      : ConvertByLibrary(tiff.get(), &pixels, &translucent);
  return done && !messages.tellOfDamage ? pixels.MakeImage(translucent) : nullptr;
}

// --- Writing -----------------------------------------------------------------------------------------------------

constexpr std::uint32_t kStripBytes = 1 << 16;

void SetTags(TIFF* tiff, std::uint32_t width, std::uint32_t height, bool withAlpha, const EncodeOptions& options) {
  const int samples = withAlpha ? 4 : 3;
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, samples);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, std::max(1U, kStripBytes / (width * static_cast<std::uint32_t>(samples))));
  if (withAlpha) {
    const std::uint16_t kind = EXTRASAMPLE_ASSOCALPHA;  // premultiplied, so nothing is lost
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &kind);
  }
  if (!(options.dotsPerInchX > 0 && options.dotsPerInchY > 0)) return;
  TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
  TIFFSetField(tiff, TIFFTAG_XRESOLUTION, options.dotsPerInchX);
  TIFFSetField(tiff, TIFFTAG_YRESOLUTION, options.dotsPerInchY);
}

bool Encode(const CGImage& image, const EncodeOptions& options, ByteSink* sink) {
  const auto width = static_cast<std::uint32_t>(image.pixels.Width());
  const auto height = static_cast<std::uint32_t>(image.pixels.Height());
  const bool withAlpha = image.hasAlpha && options.keepsAlpha;
  Messages messages;
  const TiffOptions openOptions = Options(kMaxBlock, &messages);
  MemoryFile memory{{}, sink};
  TiffHandle tiff = openOptions == nullptr ? nullptr : Open(&memory, "w", openOptions.get());
  if (tiff == nullptr) return false;
  SetTags(tiff.get(), width, height, withAlpha, options);
  std::vector<unsigned char> row(std::size_t{width} * 4);
  for (std::uint32_t y = 0; y < height; ++y) {
    (withAlpha ? StorePremultipliedRGBA : StoreRGBOverWhite)(ImageRow(image, y), width, row.data());
    if (TIFFWriteScanline(tiff.get(), row.data(), y, 0) < 0) return false;
  }
  // Closing writes the rest, but does not tell whether it could.
  return TIFFWriteDirectory(tiff.get()) != 0;
}

}  // namespace

const ImageCodec kTIFFCodec = {"public.tiff", &Sniff, &Decode, &Encode};

}  // namespace platform
