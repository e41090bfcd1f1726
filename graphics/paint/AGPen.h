// How an outline is stroked.
//
// A pen owns its brush by value; the brush supplies the stroke's colours. Ratio and angle describe an elliptical nib:
// below a ratio of 0.99 it is ratio times as thin across the direction of the angle. Setters clamp and normalise;
// records read from files are kept as they are. A custom arrow is owned by pointer, neither saved nor written to
// dictionaries; copies are deep.
#pragma once

#include <cstdint>
#include <memory>

#include "graphics/paint/AGBrush.h"
#include "graphics/paint/AGPenCustomArrow.h"

/// Absolute widths are taken as given; relative ones are scaled by the context's transform when stroking.
using AGPenSizeMode = std::uint16_t;
inline constexpr AGPenSizeMode kAGPenSizeModeAbsolute = 0;  ///< as given
inline constexpr AGPenSizeMode kAGPenSizeModeRelative = 1;  ///< scaled by the context's transform

/// How an open line ends.
using AGPenLineCap = std::uint16_t;
inline constexpr AGPenLineCap kAGPenLineCapButt = 0;    ///< at its end
inline constexpr AGPenLineCap kAGPenLineCapSquare = 1;  ///< half a width further
inline constexpr AGPenLineCap kAGPenLineCapRound = 2;   ///< in a half circle

/// How two lines meet.
using AGPenLineJoin = std::uint16_t;
inline constexpr AGPenLineJoin kAGPenLineJoinMiter = 0;  ///< in a point, up to a limit
inline constexpr AGPenLineJoin kAGPenLineJoinBevel = 1;  ///< cut off
inline constexpr AGPenLineJoin kAGPenLineJoinRound = 2;  ///< in an arc

class AGPen {
 public:
  /// Relative, butt caps, mitre joins, size 1, a round nib, a brush of style "None".
  AGPen() = default;
  /// Butt caps, mitre joins, a round nib, the size mode from the argument.
  AGPen(AGBrushStyle style, AGColor color, AGColor color2, double size, AGPenSizeMode mode);
  ///@{
  /// Deep copies.
  AGPen(const AGPen& other);
  AGPen& operator=(const AGPen& other);
  ///@}
  ~AGPen() = default;

  /// The pen has no arrow.
  void ResetCustomArrow() { customArrow_.reset(); }

  /// The pen strokes nothing.
  void SetStyleNone() { brush_.SetStyleNone(); }
  ///@{
  /// One colour and a line width; without a mode it stays as it is.
  void SetStyleSolid(AGColor color, double size);
  void SetStyleSolid(AGColor color, double size, AGPenSizeMode mode);
  ///@}

  void SetSizeMode(AGPenSizeMode mode);  ///< any non-zero value is 1
  void SetLineCap(AGPenLineCap cap);     ///< clamped to 0..2
  void SetLineJoin(AGPenLineJoin join);  ///< clamped to 0..2
  void SetSize(double size);             ///< line width, clamped to 0..96
  void SetRatio(double ratio);           ///< clamped to 0..1
  void SetAngle(double angle);           ///< radians, into [0, π); a negative multiple of π becomes π
  /// The brush whose colours are stroked; copied.
  void SetBrush(const AGBrush& brush) { brush_ = brush; }
  /// The arrow, which is copied.
  void SetCustomArrow(const AGPenCustomArrow& arrow);

  ///@{
  /// What was set or read; a record's numbers may lie outside the ranges of the setters.
  AGPenSizeMode SizeMode() const { return sizeMode_; }
  AGPenLineCap LineCap() const { return lineCap_; }
  AGPenLineJoin LineJoin() const { return lineJoin_; }
  double Size() const { return size_; }
  double Ratio() const { return ratio_; }
  double Angle() const { return angle_; }
  const AGBrush& Brush() const { return brush_; }
  ///@}
  /// Null when there is none; owned by the pen.
  const AGPenCustomArrow* CustomArrow() const { return customArrow_.get(); }

  /// A size above 0 and a brush that appears.
  bool Appears() const { return size_ > 0 && brush_.Appears(); }

  /// Changes the pen and its brush at random by `amount` of each range.
  void Randomize(double amount);

  ///@{
  /// The 80-byte record. A failed read leaves kAGNullPen; values are not clamped. Returns the file's status.
  int ReadFromFile(const AKFile& file);
  int WriteToFile(AKFile& file) const;
  ///@}

  ///@{
  /// The property dictionary; see AGBrush.
  bool ReadFromValue(const AKValue& value, bool convert);
  void WriteToValue(AKValue* value) const;
  ///@}

 private:
  friend struct AGLayout;

  AGPenSizeMode sizeMode_ = kAGPenSizeModeRelative;
  AGPenLineCap lineCap_ = kAGPenLineCapButt;
  AGPenLineJoin lineJoin_ = kAGPenLineJoinMiter;
  float size_ = 1;
  float ratio_ = 1;
  float angle_ = 0;
  AGBrush brush_;
  std::unique_ptr<AGPenCustomArrow> customArrow_;
};

/// A default-constructed pen.
extern const AGPen kAGNullPen;
