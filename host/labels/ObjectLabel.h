// Text on an object, which the host draws above what the object's class does.
//
// It is set within the bounds with a margin, turned with them, faint as the object is, and never mirrored. What does
// not fit is cut off at the bounds; a text that is higher than they are begins at its top.
#pragma once

#include <cstdint>
#include <string>

#include "kit/geometry/AGColor.h"

namespace host {

// The values are those of files.
enum class LabelAcross : std::uint8_t { kLeft, kCenter, kRight };
enum class LabelDown : std::uint8_t { kTop, kMiddle, kBottom };
/// The direction of a paragraph as a whole; kAuto is that of its first letter that has one.
enum class LabelDirection : std::uint8_t { kAuto, kLeftToRight, kRightToLeft };

///@{
/// As commands and listings have them: "left", "center", "right"; "top", "middle", "bottom"; "auto", "ltr", "rtl".
const char* NameOf(LabelAcross across);
const char* NameOf(LabelDown down);
const char* NameOf(LabelDirection direction);
///@}

struct ObjectLabel {
  std::string text;  ///< UTF-8, its lines ended by "\n"
  std::string font;  ///< a family, UTF-8; empty for that of the system
  double size = 12;  ///< map units
  bool bold = false;
  bool italic = false;
  AGColor color{0, 0, 0};
  LabelAcross across = LabelAcross::kCenter;
  LabelDown down = LabelDown::kMiddle;
  LabelDirection direction = LabelDirection::kAuto;

  static constexpr std::size_t kMostBytes = 65536;  ///< of the text
  static constexpr std::size_t kMostFontBytes = 255;
  static constexpr double kLeastSize = 0.5;
  static constexpr double kMostSize = 10000;

  bool operator==(const ObjectLabel&) const = default;
};

/// Whether a label can be as it is: text that is there, size and lengths within the limits, UTF-8 without NULs.
bool IsLabel(const ObjectLabel& label);

/// The text as a label keeps it: CR and CR LF become "\n".
std::string WithPlainLineEnds(const std::string& text);

}  // namespace host
