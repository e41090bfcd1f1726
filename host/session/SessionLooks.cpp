#include "host/session/SessionLooks.h"

#include "host/text/Localisation.h"

namespace host {

void SessionLooks::SetLook(ObjectID id, ObjectLook look) {
  steps_.Step().BeforeMarks(document_, id);
  ObjectMarks marks = document_.Find(id)->marks;
  marks.look = std::move(look);
  document_.SetMarks(id, std::move(marks));
}

template <typename Change>
Result<> SessionLooks::ChangeEach(const ObjectIDs& ids, const char* name, Change change) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  EditStep step(steps_, name);
  for (const ObjectID id : ids) {
    ObjectLook look = document_.Find(id)->marks.look;
    change(&look);
    SetLook(id, std::move(look));
  }
  return step.End();
}

Result<> SessionLooks::SetOpacity(const ObjectIDs& ids, double opacity) {
  if (!(opacity >= 0 && opacity <= 1)) return Problem(N_("opacity is a number from 0 to 100 %"));
  return ChangeEach(ids, Tr("Change Opacity"), [opacity](ObjectLook* look) { look->opacity = opacity; });
}

Result<> SessionLooks::SetDashes(const ObjectIDs& ids, const std::vector<double>& dashes) {
  if (!dashes.empty() && !AreDashes(dashes)) {
    return Problem(N_("dashes are up to %s lengths, of strokes and gaps in turn"),
                   {std::to_string(ObjectLook::kMostDashes)});
  }
  return ChangeEach(ids, Tr("Change Dashes"), [&dashes](ObjectLook* look) { look->dashes = dashes; });
}

Result<> SessionLooks::Flip(const ObjectIDs& ids, Axis axis) {
  const auto changeable = Changeable(document_, ids);
  if (!changeable) return changeable.Why();
  AGRect box;
  selection_.GetBox(*changeable, &box);
  const bool isAcross = axis == Axis::kHorizontal;
  EditStep step(steps_, isAcross ? Tr("Flip Horizontally") : Tr("Flip Vertically"));
  for (const ObjectID id : *changeable) {
    ObjectPlacement place = document_.Find(id)->Placement();
    ObjectLook look = document_.Find(id)->marks.look;
    AGRect& b = place.bounds;
    if (isAcross) {
      b = {box.x0 + box.x1 - b.x1, b.y0, box.x0 + box.x1 - b.x0, b.y1};
      look.flippedX = !look.flippedX;
    } else {
      b = {b.x0, box.y0 + box.y1 - b.y1, b.x1, box.y0 + box.y1 - b.y0};
      look.flippedY = !look.flippedY;
    }
    place.angle = 0 - place.angle;  // of no turn, without a sign
    steps_.Step().BeforePlacement(document_, id);
    document_.SetPlacement(id, place);
    SetLook(id, std::move(look));
  }
  return step.End();
}

}  // namespace host
