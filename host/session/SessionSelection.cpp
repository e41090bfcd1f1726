// What is selected, and what lies where.
#include <algorithm>

#include "graphics/geometry/AGGeometry.h"
#include "host/pictures/HitTest.h"
#include "host/session/DocumentSession.h"
#include "host/session/SessionNotify_p.h"

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

}  // namespace

bool DocumentSession::IsEditable(ObjectID id) const {
  const Layer* layer = document_->LayerOf(id);
  return layer != nullptr && layer->IsEditable();
}

void DocumentSession::Select(const ObjectIDs& ids) {
  Selection selected;
  for (const ObjectID id : ids) {
    if (IsEditable(id)) selected.Add(id);
  }
  if (selected == selection_) return;
  selection_ = std::move(selected);
  Notify([](SessionObserver& observer) { observer.OnSelectionChanged(); });
}

void DocumentSession::AddToSelection(const ObjectIDs& ids) {
  bool changed = false;
  for (const ObjectID id : ids) changed |= IsEditable(id) && selection_.Add(id);
  if (changed) Notify([](SessionObserver& observer) { observer.OnSelectionChanged(); });
}

void DocumentSession::ToggleInSelection(ObjectID id) {
  if (!selection_.RemoveIf([id](ObjectID selected) { return selected == id; })) {
    AddToSelection({id});
    return;
  }
  Notify([](SessionObserver& observer) { observer.OnSelectionChanged(); });
}

void DocumentSession::SelectAll() {
  ObjectIDs all;
  for (const auto& layer : document_->Layers()) {
    if (!layer->IsEditable()) continue;
    layer->objects.ForEach([&all](const DocumentObject& object) { all.push_back(object.id); });
  }
  Select(all);
}

void DocumentSession::SelectNone() { Select({}); }

void DocumentSession::PruneSelection() {
  if (!selection_.RemoveIf([this](ObjectID id) { return !IsEditable(id); })) return;
  Notify([](SessionObserver& observer) { observer.OnSelectionChanged(); });
}

ObjectID DocumentSession::ObjectAt(const AGPoint& point, double tolerance) const {
  HitTest test(point, tolerance);
  for (auto layer = document_->Layers().rbegin(); layer != document_->Layers().rend(); ++layer) {
    if (!(*layer)->IsEditable()) continue;
    const DocumentObject* hit =
        (*layer)->objects.FindFrontIn(test.Area(), [&test](const DocumentObject& object) { return test.Hits(object); });
    if (hit != nullptr) return hit->id;
  }
  return kNoObjectID;
}

ObjectIDs DocumentSession::ObjectsIn(const AGRect& band, Band rule) const {
  AGRect box(band);
  box.Normalize();
  ObjectIDs taken;
  for (const auto& layer : document_->Layers()) {
    if (!layer->IsEditable()) continue;
    layer->objects.ForEachIn(box, [&](const DocumentObject& object) {
      if (BandTakes(box, object.Placement(), rule)) taken.push_back(object.id);
    });
  }
  return taken;
}

bool DocumentSession::GetBox(const ObjectIDs& ids, AGRect* box) const {
  bool any = false;
  for (const ObjectID id : ids) {
    const DocumentObject* object = document_->Find(id);
    if (object == nullptr) continue;
    const AGRect turned = TurnedBox(object->Placement());
    *box = any ? AGRect{std::min(box->x0, turned.x0), std::min(box->y0, turned.y0), std::max(box->x1, turned.x1),
                        std::max(box->y1, turned.y1)}
               : turned;
    any = true;
  }
  return any;
}

ObjectIDs DocumentSession::InDrawingOrder(const ObjectIDs& ids) const {
  std::vector<std::pair<std::size_t, ObjectID>> numbered;
  numbered.reserve(ids.size());
  for (const ObjectID id : ids) numbered.emplace_back(document_->NumberOf(id), id);
  std::sort(numbered.begin(), numbered.end());
  numbered.erase(std::unique(numbered.begin(), numbered.end()), numbered.end());
  ObjectIDs sorted;
  sorted.reserve(numbered.size());
  for (const auto& [number, id] : numbered) sorted.push_back(id);
  return sorted;
}

}  // namespace host
