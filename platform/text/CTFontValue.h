// What fonts and their descriptions are made of. Private to the native layer.
#pragma once

#include "CoreText/CTFont.h"
#include "platform/text/ShapedLine.h"

struct __CTFont final : platform::NativeObject {
  __CTFont(platform::NativeRef<const platform::TypeFace> fontFace, CGFloat fontSize)
      : face(std::move(fontFace)), size(fontSize) {}

  const platform::NativeRef<const platform::TypeFace> face;
  const CGFloat size;
};

struct CTFontDescriptor final : platform::NativeObject {
  platform::NativeRef<const CFString> family;
  unsigned int traits = 0;
};
