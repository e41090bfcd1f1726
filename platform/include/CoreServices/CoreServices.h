// Names of the file formats of images.
#pragma once

#include "CoreFoundation/CFString.h"

CG_EXTERN const CFStringRef kUTTypeJPEG;  ///< "public.jpeg"
CG_EXTERN const CFStringRef kUTTypePNG;   ///< "public.png"
CG_EXTERN const CFStringRef kUTTypeTIFF;  ///< "public.tiff"
