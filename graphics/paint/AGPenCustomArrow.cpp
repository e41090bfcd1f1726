#include "graphics/paint/AGPenCustomArrow.h"

#include "graphics/geometry/AGClamp.h"

namespace {
float ClampSize(double size) { return static_cast<float>(AGClamp(size, 0.0, 20.0)); }
float ClampRatio(double ratio) { return static_cast<float>(AGClamp(ratio, 0.0, 1.0)); }
}  // namespace

void AGPenCustomArrow::SetBegArrow(double size, double ratio) {
  hasBegin_ = 1;
  beginSize_ = ClampSize(size);
  beginRatio_ = ClampRatio(ratio);
}

void AGPenCustomArrow::SetNotBegArrow() {
  hasBegin_ = 0;
  beginSize_ = 0;
  beginRatio_ = 0;
}

void AGPenCustomArrow::SetEndArrow(double size, double ratio) {
  hasEnd_ = 1;
  endSize_ = ClampSize(size);
  endRatio_ = ClampRatio(ratio);
}

void AGPenCustomArrow::SetNotEndArrow() {
  hasEnd_ = 0;
  endSize_ = 0;
  endRatio_ = 0;
}
