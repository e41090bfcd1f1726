// Objects drawn by a check, and their pixels.
#pragma once

#include <memory>
#include <vector>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/validator/Subject.h"

namespace host::validator {

/// A square of transparent pixels, one a unit, y up.
inline constexpr unsigned int kPictureSide = 200;

/// Where and how an object is drawn: into a box of 80 by 40 in the middle, with a red brush and a blue pen.
struct DrawJob {
  DrawJob();

  AGRect bounds{60, 80, 140, 120};
  double angle = 0;
  AGBrush brush;
  AGPen pen;
  bool hasStyle = true;  ///< false: the event recommends none
  double alpha = 1;
  double colorFactor = 1;
  AGAffineTransform transform = kAGAffineTransformIdentity;
  AGRect clip = kAGNullRect;  ///< none when empty
  unsigned int bitmapFlags = AGBitmap::kFlagZeroFill;

  AKDrawEvent Event() const;
  void Prepare(AGContext* context) const;
};

class Picture {
 public:
  /// Draws the object on a bitmap of its own. `*status` receives what the class returned, and may be null.
  Picture(const ClassCalls& cls, const Instance& object, const DrawJob& job, int* status = nullptr);

  AGColor At(unsigned int x, unsigned int y) const;
  bool IsPainted(unsigned int x, unsigned int y) const { return At(x, y).rgba != 0; }
  /// The number of painted pixels.
  std::size_t Painted() const;
  /// The number of pixels whose channels differ by more than 2 from those of the other picture moved by whole pixels.
  std::size_t CountOthers(const Picture& other, int dx = 0, int dy = 0) const;
  /// A painted pixel outside of the box, or "".
  std::string PaintedOutside(const AGRect& box) const;

 private:
  std::unique_ptr<AGBitmap> bitmap_;
  bool littleEndian_;
};

/// Calls f with each class that draws and an object of it.
void ForEachDrawn(Trial& trial, const std::function<void(const ClassCalls& cls, const Instance& object)>& f);

}  // namespace host::validator
