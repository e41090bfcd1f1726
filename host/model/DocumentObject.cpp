#include "host/model/DocumentObject.h"

#include <algorithm>
#include <cmath>

#include "host/model/ObjectRecord.h"
#include "kit/geometry/AGAffineTransform.h"

namespace host {
namespace {

// A mitre of the limit of 10 reaches five widths beyond the outline; the unit is for antialiasing.
constexpr double kMitreReach = 5;
constexpr double kFringe = 1;

}  // namespace

void GetTurnedCorners(const ObjectPlacement& placement, AGPoint* out4) {
  const AGRect& b = placement.bounds;
  const AGAffineTransform turn = AGAffineTransformRotation(placement.angle, b.Center());
  const AGPoint corners[4] = {{b.x0, b.y0}, {b.x1, b.y0}, {b.x1, b.y1}, {b.x0, b.y1}};
  for (int i = 0; i < 4; ++i) out4[i] = turn.Apply(corners[i]);
}

AGRect TurnedBox(const ObjectPlacement& placement) {
  AGPoint corners[4];
  GetTurnedCorners(placement, corners);
  AGRect box{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
  for (const AGPoint& corner : corners) {
    box = {std::min(box.x0, corner.x), std::min(box.y0, corner.y), std::max(box.x1, corner.x),
           std::max(box.y1, corner.y)};
  }
  return box;
}

AGRect PaintedBox(const DocumentObject& object) {
  double reach = kFringe;
  if (object.IsPlaceholder()) {
    reach += 1;
  } else if (object.pen.Appears()) {
    reach += object.pen.Size() * kMitreReach;
  }
  const AGRect box = TurnedBox(object.Placement());
  return {box.x0 - reach, box.y0 - reach, box.x1 + reach, box.y1 + reach};
}

std::unique_ptr<DocumentObject> CopyState(const DocumentObject& object) {
  auto state = std::make_unique<DocumentObject>();
  state->id = object.id;
  state->classID = object.classID;
  state->bounds = object.bounds;
  state->angle = object.angle;
  state->brush = object.brush;
  state->pen = object.pen;
  state->record = object.record;
  state->unknownBody = object.unknownBody;
  state->unreadStatus = object.unreadStatus;
  state->isRecordProven = object.isRecordProven;
  state->marks = object.marks;
  return state;
}

std::unique_ptr<DocumentObject> Revive(const DocumentObject& state) {
  auto object = CopyState(state);
  if (object->IsPlaceholder()) return object;
  int status = 0;
  object->instance = MakeInstance(object->classID, object->record, &status);
  object->isRecordProven = object->instance != nullptr;
  if (!object->instance) {
    object->unreadStatus = status;
    object->unknownBody = BodyOf(*object);
    object->record.Free();
  }
  return object;
}

}  // namespace host
