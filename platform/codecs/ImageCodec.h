// The codecs of image files, one a file format behind one table.
//
// A codec decodes a whole file in memory to a native image: premultiplied, 32 bits a pixel, rows from the top down as
// they are stored; the orientation that a file may ask for, its profiles and its gamma are not applied. Of a file with
// several images it gives the first. A file that is damaged, ends early or is larger than it can be gives no image at
// all: never a part of one; but for the mark that ends it, when all pixels are there. Sizes in a header are compared
// with what so many bytes can hold, and with what a program allows, before memory is taken.
#pragma once

#include <cstdint>
#include <span>

#include "CoreGraphics/CGImage.h"
#include "platform/codecs/ByteSink.h"

namespace platform {

using ByteSpan = std::span<const unsigned char>;

struct EncodeOptions {
  double quality = 0.75;    ///< 0 to 1, for formats that lose
  double dotsPerInchX = 0;  ///< resolution tags; 0 writes none
  double dotsPerInchY = 0;
  bool keepsAlpha = true;  ///< false mixes a translucent image with white, as a format without alpha does anyway
};

/// The size in the header of a file that was refused because its pixels would take more than the limit.
struct RefusedSize {
  std::uint64_t width = 0;
  std::uint64_t height = 0;
};

struct ImageCodec {
  const char* type;  ///< the format's uniform type identifier
  bool (*sniff)(ByteSpan head);
  /// A new image, or null; `*refused` is set when it is too large.
  CGImageRef (*decode)(ByteSpan file, RefusedSize* refused);
  /// Writes the file into `sink`, which is empty; false, with something or nothing written, on failure.
  bool (*encode)(const CGImage& image, const EncodeOptions& options, ByteSink* sink);
};

extern const ImageCodec kPNGCodec;
extern const ImageCodec kJPEGCodec;
extern const ImageCodec kTIFFCodec;

/// As many bytes as any codec looks at to know its format.
inline constexpr std::size_t kSniffedBytes = 8;

/// Null when no codec knows the format.
const ImageCodec* CodecOfContent(ByteSpan head);
const ImageCodec* CodecOfType(std::span<const std::uint16_t> typeIdentifier);

}  // namespace platform
