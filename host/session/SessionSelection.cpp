#include "host/session/SessionSelection.h"

#include <algorithm>
#include <unordered_set>

#include "graphics/geometry/AGGeometry.h"
#include "host/pictures/HitTest.h"
#include "host/session/StyleFields.h"

namespace host {
namespace {

bool Contains(const AGRect& outer, const AGRect& inner) {
  return outer.x0 <= inner.x0 && outer.y0 <= inner.y0 && inner.x1 <= outer.x1 && inner.y1 <= outer.y1;
}

// The band against the turned bounds; the upright box of those is known to touch it.
bool BandTakes(const AGRect& band, const ObjectPlacement& placement, Band rule) {
  if (rule == Band::kWithin) return Contains(band, TurnedBox(placement));
  if (!Touches(band, TurnedBox(placement))) return false;
  if (placement.angle == 0) return true;
  AGPoint turned[4];
  AGPoint corners[4];
  GetTurnedCorners(placement, turned);
  AGGeometry::GetRectTrapezoid(corners, band);
  return AGGeometry::IsPolygonSect(turned, 4, corners, 4);
}

bool AreAlike(const DocumentObject& a, const DocumentObject& b, Likeness likeness) {
  if (likeness == Likeness::kClass) return a.classID == b.classID;
  if (a.IsPlaceholder() || b.IsPlaceholder()) return false;
  return likeness == Likeness::kFill ? LookAlike(a.brush, b.brush) : LookAlike(a.pen, b.pen);
}

}  // namespace

ObjectIDs SessionSelection::Alike(ObjectID id, Likeness likeness) const {
  ObjectIDs alike;
  const DocumentObject* const model = document_.Find(id);
  if (model == nullptr) return alike;
  for (const Layer* layer : document_.Layers()) {
    if (!layer->IsEditable()) continue;
    layer->objects.ForEach([&](const DocumentObject& object) {
      if (object.IsFree() && AreAlike(*model, object, likeness)) alike.push_back(object.id);
    });
  }
  return alike;
}

bool SessionSelection::IsEditable(ObjectID id) const {
  const Layer* layer = document_.LayerOf(id);
  return layer != nullptr && layer->IsEditable() && document_.Find(id)->IsFree();
}

void SessionSelection::SelectionChanged() {
  boxVersion_.reset();
  SetShift(std::nullopt);
  observers_.Notify([](SessionObserver& observer) { observer.OnSelectionChanged(); });
}

void SessionSelection::SetShift(const std::optional<AGPoint>& shift) {
  if (shift == shift_) return;
  shift_ = shift;
  observers_.Notify([](SessionObserver& observer) { observer.OnSelectionShifted(); });
}

void SessionSelection::Select(const ObjectIDs& ids) {
  Selection selected;
  selected.Reserve(ids.size());
  for (const ObjectID id : ids) {
    if (IsEditable(id)) selected.Add(id);
  }
  if (selected == selection_) return;
  selection_ = std::move(selected);
  SelectionChanged();
}

void SessionSelection::Add(const ObjectIDs& ids) {
  bool changed = false;
  for (const ObjectID id : ids) changed |= IsEditable(id) && selection_.Add(id);
  if (changed) SelectionChanged();
}

void SessionSelection::Toggle(const ObjectIDs& ids) {
  if (ids.empty() || !Contains(ids[0])) return Add(ids);
  const std::unordered_set<ObjectID> gone(ids.begin(), ids.end());
  selection_.RemoveIf([&gone](ObjectID selected) { return gone.contains(selected); });
  SelectionChanged();
}

bool SessionSelection::IsWithinEntered(const DocumentObject& object) const {
  const std::vector<GroupID>& path = object.marks.groups;
  return path.size() >= entered_.size() && std::equal(entered_.begin(), entered_.end(), path.begin());
}

ObjectIDs SessionSelection::UnitOf(ObjectID id) const {
  const std::vector<GroupID>& path = document_.Find(id)->marks.groups;
  const auto depth = static_cast<std::size_t>(
      std::mismatch(path.begin(), path.end(), entered_.begin(), entered_.end()).first - path.begin());
  if (depth == path.size()) return {id};
  ObjectIDs unit;
  for (const ObjectID member : document_.Groups().Members(path[depth])) {
    if (IsEditable(member)) unit.push_back(member);
  }
  return InDrawingOrder(document_, unit);
}

void SessionSelection::LeaveFor(ObjectID id) {
  const std::vector<GroupID>& path = document_.Find(id)->marks.groups;
  const auto shared = std::mismatch(entered_.begin(), entered_.end(), path.begin(), path.end()).first;
  if (shared == entered_.end()) return;
  entered_.erase(shared, entered_.end());
  SelectionChanged();
}

bool SessionSelection::Enter(ObjectID id) {
  LeaveFor(id);
  const GroupID next = document_.Find(id)->marks.GroupAt(entered_.size());
  if (next == kNoGroupID || !IsEditable(id)) return false;
  entered_.push_back(next);
  selection_.Clear();
  for (const ObjectID member : UnitOf(id)) selection_.Add(member);
  SelectionChanged();
  return true;
}

bool SessionSelection::Leave() {
  if (entered_.empty()) return false;
  const std::set<ObjectID>& members = document_.Groups().Members(entered_.back());
  entered_.pop_back();
  selection_.Clear();
  for (const ObjectID member : InDrawingOrder(document_, {members.begin(), members.end()})) {
    if (IsEditable(member)) selection_.Add(member);
  }
  SelectionChanged();
  return true;
}

void SessionSelection::SelectAll() {
  ObjectIDs all;
  for (const Layer* layer : document_.Layers()) {
    if (!layer->IsEditable()) continue;
    layer->objects.ForEach([&](const DocumentObject& object) {
      if (object.IsFree() && IsWithinEntered(object)) all.push_back(object.id);
    });
  }
  Select(all);
}

void SessionSelection::SelectNone() { Select({}); }

void SessionSelection::Prune() {
  const std::size_t entered = entered_.size();
  while (!entered_.empty() && document_.Groups().Members(entered_.back()).empty()) entered_.pop_back();
  const bool removed = selection_.RemoveIf([this](ObjectID id) { return !IsEditable(id); });
  if (removed || entered != entered_.size()) SelectionChanged();
}

template <typename Test>
const DocumentObject* SessionSelection::FindFrontIn(const AGRect& area, Test test) const {
  for (auto layer = document_.Layers().rbegin(); layer != document_.Layers().rend(); ++layer) {
    if (!(*layer)->IsEditable()) continue;
    const DocumentObject* const found = (*layer)->objects.FindFrontIn(
        area, [&test](const DocumentObject& object) { return object.IsFree() && test(object); });
    if (found != nullptr) return found;
  }
  return nullptr;
}

ObjectID SessionSelection::ObjectAt(const AGPoint& point, double tolerance) const {
  HitTest test(point, tolerance);
  const DocumentObject* const hit =
      FindFrontIn(test.Area(), [&test](const DocumentObject& object) { return test.Hits(object); });
  return hit == nullptr ? kNoObjectID : hit->id;
}

ObjectID SessionSelection::ObjectBelow(const AGPoint& point, double tolerance, bool* fromSelected) const {
  HitTest test(point, tolerance);
  ObjectID front = kNoObjectID;
  bool isBelow = false;
  const DocumentObject* const hit = FindFrontIn(test.Area(), [&](const DocumentObject& object) {
    if (!test.Hits(object)) return false;
    if (front == kNoObjectID) front = object.id;
    const bool selected = Contains(object.id);
    if (isBelow && !selected) return true;
    isBelow = isBelow || selected;
    return false;
  });
  *fromSelected = isBelow;
  return hit == nullptr ? front : hit->id;
}

ObjectIDs SessionSelection::ObjectsIn(const AGRect& band, Band rule) const {
  AGRect box(band);
  box.Normalize();
  ObjectIDs taken;
  for (const Layer* layer : document_.Layers()) {
    if (!layer->IsEditable()) continue;
    layer->objects.ForEachIn(box, [&](const DocumentObject& object) {
      if (object.IsFree() && BandTakes(box, object.Placement(), rule)) taken.push_back(object.id);
    });
  }
  return taken;
}

ObjectIDs SessionSelection::InBand(const AGRect& band, Band rule) const {
  const ObjectIDs taken = ObjectsIn(band, rule);
  const std::unordered_set<ObjectID> known(taken.begin(), taken.end());
  ObjectIDs all;
  std::unordered_set<ObjectID> seen;
  for (const ObjectID id : taken) {
    if (seen.contains(id) || !IsWithinEntered(*document_.Find(id))) continue;
    const ObjectIDs unit = UnitOf(id);
    seen.insert(unit.begin(), unit.end());
    const bool whole = std::all_of(unit.begin(), unit.end(), [&known](ObjectID each) { return known.contains(each); });
    if (whole || rule == Band::kTouched) all.insert(all.end(), unit.begin(), unit.end());
  }
  return all;
}

bool SessionSelection::GetBox(const ObjectIDs& ids, AGRect* box) const {
  bool any = false;
  for (const ObjectID id : ids) {
    const DocumentObject* object = document_.Find(id);
    if (object == nullptr) continue;
    const AGRect turned = TurnedBox(object->Placement());
    *box = any ? AGRect{std::min(box->x0, turned.x0), std::min(box->y0, turned.y0), std::max(box->x1, turned.x1),
                        std::max(box->y1, turned.y1)}
               : turned;
    any = true;
  }
  return any;
}

bool SessionSelection::GetShownBox(AGRect* box) const {
  if (IsEmpty()) return false;
  if (boxVersion_ != document_.ObjectsVersion()) {
    if (!GetBox(IDs(), &box_)) return false;
    boxVersion_ = document_.ObjectsVersion();
  }
  const AGPoint by = shift_.value_or(AGPoint{0, 0});
  *box = {box_.x0 + by.x, box_.y0 + by.y, box_.x1 + by.x, box_.y1 + by.y};
  return true;
}

}  // namespace host
