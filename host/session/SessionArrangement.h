// How the objects of a session stand to each other: their order within each layer, and their places.
#pragma once

#include "host/session/SessionObjects.h"

namespace host {

enum class OrderChange { kToFront, kToBack, kForward, kBackward };
enum class Alignment { kLeft, kCenter, kRight, kTop, kMiddle, kBottom };
enum class AlignTo { kObjects, kPage };
enum class Axis { kHorizontal, kVertical };

class SessionArrangement {
 public:
  SessionArrangement(Document& document, SessionSteps& steps, SessionSelection& selection, SessionObjects& objects)
      : document_(document), steps_(steps), selection_(selection), objects_(objects) {}

  Result<> ChangeOrder(const ObjectIDs& ids, OrderChange change);
  /// By the boxes of the turned bounds.
  Result<> Align(const ObjectIDs& ids, Alignment alignment, AlignTo to);
  /// Equal gaps between three or more objects; the outermost stay.
  Result<> Distribute(const ObjectIDs& ids, Axis axis);

 private:
  Document& document_;
  SessionSteps& steps_;
  SessionSelection& selection_;
  SessionObjects& objects_;
};

}  // namespace host
