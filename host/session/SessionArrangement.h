// How the objects of a session stand to each other: their order within each layer, and their places.
#pragma once

#include "host/session/SessionObjects.h"

namespace host {

enum class OrderChange { kToFront, kToBack, kForward, kBackward };
enum class Alignment { kLeft, kCenter, kRight, kTop, kMiddle, kBottom };
enum class AlignTo { kObjects, kPage, kKey };
enum class Sides { kWidth, kHeight, kBoth };
enum class Axis { kHorizontal, kVertical };

struct Unit;

class SessionArrangement {
 public:
  SessionArrangement(Document& document, SessionSteps& steps, SessionSelection& selection, SessionObjects& objects)
      : document_(document), steps_(steps), selection_(selection), objects_(objects) {}

  /// Within each layer; of what is part of a group, within that. Whole groups move as one.
  Result<> ChangeOrder(const ObjectIDs& ids, OrderChange change);
  // Groups that are wholly among the objects are arranged as one. The key is an object among them, by which the others
  // are arranged, or its group; kNoObjectID for the last.

  /// By the boxes of the turned bounds.
  Result<> Align(const ObjectIDs& ids, Alignment alignment, AlignTo to, ObjectID key = kNoObjectID);
  /// Gives all the sides of the key; of an object in its own directions, of a group those of its box. Middles stay.
  Result<> Match(const ObjectIDs& ids, Sides sides, ObjectID key = kNoObjectID);
  /// Equal gaps between three or more objects; the outermost stay.
  Result<> Distribute(const ObjectIDs& ids, Axis axis);

 private:
  AGRect BoxOf(const ObjectIDs& part) const;
  void MoveUnit(const Unit& unit, LayerID layer, std::size_t index, bool forward);

  Document& document_;
  SessionSteps& steps_;
  SessionSelection& selection_;
  SessionObjects& objects_;
};

}  // namespace host
