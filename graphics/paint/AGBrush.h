// How an area is filled.
//
// A small value: style, two colours, gradient parameters. Setters clamp and normalise; records read from files are
// kept as they are. Angles are radians in memory and degrees in property dictionaries; centres are fractions of the
// bounds. A brush owns its custom gradient, which is neither saved nor written to dictionaries; copies are deep.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "graphics/paint/AGBrushFillMode.h"
#include "graphics/paint/ATBrushCustomGradient.h"
#include "kit/geometry/AGColor.h"

class AKFile;
class AKValue;

/// One of the numbers below.
using AGBrushStyle = std::uint16_t;
inline constexpr AGBrushStyle kAGBrushStyleNone = 0;            ///< fills nothing
inline constexpr AGBrushStyle kAGBrushStyleSolid = 1;           ///< colour 1
inline constexpr AGBrushStyle kAGBrushStylePattern = 2;         ///< a pattern in colour 1 on colour 2
inline constexpr AGBrushStyle kAGBrushStyleLinearGradient = 3;  ///< from colour 1 to colour 2 along an angle
inline constexpr AGBrushStyle kAGBrushStyleRadialGradient = 4;  ///< from colour 1 at a centre to colour 2

class AGBrush {
 public:
  /// Patterns are numbered from 1 to this.
  static constexpr unsigned int kPatternCount = 53;

  // Creating

  /// Style "None", even-odd filling, pattern 1, null colours, blend 0.5, angle 0, centre (0.5, 0.5).
  AGBrush() = default;
  /// The defaults with a style (4 and above become 4) and two colours.
  AGBrush(AGBrushStyle style, AGColor color, AGColor color2);
  ///@{
  /// Deep copies.
  AGBrush(const AGBrush& other);
  AGBrush& operator=(const AGBrush& other);
  ///@}
  ~AGBrush() = default;

  /// Back to the plain blend of the two colours.
  void ResetCustomGradient() { customGradient_.reset(); }

  // Setting

  ///@{
  /// These reset the custom gradient and set what they name; everything else is kept.
  void SetStyleNone();
  void SetStyleSolid(AGColor color);
  void SetStylePattern(AGColor color, AGColor color2, unsigned int patternIndex);
  void SetStyleLinearGradient(AGColor color, AGColor color2, double blend, double angle);
  void SetStyleLinearGradient(AGColor color, AGColor color2, const ATBrushCustomGradient<double>& gradient,
                              double angle);
  void SetStyleRadialGradient(AGColor color, AGColor color2, double blend, double centerX, double centerY);
  void SetStyleRadialGradient(AGColor color, AGColor color2, const ATBrushCustomGradient<double>& gradient,
                              double centerX, double centerY);
  ///@}

  void SetStyle(AGBrushStyle style);         ///< 0 to 4, above 4 becomes 4; resets the custom gradient
  void SetFillMode(AGBrushFillMode mode);    ///< any non-zero value is 1
  void SetPatternIndex(unsigned int index);  ///< clamped to 1..53
  ///@{
  /// The two colours of the style.
  void SetColor(AGColor color) { color_ = color; }
  void SetColor2(AGColor color) { color2_ = color; }
  ///@}
  void SetGradientBlend(double blend);  ///< clamped to 0..1
  void SetGradientAngle(double angle);  ///< into [0, 2π); a negative multiple of 2π becomes 2π
  void SetGradientCenterX(double x);    ///< clamped to 0..1
  void SetGradientCenterY(double y);    ///< clamped to 0..1

  // Getting

  ///@{
  /// What was set or read; a record's numbers may lie outside the ranges of the setters.
  AGBrushStyle Style() const { return style_; }
  AGBrushFillMode FillMode() const { return fillMode_; }
  unsigned int PatternIndex() const { return patternIndex_; }
  AGColor Color() const { return color_; }
  AGColor Color2() const { return color2_; }
  double GradientBlend() const { return blend_; }
  double GradientAngle() const { return angle_; }
  double GradientCenterX() const { return centerX_; }
  double GradientCenterY() const { return centerY_; }
  ///@}
  /// Null when there is none; owned by the brush.
  const ATBrushCustomGradient<double>* CustomGradient() const { return customGradient_.get(); }

  /// Whether a fill would paint anything: a solid brush needs colour 1, the others either colour, with an alpha.
  bool Appears() const;

  /// Changes the brush at random by `amount` of each range; from 0.4 on the style changes too.
  void Randomize(double amount);

  // Files (AGBrushFile.cpp) and values (AGBrushValue.cpp)

  ///@{
  /// The 40-byte record. A failed read leaves kAGNullBrush; values are not clamped. Returns the file's status.
  int ReadFromFile(const AKFile& file);
  int WriteToFile(AKFile& file) const;
  ///@}

  ///@{
  /// The property dictionary. Reading keeps what it cannot read and always returns true; `convert` is handed to the
  /// value's accessors.
  bool ReadFromValue(const AKValue& value, bool convert);
  void WriteToValue(AKValue* value) const;
  ///@}

 private:
  friend struct AGLayout;

  void CopyFrom(const AGBrush& other);
  /// Drops the custom gradient, too.
  void SetStyleAndColors(AGBrushStyle style, AGColor color, AGColor color2);

  AGBrushStyle style_ = kAGBrushStyleNone;
  AGBrushFillMode fillMode_ = kAGBrushFillEvenOdd;
  std::uint16_t patternIndex_ = 1;
  AGColor color_ = kAGNullColor;
  AGColor color2_ = kAGNullColor;
  float blend_ = 0.5F;
  float angle_ = 0;
  float centerX_ = 0.5F;
  float centerY_ = 0.5F;
  std::unique_ptr<ATBrushCustomGradient<double>> customGradient_;
};

/// A default-constructed brush.
extern const AGBrush kAGNullBrush;
