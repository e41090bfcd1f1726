// A colour of four 8-bit components, not premultiplied.
#pragma once

#include <cstdint>

/// One 32-bit value: red in the lowest byte, then green, blue, and alpha (255 is opaque) in the highest.
struct AGColor {
  std::uint32_t rgba = 0;  ///< red in bits 0 to 7, alpha in bits 24 to 31

  /// Transparent black.
  constexpr AGColor() = default;
  /// From components of 0 to 255.
  constexpr AGColor(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha = 255)
      : rgba(static_cast<std::uint32_t>(red) | static_cast<std::uint32_t>(green) << 8 |
             static_cast<std::uint32_t>(blue) << 16 | static_cast<std::uint32_t>(alpha) << 24) {}

  ///@{
  /// A component, 0 to 255.
  constexpr unsigned char Red() const { return static_cast<unsigned char>(rgba); }
  constexpr unsigned char Green() const { return static_cast<unsigned char>(rgba >> 8); }
  constexpr unsigned char Blue() const { return static_cast<unsigned char>(rgba >> 16); }
  constexpr unsigned char Alpha() const { return static_cast<unsigned char>(rgba >> 24); }
  ///@}

  /// Compares all four components; transparent colours that differ in red are not equal.
  bool operator==(const AGColor&) const = default;
};

/// Transparent black, which stands for "no colour".
inline constexpr AGColor kAGNullColor{0, 0, 0, 0};
///@{
/// Opaque, of components 0 and 255.
inline constexpr AGColor kAGColorBlack{0, 0, 0, 255};
inline constexpr AGColor kAGColorWhite{255, 255, 255, 255};
inline constexpr AGColor kAGColorRed{255, 0, 0, 255};
inline constexpr AGColor kAGColorGreen{0, 255, 0, 255};
inline constexpr AGColor kAGColorBlue{0, 0, 255, 255};
inline constexpr AGColor kAGColorYellow{255, 255, 0, 255};
inline constexpr AGColor kAGColorViolet{255, 0, 255, 255};
inline constexpr AGColor kAGColorCyan{0, 255, 255, 255};
///@}
