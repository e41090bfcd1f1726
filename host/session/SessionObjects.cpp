#include "host/session/SessionObjects.h"

#include <cmath>

#include "host/model/InstanceCall.h"
#include "host/model/ObjectProperties.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

bool IsFinite(const ObjectPlacement& placement) {
  const AGRect& b = placement.bounds;
  return std::isfinite(b.x0) && std::isfinite(b.y0) && std::isfinite(b.x1) && std::isfinite(b.y1) &&
         std::isfinite(placement.angle);
}

AGPoint Turned(const AGPoint& point, const AGPoint& about, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double dx = point.x - about.x;
  const double dy = point.y - about.y;
  return {about.x + dx * c - dy * s, about.y + dx * s + dy * c};
}

AGRect Shifted(const AGRect& rect, double dx, double dy) {
  return {rect.x0 + dx, rect.y0 + dy, rect.x1 + dx, rect.y1 + dy};
}

// The map of one box onto another.
struct Stretch {
  double sx, sy, tx, ty;

  AGPoint Apply(const AGPoint& p) const { return {p.x * sx + tx, p.y * sy + ty}; }

  // Turned sides take the factor of the directions that they run in.
  ObjectPlacement Apply(const ObjectPlacement& old) const {
    const AGPoint center = Apply(old.bounds.Center());
    const double c = std::cos(old.angle);
    const double s = std::sin(old.angle);
    double alongX = std::hypot(c * sx, s * sy);
    double alongY = std::hypot(s * sx, c * sy);
    if (sx < 0) alongX = -alongX;
    if (sy < 0) alongY = -alongY;
    const double w = old.bounds.Width() * (old.angle == 0 ? sx : alongX) / 2;
    const double h = old.bounds.Height() * (old.angle == 0 ? sy : alongY) / 2;
    AGRect bounds{center.x - w, center.y - h, center.x + w, center.y + h};
    bounds.Normalize();
    return {bounds, old.angle};
  }
};

}  // namespace

Result<ObjectID> SessionObjects::Add(AKClassID classID, const std::string& arguments,
                                     const ObjectPlacement& placement) {
  if (const auto done = CheckTakesObjects(document_, activeLayer_.Get()); !done) return done.Why();
  if (!IsFinite(placement)) {
    return Problem(N_("the bounds are no finite numbers"));
  }
  auto made = Document::NewObject(classID, arguments);
  if (!made) return made.Why();
  std::unique_ptr<DocumentObject> object = std::move(*made);
  object->bounds = placement.bounds;
  object->angle = placement.angle;
  EditStep step(steps_, TrWith("Add %s", ClassName(object->classID)));
  const ObjectID id = steps_.Insert(std::move(object), activeLayer_.Front());
  step.End();
  selection_.LeaveFor(id);
  selection_.Select({id});
  return id;
}

Result<> SessionObjects::Delete(const ObjectIDs& ids) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  EditStep step(steps_, Tr("Delete"));
  for (const ObjectID id : ids) {
    const DocumentObject* object = document_.Find(id);
    if (object == nullptr) continue;  // an ID may be named twice
    FetchInstance(object->instance.get());
    steps_.Remove(id);
  }
  return step.End();
}

template <typename Put>
Result<> SessionObjects::PlaceEach(const ObjectIDs& ids, const char* name, Put place) {
  const auto found = Changeable(document_, ids);
  if (!found) return found.Why();
  const ObjectIDs& changeable = *found;
  std::vector<ObjectPlacement> placements;
  placements.reserve(changeable.size());
  for (const ObjectID id : changeable) {
    placements.push_back(place(document_.Find(id)->Placement()));
    if (IsFinite(placements.back())) continue;
    return Problem(N_("an object would lie beyond all numbers"));
  }
  EditStep step(steps_, name);
  for (std::size_t i = 0; i < changeable.size(); ++i) {
    steps_.Step().BeforePlacement(document_, changeable[i]);
    document_.SetPlacement(changeable[i], placements[i]);
  }
  return step.End();
}

SessionObjects::Transform SessionObjects::TransformOf(const AGRect& from, const AGRect& to) {
  const double width = from.Width();
  const double height = from.Height();
  Transform transform{to.x0 - from.x0, to.y0 - from.y0};
  if ((to.Width() == width && to.Height() == height) || width == 0 || height == 0) return transform;
  transform = {0,
               0,
               (to.x0 - from.x0) / width,
               (to.y0 - from.y0) / height,
               (to.x1 - from.x1) / width,
               (to.y1 - from.y1) / height};
  return transform;
}

