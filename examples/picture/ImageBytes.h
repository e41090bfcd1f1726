// The bytes of an image file: which format they are, where they come from, and what they show.
#pragma once

#include "graphics/images/AGImage.h"
#include "kit/containers/AKMemoryBlock.h"
#include "kit/files/AKFilePath.h"

namespace ImageBytes {

/// Files that are larger are not taken, in bytes.
inline constexpr unsigned long long kLargestFile = 256ULL << 20;

/// By the first bytes; kNone for what is neither PNG, JPEG nor TIFF.
AGImageFileFormat FormatOf(const AKMemoryBlock& bytes);
/// "PNG", "JPEG", "TIFF", or "" for kNone.
const char* FormatName(AGImageFileFormat format);

/// All of a file. A status, logged; the block is left alone then.
int Load(const AKFilePath& path, AKMemoryBlock* bytes);
/// Replaces a file whole or not at all. A status, logged.
int Save(const AKFilePath& path, const AKMemoryBlock& bytes);

/// The image, empty where the bytes are damaged or of more pixels than AGImage::MaxBytes allows.
AGImage Decoded(const AKMemoryBlock& bytes);

}  // namespace ImageBytes
