#include "CStdPicture.h"

#include <algorithm>
#include <cmath>

#include "DecodedImages.h"
#include "ImageBytes.h"
#include "Sample.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/text/AKArgs.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueHelpers.h"

namespace {

constexpr unsigned int kReservedBytes = 16;
constexpr int kStatusNoImage = -1;

const AKValueEnums kFits[] = {{CStdPicture::kWhole, "Whole"}, {CStdPicture::kStretch, "Stretch"}, {0, ""}};

const AKString kKey_Fit("Fit");
const AKString kKey_Smooth("Smooth");
const AKString kKey_Data("Data");
const AKString kKey_Format("Format");
const AKString kKey_Bytes("Bytes");

bool IsFinite(const AGRect& rect) {
  return std::isfinite(rect.x0) && std::isfinite(rect.y0) && std::isfinite(rect.Width()) &&
         std::isfinite(rect.Height());
}

// Arguments come as a host has them, perhaps straight from a shell, whose text is the system's.
AKFilePath PathOf(const AKString& argument) {
  const AKFilePath path(argument);
  AKFilePath typed;
  return !AKFileUtils::Exists(path) && AKFileUtils::GetFromSystemPath(argument.CStr(), &typed) ? typed : path;
}

void DrawCrossedBox(const AGContext& context, const AGRect& bounds, const AGAffineTransform& turn) {
  AGPath path;
  path.AddRect(bounds, true);
  path.AddSegment({bounds.x0, bounds.y0}, {bounds.x1, bounds.y1});
  path.AddSegment({bounds.x0, bounds.y1}, {bounds.x1, bounds.y0});
  context.DrawPath(path, turn);
}

// The image as a context's colour factor asks for: of images the context itself makes a mixture with what lies below.
AGImage Shaded(const AGImage& image, double factor) {
  AGBitmap bitmap(image, 0);
  unsigned char* pixels = bitmap.Pixels();
  unsigned char shades[256];
  for (unsigned int i = 0; i < 256; ++i) shades[i] = static_cast<unsigned char>(std::clamp(factor * i, 0.0, 255.0));
  // Alpha, red, green, blue; no colour is more than its alpha.
  for (unsigned int i = 0; pixels != nullptr && i + 3 < bitmap.ByteCount(); i += 4) {
    for (unsigned int c = i + 1; c < i + 4; ++c) pixels[c] = std::min(shades[pixels[c]], pixels[i]);
  }
  return AGImage(bitmap);
}

}  // namespace

CStdPicture::~CStdPicture() { DecodedImages::Shared().Forget(this); }

int CStdPicture::akmDelete() {
  DecodedImages::Shared().Forget(this);
  return 0;
}

void CStdPicture::SetData(const AKMemoryBlock& data) {
  data_ = data;
  DecodedImages::Shared().Forget(this);
}

const AGImage& CStdPicture::Image() const { return DecodedImages::Shared().Get(this, data_); }

int CStdPicture::akmInitWithArgs(const AKArgs& args) {
  if (args.IsParam("-stretch")) fit_ = kStretch;
  if (args.IsParam("-coarse")) smooth_ = false;
  if (args.IsParam("-default")) SetData(AKMemoryBlock(kSamplePicture, sizeof(kSamplePicture)));
  AKString path;
  if (!args.GetParam("-file:", &path)) return 0;
  AKMemoryBlock data;
  const int status = ImageBytes::Load(PathOf(path), &data);
  if (status != 0) return status;
  if (ImageBytes::FormatOf(data) == AGImageFileFormat::kNone) {
    return AKLogError(kStatusNoImage, "\"%s\" is no PNG, JPEG or TIFF file", path.CStr());
  }
  SetData(data);
  return 0;
}

