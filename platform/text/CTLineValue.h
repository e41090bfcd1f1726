// What a line is made of. Private to the native layer.
#pragma once

#include "CoreText/CTLine.h"
#include "platform/graphics/CGColorValue.h"
#include "platform/text/CTFontValue.h"
#include "platform/text/LineBreaker.h"
#include "platform/text/TextEngine.h"

namespace platform {

/// The attributes of a whole text.
struct TextStyle {
  /// False, with an unusable style, when there is no font.
  bool Take(CFAttributedStringRef text);

  double Scale() const { return font.Get()->size / kReferenceSize; }  ///< units in a reference unit

  NativeRef<const __CTFont> font;
  NativeRef<const CGColor> fill;    ///< null: black
  NativeRef<const CGColor> stroke;  ///< null: as the fill
  bool underline = false;
};

}  // namespace platform

struct CTLine final : platform::NativeObject {
  CTLine(platform::TextStyle lineStyle, platform::NativeRef<const platform::ShapedLine> lineShape,
         platform::VisiblePart underlinedPart)
      : style(std::move(lineStyle)), shape(std::move(lineShape)), underlined(underlinedPart) {}

  const platform::TextStyle style;
  const platform::NativeRef<const platform::ShapedLine> shape;
  const platform::VisiblePart underlined;  ///< if the style has it
};

namespace platform {

/// Texts of more code units than this are not laid out: the libraries below count bytes in 32 bits.
inline constexpr CFIndex kMaxTextLength = 1L << 28;

/// Draws a line whose baseline starts at the origin of `textToUser`.
void DrawLine(CGContextRef context, const CTLine& line, const CGAffineTransform& textToUser);

/// Appends the outlines of the line's glyphs, and its underline if asked for, through `m`, which maps units.
void AppendOutlines(const CTLine& line, const CGAffineTransform& m, bool withUnderline, CGMutablePathRef path);
/// Appends the line under the text, whether it is asked for or not.
void AppendUnderline(const CTLine& line, const CGAffineTransform& m, CGMutablePathRef path);

}  // namespace platform