Result<> SessionObjects::Remember(const Transform& transform, Result<> done) {
  if (done) last_ = transform;
  return done;
}

Result<> SessionObjects::Repeat(const ObjectIDs& ids) {
  if (!last_) return Problem(N_("nothing was moved, stretched or turned yet"));
  const auto found = Changeable(document_, ids);
  if (!found) return found.Why();
  const Transform again = *last_;
  if (again.angle != 0) return Rotate(*found, again.angle);
  if (again.dx != 0 || again.dy != 0) return Move(*found, again.dx, again.dy);
  AGRect box;
  const bool single = found->size() == 1;
  const DocumentObject& first = *document_.Find(found->front());
  single ? static_cast<void>(box = first.bounds) : static_cast<void>(selection_.GetBox(*found, &box));
  const AGRect to{box.x0 + again.left * box.Width(), box.y0 + again.bottom * box.Height(),
                  box.x1 + again.right * box.Width(), box.y1 + again.top * box.Height()};
  return single ? SetPlacement(first.id, {to, first.angle}) : Resize(*found, box, to);
}

Result<> SessionObjects::SetPlacement(ObjectID id, const ObjectPlacement& placement) {
  const DocumentObject* const object = document_.Find(id);
  Transform transform = object == nullptr ? Transform() : TransformOf(object->bounds, placement.bounds);
  if (object != nullptr && placement.bounds == object->bounds) transform.angle = placement.angle - object->angle;
  return Remember(transform, Place(id, placement));
}

Result<> SessionObjects::Place(ObjectID id, const ObjectPlacement& placement) {
  return PlaceEach({id}, Tr("Change Bounds"), [&placement](const ObjectPlacement&) { return placement; });
}

Result<> SessionObjects::SetAngle(const ObjectIDs& ids, double angle) {
  const auto place = [angle](const ObjectPlacement& old) { return ObjectPlacement{old.bounds, angle}; };
  const DocumentObject* const first = ids.empty() ? nullptr : document_.Find(ids[0]);
  Transform transform;
  if (first != nullptr) transform.angle = angle - first->angle;
  return Remember(transform, PlaceEach(ids, Tr("Rotate"), place));
}

Result<> SessionObjects::Move(const ObjectIDs& ids, double dx, double dy) {
  return Remember({dx, dy}, Shift(ids, dx, dy));
}

Result<> SessionObjects::Shift(const ObjectIDs& ids, double dx, double dy) {
  const auto place = [dx, dy](const ObjectPlacement& old) {
    return ObjectPlacement{Shifted(old.bounds, dx, dy), old.angle};
  };
  return PlaceEach(ids, Tr("Move"), place);
}

Result<> SessionObjects::Resize(const ObjectIDs& ids, const AGRect& from, const AGRect& to) {
  return Remember(TransformOf(from, to), Stretched(ids, from, to));
}

Result<> SessionObjects::Stretched(const ObjectIDs& ids, const AGRect& from, const AGRect& to) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  if (from.Width() == 0 || from.Height() == 0) {
    return Problem(N_("a box without an area can't be stretched"));
  }
  Stretch stretch{to.Width() / from.Width(), to.Height() / from.Height(), 0, 0};
  stretch.tx = to.x0 - from.x0 * stretch.sx;
  stretch.ty = to.y0 - from.y0 * stretch.sy;
  return PlaceEach(ids, Tr("Resize"), [&stretch](const ObjectPlacement& old) { return stretch.Apply(old); });
}

Result<> SessionObjects::Rotate(const ObjectIDs& ids, double angle, const AGPoint& about) {
  const auto place = [angle, &about](const ObjectPlacement& old) {
    const AGPoint center = old.bounds.Center();
    const AGPoint turned = Turned(center, about, angle);
    return ObjectPlacement{Shifted(old.bounds, turned.x - center.x, turned.y - center.y), old.angle + angle};
  };
  Transform transform;
  transform.angle = angle;
  return Remember(transform, PlaceEach(ids, Tr("Rotate"), place));
}

Result<> SessionObjects::Rotate(const ObjectIDs& ids, double angle) {
  AGRect box;
  const auto changeable = Changeable(document_, ids);
  if (!changeable) return changeable.Why();
  selection_.GetBox(*changeable, &box);
  return Rotate(*changeable, angle, box.Center());
}

