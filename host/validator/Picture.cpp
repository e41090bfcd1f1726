#include "host/validator/Picture.h"

#include <cstdlib>

namespace host::validator {

DrawJob::DrawJob() {
  brush.SetStyleSolid(AGColor(230, 60, 30));
  pen.SetStyleSolid(AGColor(20, 60, 200), 3, kAGPenSizeModeAbsolute);
}

AKDrawEvent DrawJob::Event() const {
  AKDrawEvent event;
  event.bounds = bounds;
  event.angle = angle;
  event.recommendedBrush = hasStyle ? &brush : nullptr;
  event.recommendedPen = hasStyle ? &pen : nullptr;
  return event;
}

void DrawJob::Prepare(AGContext* context) const {
  context->alpha = alpha;
  context->colorFactor = colorFactor;
  context->transform = transform;
  if (clip.x1 > clip.x0) context->SetClipRect(clip);
}

Picture::Picture(const ClassCalls& cls, const Instance& object, const DrawJob& job, int* status)
    : bitmap_(std::make_unique<AGBitmap>(kPictureSide, kPictureSide, job.bitmapFlags)),
      littleEndian_((job.bitmapFlags & AGBitmap::kFlagLittleEndian) != 0) {
  AGContext context = bitmap_->GetContextOfBitmap();
  job.Prepare(&context);
  const AKDrawEvent event = job.Event();
  const int own = cls.Draw(object, context, event);
  if (status != nullptr) *status = own;
}

// The bitmap reads every pixel as alpha, red, green, blue.
AGColor Picture::At(unsigned int x, unsigned int y) const {
  const AGColor color = bitmap_->GetPixelColor(x, y);
  return littleEndian_ ? AGColor(color.Green(), color.Red(), color.Alpha(), color.Blue()) : color;
}

std::size_t Picture::Painted() const {
  std::size_t count = 0;
  for (unsigned int y = 0; y < kPictureSide; ++y) {
    for (unsigned int x = 0; x < kPictureSide; ++x) count += IsPainted(x, y) ? 1 : 0;
  }
  return count;
}

namespace {

bool IsNear(AGColor one, AGColor other) {
  constexpr int kTolerance = 2;
  return std::abs(one.Red() - other.Red()) <= kTolerance && std::abs(one.Green() - other.Green()) <= kTolerance &&
         std::abs(one.Blue() - other.Blue()) <= kTolerance && std::abs(one.Alpha() - other.Alpha()) <= kTolerance;
}

}  // namespace

std::size_t Picture::CountOthers(const Picture& other, int dx, int dy) const {
  std::size_t count = 0;
  const int side = static_cast<int>(kPictureSide);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const int fromX = x - dx;
      const int fromY = y - dy;
      if (fromX < 0 || fromY < 0 || fromX >= side || fromY >= side) continue;
      const AGColor moved = other.At(static_cast<unsigned int>(fromX), static_cast<unsigned int>(fromY));
      if (!IsNear(At(static_cast<unsigned int>(x), static_cast<unsigned int>(y)), moved)) ++count;
    }
  }
  return count;
}

std::string Picture::PaintedOutside(const AGRect& box) const {
  for (unsigned int y = 0; y < kPictureSide; ++y) {
    for (unsigned int x = 0; x < kPictureSide; ++x) {
      const bool isInside = x + 1 > box.x0 && x < box.x1 && y + 1 > box.y0 && y < box.y1;
      if (!isInside && IsPainted(x, y)) return "(" + std::to_string(x) + ", " + std::to_string(y) + ")";
    }
  }
  return "";
}

void ForEachDrawn(Trial& trial, const std::function<void(const ClassCalls& cls, const Instance& object)>& f) {
  ForEachClass(trial, {kAKMethodDraw}, [&](const ClassCalls& cls) { f(cls, cls.Make()); });
}

}  // namespace host::validator
