#include "host/view/Outlines.h"

namespace host {

std::vector<ObjectPlacement> SelectedOutlines(const DocumentSession& session, const AGRect& area) {
  std::vector<ObjectPlacement> outlines;
  const SessionSelection& selection = session.Selection();
  if (selection.Count() < 2 || selection.Count() > kMostOutlined) return outlines;
  const AGPoint by = selection.Shift().value_or(AGPoint{0, 0});
  for (const ObjectID id : selection.IDs()) {
    ObjectPlacement placement = session.Doc().Find(id)->Placement();
    AGRect& b = placement.bounds;
    b = {b.x0 + by.x, b.y0 + by.y, b.x1 + by.x, b.y1 + by.y};
    if (Touches(TurnedBox(placement), area)) outlines.push_back(placement);
  }
  return outlines;
}

std::vector<ObjectPlacement> HoverOutlines(const DocumentSession& session, ObjectID object) {
  const DocumentObject* const found = session.Doc().Find(object);
  const bool hasFrame = session.Selection().Count() == 1 && session.Selection().Contains(object);
  if (found == nullptr || hasFrame) return {};
  return {found->Placement()};
}

}  // namespace host
