// What a paragraph style is made of. Private to the native layer.
#pragma once

#include "CoreText/CTParagraphStyle.h"
#include "platform/foundation/NativeObject.h"

struct CTParagraphStyle final : platform::NativeObject {
  CTTextAlignment alignment = kCTTextAlignmentLeft;
  CTWritingDirection direction = kCTWritingDirectionNatural;
};
