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
  const SessionSelection& selection = session.Selection();
  if (session.Doc().Find(object) == nullptr) return {};
  const ObjectIDs unit = selection.UnitOf(object);
  if (selection.Contains(object) && selection.Count() == unit.size()) return {};
  std::vector<ObjectPlacement> outlines;
  for (const ObjectID id : unit) {
    if (outlines.size() < kMostOutlined) outlines.push_back(session.Doc().Find(id)->Placement());
  }
  return outlines;
}

std::optional<AGRect> EnteredBox(const DocumentSession& session) {
  const std::vector<GroupID>& entered = session.Selection().Entered();
  if (entered.empty()) return std::nullopt;
  AGRect box;
  const std::set<ObjectID>& members = session.Doc().Groups().Members(entered.back());
  if (!session.Selection().GetBox({members.begin(), members.end()}, &box)) return std::nullopt;
  return box;
}

}  // namespace host
