#include "graphics/images/AGImageCacheInfo.h"

#include "kit/host/AKHostServices.h"

namespace {

double FactorOf(AGImageQuality quality) { return quality == kAGImageQualityHighest ? 2.0 : 1.0; }

}  // namespace

AGImageCacheInfo::AGImageCacheInfo(AGImageQuality quality)
    : quality_(quality), factor_(FactorOf(quality)), displayScale_(gAGDisplayScale) {}

bool AGImageCacheInfo::SetImageScale(double scale) {
  double bounded = scale;
  if (!(scale > kAGImageCacheScaleMin)) bounded = kAGImageCacheScaleMin;
  if (scale > kAGImageCacheScaleMax) bounded = kAGImageCacheScaleMax;
  if (bounded == imageScale_) return false;
  imageScale_ = bounded;
  Update();
  return true;
}

bool AGImageCacheInfo::SetImageQuality(AGImageQuality quality) {
  if (quality == quality_) return false;
  quality_ = quality;
  Update();
  return true;
}

void AGImageCacheInfo::Update() {
  factor_ = imageScale_ * FactorOf(quality_);
  ImageCacheChanged();
}
