// How a drawn image is kept: at which scale and quality.
//
// The effective factor tells how many pixels of the kept image make one of the drawing's, the display scale aside.
#pragma once

#include "graphics/images/AGImageQuality.h"

///@{
/// The bounds of an image's scale.
inline constexpr double kAGImageCacheScaleMin = 0.125;
inline constexpr double kAGImageCacheScaleMax = 8.0;
///@}

class AGImageCacheInfo {
 public:
  /// Image scale 1, and the display scale that the process has now.
  explicit AGImageCacheInfo(AGImageQuality quality);
  /// Keeps nothing itself.
  virtual ~AGImageCacheInfo() = default;

  ///@{
  /// What the image is kept for; the factor is the image scale, doubled at the highest quality.
  AGImageQuality ImageQuality() const { return quality_; }
  double Factor() const { return factor_; }
  double ImageScale() const { return imageScale_; }
  double DisplayScale() const { return displayScale_; }
  ///@}

  /// Brings `scale` between the bounds; a NaN becomes the lower one. True when that changed it.
  bool SetImageScale(double scale);
  /// True when that changed it.
  bool SetImageQuality(AGImageQuality quality);

 protected:
  ///@{
  /// Subclasses may be copied.
  AGImageCacheInfo(const AGImageCacheInfo&) = default;
  AGImageCacheInfo& operator=(const AGImageCacheInfo&) = default;
  ///@}

  /// Called after the scale or the quality has changed: what was kept is of no use any more.
  virtual void ImageCacheChanged() {}

 private:
  void Update();

  AGImageQuality quality_;
  double factor_;
  double imageScale_ = 1.0;
  double displayScale_;
};
