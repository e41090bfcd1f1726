// The text of a label as lines in a room.
//
// Laying out costs many times as much as drawing, and a window draws the same labels again and again: the layouts used
// last are kept. Coordinates are map units about the middle of the room, y up.
#pragma once

#include <memory>
#include <string>

#include "CoreGraphics/CGContext.h"
#include "host/labels/ObjectLabel.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"

struct CTFrame;

namespace host {

class LabelLayout {
 public:
  /// The layout of a label, which may be kept with it, in an object of that size. Null where there is no room.
  static std::shared_ptr<const LabelLayout> Of(const std::shared_ptr<const ObjectLabel>& label, const AGSize& object);

  LabelLayout(const ObjectLabel& label, const AGSize& room);
  LabelLayout(const LabelLayout&) = delete;
  LabelLayout& operator=(const LabelLayout&) = delete;
  ~LabelLayout();

  /// A box around the lines, as wide as their text and as high as their fonts.
  const AGRect& Box() const { return box_; }
  /// A box around what they paint.
  const AGRect& Ink() const { return ink_; }
  /// Draws them filled in the label's colour. The port's state stays as it is, but for the place of text.
  void Draw(CGContextRef port) const;

 private:
  void Measure(const AGSize& size);

  const CTFrame* frame_ = nullptr;  ///< null: there is no font
  AGRect box_{0, 0, 0, 0};
  AGRect ink_{0, 0, 0, 0};
  double dx_ = 0;  ///< from the frame's place to the room
  double dy_ = 0;
};

}  // namespace host
