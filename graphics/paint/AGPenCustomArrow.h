// Arrow heads that a pen carries. They are stored with the pen only; nothing here draws them.
#pragma once

#include <cstdint>

class AGPenCustomArrow {
 public:
  /// Size clamped to 0..20, ratio to 0..1.
  void SetBegArrow(double size, double ratio);
  /// No head where the line begins.
  void SetNotBegArrow();
  /// A head where the line ends; clamped as where it begins.
  void SetEndArrow(double size, double ratio);
  /// No head where the line ends.
  void SetNotEndArrow();

  ///@{
  /// What was set; 0 before.
  bool HasBegArrow() const { return hasBegin_ != 0; }
  bool HasEndArrow() const { return hasEnd_ != 0; }
  double BegArrowSize() const { return beginSize_; }
  double BegArrowRatio() const { return beginRatio_; }
  double EndArrowSize() const { return endSize_; }
  double EndArrowRatio() const { return endRatio_; }
  ///@}

 private:
  std::uint8_t hasBegin_ = 0;
  std::uint8_t hasEnd_ = 0;
  float beginSize_ = 0;
  float beginRatio_ = 0;
  float endSize_ = 0;
  float endRatio_ = 0;
};

static_assert(sizeof(AGPenCustomArrow) == 20);
