// How large an image may be to be decoded.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "ImageIO/CGImageSource.h"

/// The most bytes of pixels (width × height × 4) that an image may have to be decoded: 256 MB (of 2^20) until a program
/// sets another number, for the whole process.
CG_EXTERN uint64_t CGImageSourceGetPixelLimit(void);
CG_EXTERN void CGImageSourceSetPixelLimit(uint64_t bytes);
/// Whether the image is refused, before memory is taken for it, since it has more pixels; then its size. It is known
/// when an attempt to decode it was made, and at some native layers before.
CG_EXTERN bool CGImageSourceGetRefusedSize(CGImageSourceRef source, size_t* width, size_t* height);
