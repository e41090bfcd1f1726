#include "host/pictures/ImageHeader.h"

#include <cstdint>
#include <string_view>

namespace host {
namespace {

constexpr double kInch = 72;  // map units
constexpr double kMetre = kInch / 0.0254;
constexpr double kCentimetre = kMetre / 100;

// Numbers of a file, in either order of bytes; 0 beyond its end.
class Numbers {
 public:
  Numbers(std::string_view bytes, bool bigEndian) : bytes_(bytes), bigEndian_(bigEndian) {}

  std::uint32_t Get(std::size_t at, std::size_t count) const {
    if (at > bytes_.size() || count > bytes_.size() - at) return 0;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t next = at + (bigEndian_ ? i : count - 1 - i);
      number = number << 8 | static_cast<unsigned char>(bytes_[next]);
    }
    return number;
  }
  bool Has(std::size_t at, std::string_view text) const {
    return at <= bytes_.size() && bytes_.substr(at).starts_with(text);
  }
  std::size_t Size() const { return bytes_.size(); }

 private:
  std::string_view bytes_;
  bool bigEndian_;
};

// `unit` is how many map units the resolution counts in.
void SetSize(double perUnitX, double perUnitY, double unit, ImageHeader* header) {
  constexpr double kLeast = 1;  // dots an inch; what claims fewer or more does not know
  constexpr double kMost = 100000;
  const double x = perUnitX * kInch / unit;
  const double y = perUnitY * kInch / unit;
  if (x < kLeast || y < kLeast || x > kMost || y > kMost) return;
  header->size = {header->width * kInch / x, header->height * kInch / y};
}

std::optional<ImageHeader> ReadPNG(const Numbers& file) {
  constexpr std::size_t kFirstChunk = 8;
  constexpr std::size_t kAround = 12;  // of a chunk: length, name, check sum
  if (!file.Has(kFirstChunk + 4, "IHDR")) return std::nullopt;
  ImageHeader header{"PNG", static_cast<double>(file.Get(16, 4)), static_cast<double>(file.Get(20, 4)), {}};
  header.size = {header.width, header.height};
  for (std::size_t at = kFirstChunk; at + kAround <= file.Size() && !file.Has(at + 4, "IDAT");) {
    if (file.Has(at + 4, "pHYs") && file.Get(at + 16, 1) == 1) {
      SetSize(file.Get(at + 8, 4), file.Get(at + 12, 4), kMetre, &header);
    }
    at += kAround + file.Get(at, 4);
  }
  return header;
}

bool IsFrame(std::uint32_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

std::optional<ImageHeader> ReadJPEG(const Numbers& file) {
  std::uint32_t unit = 0;
  std::uint32_t x = 0;
  std::uint32_t y = 0;
  for (std::size_t at = 2; at + 4 <= file.Size() && file.Get(at, 1) == 0xFF;) {
    const std::uint32_t marker = file.Get(at + 1, 1);
    if (marker == 0xFF || (marker >= 0xD0 && marker <= 0xD8) || marker == 1) {
      at += marker == 0xFF ? 1 : 2;
      continue;
    }
    if (marker == 0xE0 && file.Has(at + 4, std::string_view("JFIF\0", 5))) {
      unit = file.Get(at + 11, 1);
      x = file.Get(at + 12, 2);
      y = file.Get(at + 14, 2);
    }
    if (IsFrame(marker)) {
      ImageHeader header{
          "JPEG", static_cast<double>(file.Get(at + 7, 2)), static_cast<double>(file.Get(at + 5, 2)), {}};
      header.size = {header.width, header.height};
      if (unit == 1 || unit == 2) SetSize(x, y, unit == 1 ? kInch : kCentimetre, &header);
      return header;
    }
    at += 2 + file.Get(at + 2, 2);
  }
  return std::nullopt;
}

std::optional<ImageHeader> ReadTIFF(const Numbers& file) {
  constexpr std::uint32_t kShort = 3;
  constexpr std::uint32_t kInches = 2;
  constexpr std::uint32_t kCentimetres = 3;
  const std::size_t folder = file.Get(4, 4);
  ImageHeader header{"TIFF", 0, 0, {}};
  double x = 0;
  double y = 0;
  std::uint32_t unit = kInches;
  const std::uint32_t count = file.Get(folder, 2);
  for (std::size_t at = folder + 2; at < folder + 2 + std::size_t{12} * count; at += 12) {
    const std::uint32_t value = file.Get(at + 8, file.Get(at + 2, 2) == kShort ? 2 : 4);
    const std::uint32_t divisor = file.Get(std::size_t{value} + 4, 4);
    const double ratio = divisor == 0 ? 0 : static_cast<double>(file.Get(value, 4)) / divisor;
    switch (file.Get(at, 2)) {
      case 256:
        header.width = value;
        break;
      case 257:
        header.height = value;
        break;
      case 282:
        x = ratio;
        break;
      case 283:
        y = ratio;
        break;
      case 296:
        unit = value;
        break;
      default:
        break;
    }
  }
  header.size = {header.width, header.height};
  if (unit == kInches || unit == kCentimetres) SetSize(x, y, unit == kInches ? kInch : kCentimetre, &header);
  return header;
}

}  // namespace

std::optional<ImageHeader> ReadImageHeader(const std::string& bytes) {
  std::optional<ImageHeader> header;
  const Numbers big(bytes, true);
  if (big.Has(0, "\x89PNG\r\n\x1A\n")) header = ReadPNG(big);
  if (big.Has(0, "\xFF\xD8\xFF")) header = ReadJPEG(big);
  if (big.Has(0, std::string_view("MM\0*", 4))) header = ReadTIFF(big);
  if (big.Has(0, std::string_view("II*\0", 4))) header = ReadTIFF(Numbers(bytes, false));
  if (!header || header->width < 1 || header->height < 1) return std::nullopt;
  return header;
}

}  // namespace host
