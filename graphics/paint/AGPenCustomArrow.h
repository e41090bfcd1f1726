// Arrow heads that a pen carries. They are stored with the pen only; nothing here draws them.
#pragma once

#include <cstdint>

class AGPenCustomArrow {
 public:
  /// Size clamped to 0..20, ratio to 0..1.
  void SetBegArrow(double size, double ratio);
  void SetNotBegArrow();
  void SetEndArrow(double size, double ratio);
  void SetNotEndArrow();

  bool HasBegArrow() const { return hasBegin_ != 0; }
  bool HasEndArrow() const { return hasEnd_ != 0; }
  double BegArrowSize() const { return beginSize_; }
  double BegArrowRatio() const { return beginRatio_; }
  double EndArrowSize() const { return endSize_; }
  double EndArrowRatio() const { return endRatio_; }

 private:
  std::uint8_t hasBegin_ = 0;
  std::uint8_t hasEnd_ = 0;
  float beginSize_ = 0;
  float beginRatio_ = 0;
  float endSize_ = 0;
  float endRatio_ = 0;
};

static_assert(sizeof(AGPenCustomArrow) == 20);