// Bytes that are no image are kept as they are: another version of this class may know them.
int CStdPicture::akmInitFromFile(const AKFile& file, unsigned int) {
  unsigned int fit = 0;
  unsigned int smooth = 0;
  AKMemoryBlock data;
  int status = AKFileReadUInt32(file, &fit);
  if (status == 0) status = AKFileReadUInt32(file, &smooth);
  if (status == 0) status = data.ReadFromFile(file);
  if (status == 0) status = AKFileSkip(file, kReservedBytes);
  if (status != 0) return status;
  fit_ = std::min<unsigned int>(fit, kStretch);
  smooth_ = smooth != 0;
  SetData(data);
  return 0;
}

int CStdPicture::akmWriteToFile(AKFile& file) const {
  int status = AKFileWriteUInt32(file, fit_);
  if (status == 0) status = AKFileWriteUInt32(file, smooth_ ? 1 : 0);
  if (status == 0) status = data_.WriteToFile(file);
  return status == 0 ? AKFileWriteZeros(file, kReservedBytes) : status;
}

int CStdPicture::akmSetObjectProperties(const AKDictionary& properties) {
  AKValueGetasEnum(properties.GetValue(kKey_Fit), &fit_, kFits);
  AKValueGetasBool(properties.GetValue(kKey_Smooth), &smooth_, true);
  AKMemoryBlock data;
  if (!AKValueGetasBinary(properties.GetValue(kKey_Data), &data, false)) return 0;
  if (data.IsEmpty() || ImageBytes::FormatOf(data) != AGImageFileFormat::kNone) SetData(data);
  return 0;
}

int CStdPicture::akmGetObjectProperties(AKDictionary* properties) const {
  properties->SetValue(kKey_Fit, AKValueSetasEnum(fit_, kFits));
  properties->SetValue(kKey_Smooth, AKValueSetasBool(smooth_));
  properties->SetValue(kKey_Format, AKValueSetasAKString(ImageBytes::FormatName(ImageBytes::FormatOf(data_))));
  properties->SetValue(kKey_Bytes, AKValueSetasUInt(data_.Size()));
  return 0;
}

AGRect CStdPicture::PlaceOf(const AGImage& image, const AGRect& bounds) const {
  if (fit_ == kStretch) return bounds;
  const double scale = std::min(bounds.Width() / image.Width(), bounds.Height() / image.Height());
  const AGPoint center = bounds.Center();
  const AGPoint half{scale * image.Width() / 2, scale * image.Height() / 2};
  return {center.x - half.x, center.y - half.y, center.x + half.x, center.y + half.y};
}

int CStdPicture::akmDraw(const AGContext& context, const AKDrawEvent& event) const {
  AGContext copy(context);
  event.SetupContextWithRecommendedBrushAndPen(&copy);
  AGRect bounds = event.bounds;
  bounds.Normalize();
  if (!copy.WouldFillOrStroke() || !IsFinite(bounds) || bounds.IsEmpty()) return 0;
  const AGAffineTransform turn = AGAffineTransformRotation(event.angle, bounds.Center());
  const AGImage& image = Image();
  if (image.IsEmpty()) {
    DrawCrossedBox(copy, bounds, turn);
    return 0;
  }
  const AGRect place = PlaceOf(image, bounds);
  if (copy.brush.Appears()) {
    AGContext turned(copy);
    turned.transform = AGAffineTransformConcat(turn, copy.transform);
    turned.colorFactor = 1;
    const AGImageQuality quality = smooth_ ? kAGImageQualityHigh : kAGImageQualityLow;
    turned.DrawImage(copy.colorFactor == 1 ? image : Shaded(image, copy.colorFactor), place, false, quality);
  }
  AGPath outline;
  outline.AddRect(place, true);
  copy.brush.SetStyleNone();
  copy.DrawPath(outline, turn);
  return 0;
}

AGRect CStdPicture::akmGetNaturalBounds() const {
  const AGImage& image = Image();
  if (image.IsEmpty()) return {0, 0, 1, 1};
  return {0, 0, static_cast<double>(image.Width()), static_cast<double>(image.Height())};
}