template <typename Restyle>
Result<> SessionObjects::StyleEach(const ObjectIDs& ids, const char* name, Restyle restyle) {
  const auto changeable = Changeable(document_, ids);
  if (!changeable) return changeable.Why();
  EditStep step(steps_, name);
  for (const ObjectID id : *changeable) {
    steps_.Step().BeforeStyle(document_, id);
    const DocumentObject& object = *document_.Find(id);
    AGBrush brush(object.brush);
    AGPen pen(object.pen);
    restyle(&brush, &pen);
    document_.SetStyle(id, brush, pen);
  }
  return step.End();
}

Result<> SessionObjects::SetBrush(const ObjectIDs& ids, const AGBrush& brush) {
  return StyleEach(ids, Tr("Change Brush"), [&](AGBrush* own, AGPen*) { *own = brush; });
}

Result<> SessionObjects::SetPen(const ObjectIDs& ids, const AGPen& pen) {
  return StyleEach(ids, Tr("Change Pen"), [&](AGBrush*, AGPen* own) { *own = pen; });
}

Result<> SessionObjects::SetStyle(const ObjectIDs& ids, const SharedStyle& style) {
  const auto changeable = Changeable(document_, ids);
  if (!changeable) return changeable.Why();
  EditStep step(steps_, Tr("Change Style"));
  for (const ObjectID id : *changeable) {
    steps_.Step().BeforeStyle(document_, id);
    steps_.Step().BeforeMarks(document_, id);
    ObjectMarks marks = document_.Find(id)->marks;
    marks.look.opacity = style.opacity;
    marks.look.dashes = style.dashes;
    document_.SetStyle(id, style.brush, style.pen);
    document_.SetMarks(id, std::move(marks));
  }
  return step.End();
}

Result<> SessionObjects::SetBrushField(const ObjectIDs& ids, BrushField field, const AGBrush& brush) {
  return StyleEach(ids, Tr("Change Brush"), [&](AGBrush* own, AGPen*) { TakeField(field, brush, own); });
}

Result<> SessionObjects::SetPenField(const ObjectIDs& ids, PenField field, const AGPen& pen) {
  return StyleEach(ids, Tr("Change Pen"), [&](AGBrush*, AGPen* own) { TakeField(field, pen, own); });
}

Result<> SessionObjects::SetPenBrushField(const ObjectIDs& ids, BrushField field, const AGBrush& brush) {
  return StyleEach(ids, Tr("Change Pen"), [&](AGBrush*, AGPen* own) {
    AGBrush ink(own->Brush());
    TakeField(field, brush, &ink);
    own->SetBrush(ink);
  });
}

Result<> SessionObjects::SetProperties(const ObjectIDs& ids,
                                       const std::vector<std::pair<std::string, std::string>>& assignments) {
  const auto found = Changeable(document_, ids);
  if (!found) return found.Why();
  const ObjectIDs& changeable = *found;
  EditStep step(steps_, assignments.size() == 1 ? TrWith("Change %s", Tr(assignments.front().first.c_str()))
                                                : Tr("Change Properties"));
  for (const ObjectID id : changeable) {
    const DocumentObject& object = *document_.Find(id);
    HostFields fields{object.Placement(), object.brush, object.pen};
    Result<> taken;
    for (const auto& [path, text] : assignments) {
      if (taken) taken = SetProperty(object, &fields, path, text);
    }
    const auto noticed = steps_.NoticeChange(id);  // also of what must be taken back
    if (!taken) return taken.Why();
    if (!noticed) return noticed.Why();
    steps_.Step().BeforePlacement(document_, id);
    steps_.Step().BeforeStyle(document_, id);
    document_.SetPlacement(id, fields.placement);
    document_.SetStyle(id, fields.brush, fields.pen);
  }
  return step.End();
}

Result<> SessionObjects::NoticeChanges(const ObjectIDs& ids) {
  EditStep step(steps_, steps_.ActionName());
  Result<> first;
  for (const ObjectID id : ids) {
    if (auto done = steps_.NoticeChange(id); !done && first) first = std::move(done);
  }
  step.End();
  return first;
}

ObjectID SessionObjects::Adopt(AKObject* instance, const ObjectPlace& place) {
  auto object = Document::AdoptInstance(instance);
  const std::string name =
      steps_.ActionName().empty() ? TrWith("Add %s", ClassName(object->classID)) : steps_.ActionName();
  EditStep step(steps_, name);
  const ObjectID id = steps_.Insert(std::move(object), place);
  step.End();
  return id;
}

void SessionObjects::DeleteAny(const ObjectIDs& ids) {
  EditStep step(steps_, steps_.ActionName().empty() ? Tr("Delete") : steps_.ActionName());
  for (const ObjectID id : ids) {
    if (document_.Find(id) != nullptr) steps_.Remove(id);
  }
  step.End();
}

}  // namespace host
