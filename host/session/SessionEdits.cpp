// Edits of objects: coming, going, placement, style and properties.
#include <algorithm>
#include <cmath>

#include "host/model/InstanceCall.h"
#include "host/model/ObjectProperties.h"
#include "host/model/ObjectRecord.h"
#include "host/session/DocumentSession.h"
#include "host/text/Localisation.h"
#include "kit/geometry/AGAffineTransform.h"

namespace host {
namespace {

bool IsFinite(const ObjectPlacement& placement) {
  const AGRect& b = placement.bounds;
  return std::isfinite(b.x0) && std::isfinite(b.y0) && std::isfinite(b.x1) && std::isfinite(b.y1) &&
         std::isfinite(placement.angle);
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

Problem FixedObject(const LayerSettings& settings) {
  return settings.locked ? Problem(N_("layer \"%s\" is locked: its objects can't be changed"), {settings.name})
                         : Problem(N_("layer \"%s\" is hidden: its objects can't be changed"), {settings.name});
}

}  // namespace

Result<> DocumentSession::CheckEditable(const ObjectIDs& ids) const {
  if (ids.empty()) {
    return Problem(N_("there is no object to change"));
  }
  for (const ObjectID id : ids) {
    const Layer* layer = document_->LayerOf(id);
    if (layer != nullptr && layer->IsEditable()) continue;
    return layer == nullptr ? Problem(N_("there is no such object")) : FixedObject(layer->settings);
  }
  return {};
}

Result<ObjectIDs> DocumentSession::Changeable(const ObjectIDs& ids) const {
  if (const auto done = CheckEditable(ids); !done) return done.Why();
  ObjectIDs changeable;
  for (const ObjectID id : ids) {
    if (!document_->Find(id)->IsPlaceholder()) changeable.push_back(id);
  }
  if (!changeable.empty()) return changeable;
  return WhyPlaceholder(*document_->Find(ids.front()));
}

ObjectID DocumentSession::InsertOne(std::unique_ptr<DocumentObject> object, const ObjectPlace& place) {
  const ObjectID id = document_->InsertObject(std::move(object), place);
  Step().Inserted(*document_, id);
  return id;
}

void DocumentSession::RemoveOne(ObjectID id) {
  static_cast<void>(NoticeChange(id));  // what can't be written goes as it was
  for (const auto& step : open_) step->TakeStatesOf(*document_, id);
  Step().BeforeRemoval(*document_, id);
  const std::unique_ptr<DocumentObject> object = document_->RemoveObject(id);
  InstanceCall::Destroy(std::move(object->instance));
}

Result<ObjectID> DocumentSession::Add(AKClassID classID, const std::string& arguments,
                                      const ObjectPlacement& placement) {
  if (const auto done = CheckActiveLayer(); !done) return done.Why();
  if (!IsFinite(placement)) {
    return Problem(N_("the bounds are no finite numbers"));
  }
  auto made = Document::NewObject(classID, arguments);
  if (!made) return made.Why();
  std::unique_ptr<DocumentObject> object = std::move(*made);
  object->bounds = placement.bounds;
  object->angle = placement.angle;
  EditStep step(*this, TrWith("Add %s", ClassName(object->classID)));
  const ObjectID id = InsertOne(std::move(object), {activeLayer_, document_->FindLayer(activeLayer_)->objects.Count()});
  step.End();
  Select({id});
  return id;
}

Result<> DocumentSession::Delete(const ObjectIDs& ids) {
  if (const auto done = CheckEditable(ids); !done) return done.Why();
  EditStep step(*this, Tr("Delete"));
  for (const ObjectID id : ids) {
    const DocumentObject* object = document_->Find(id);
    if (object == nullptr) continue;  // an ID may be named twice
    FetchInstance(object->instance.get());
    RemoveOne(id);
  }
  return step.End();
}

template <typename Place>
Result<> DocumentSession::PlaceEach(const ObjectIDs& ids, const char* name, Place place) {
  const auto found = Changeable(ids);
  if (!found) return found.Why();
  const ObjectIDs& changeable = *found;
  std::vector<ObjectPlacement> placements;
  placements.reserve(changeable.size());
  for (const ObjectID id : changeable) {
    placements.push_back(place(document_->Find(id)->Placement()));
    if (IsFinite(placements.back())) continue;
    return Problem(N_("an object would lie beyond all numbers"));
  }
  EditStep step(*this, name);
  for (std::size_t i = 0; i < changeable.size(); ++i) {
    Step().BeforePlacement(*document_, changeable[i]);
    document_->SetPlacement(changeable[i], placements[i]);
  }
  return step.End();
}

Result<> DocumentSession::SetPlacement(ObjectID id, const ObjectPlacement& placement) {
  return PlaceEach({id}, Tr("Change Bounds"), [&placement](const ObjectPlacement&) { return placement; });
}

Result<> DocumentSession::SetAngle(const ObjectIDs& ids, double angle) {
  const auto place = [angle](const ObjectPlacement& old) { return ObjectPlacement{old.bounds, angle}; };
  return PlaceEach(ids, Tr("Rotate"), place);
}

Result<> DocumentSession::Move(const ObjectIDs& ids, double dx, double dy) {
  const auto place = [dx, dy](const ObjectPlacement& old) {
    return ObjectPlacement{Shifted(old.bounds, dx, dy), old.angle};
  };
  return PlaceEach(ids, Tr("Move"), place);
}

Result<> DocumentSession::Resize(const ObjectIDs& ids, const AGRect& from, const AGRect& to) {
  if (from.Width() == 0 || from.Height() == 0) {
    return Problem(N_("a box without an area can't be stretched"));
  }
  Stretch stretch{to.Width() / from.Width(), to.Height() / from.Height(), 0, 0};
  stretch.tx = to.x0 - from.x0 * stretch.sx;
  stretch.ty = to.y0 - from.y0 * stretch.sy;
  return PlaceEach(ids, Tr("Resize"), [&stretch](const ObjectPlacement& old) { return stretch.Apply(old); });
}

Result<> DocumentSession::Rotate(const ObjectIDs& ids, double angle, const AGPoint& about) {
  const auto place = [angle, &about](const ObjectPlacement& old) {
    const AGPoint center = old.bounds.Center();
    const AGPoint turned = AGAffineTransformRotation(angle, about).Apply(center);
    return ObjectPlacement{Shifted(old.bounds, turned.x - center.x, turned.y - center.y), old.angle + angle};
  };
  return PlaceEach(ids, Tr("Rotate"), place);
}

Result<> DocumentSession::Rotate(const ObjectIDs& ids, double angle) {
  AGRect box;
  const auto changeable = Changeable(ids);
  if (!changeable) return changeable.Why();
  GetBox(*changeable, &box);
  return Rotate(*changeable, angle, box.Center());
}

Result<> DocumentSession::SetBrush(const ObjectIDs& ids, const AGBrush& brush) {
  const auto found = Changeable(ids);
  if (!found) return found.Why();
  const ObjectIDs& changeable = *found;
  EditStep step(*this, Tr("Change Brush"));
  for (const ObjectID id : changeable) {
    Step().BeforeStyle(*document_, id);
    document_->SetStyle(id, brush, document_->Find(id)->pen);
  }
  return step.End();
}

Result<> DocumentSession::SetPen(const ObjectIDs& ids, const AGPen& pen) {
  const auto found = Changeable(ids);
  if (!found) return found.Why();
  const ObjectIDs& changeable = *found;
  EditStep step(*this, Tr("Change Pen"));
  for (const ObjectID id : changeable) {
    Step().BeforeStyle(*document_, id);
    document_->SetStyle(id, document_->Find(id)->brush, pen);
  }
  return step.End();
}

Result<> DocumentSession::SetProperties(const ObjectIDs& ids,
                                        const std::vector<std::pair<std::string, std::string>>& assignments) {
  const auto found = Changeable(ids);
  if (!found) return found.Why();
  const ObjectIDs& changeable = *found;
  EditStep step(*this, assignments.size() == 1 ? TrWith("Change %s", Tr(assignments.front().first.c_str()))
                                               : Tr("Change Properties"));
  for (const ObjectID id : changeable) {
    const DocumentObject& object = *document_->Find(id);
    HostFields fields{object.Placement(), object.brush, object.pen};
    Result<> taken;
    for (const auto& [path, text] : assignments) {
      if (taken) taken = SetProperty(object, &fields, path, text);
    }
    const auto noticed = NoticeChange(id);  // also of what must be taken back
    if (!taken) return taken.Why();
    if (!noticed) return noticed.Why();
    Step().BeforePlacement(*document_, id);
    Step().BeforeStyle(*document_, id);
    document_->SetPlacement(id, fields.placement);
    document_->SetStyle(id, fields.brush, fields.pen);
  }
  return step.End();
}

// A class that fails to write its record gets back the state that is known.
Result<> DocumentSession::NoticeChange(ObjectID id) {
  const DocumentObject* object = document_->Find(id);
  if (object == nullptr || !object->instance) return {};
  AKMemoryBlock record;
  int status = WriteRecord(*object->instance, &record);
  if (status != 0) {
    const Problem why(N_("class \"%s\" can't write its record (status %s): the object is as it was before"),
                      {object->classID.chars, std::to_string(status)});
    const AKMemoryBlock known = object->record;
    document_->ReplaceInstance(id, MakeInstance(object->classID, known, &status), known);
    return why;
  }
  if (record == object->record) return {};
  Step().BeforeRecord(*document_, id);
  document_->NoteRecord(id, record);
  return {};
}

Result<> DocumentSession::NoticeChanges(const ObjectIDs& ids) {
  EditStep step(*this, actionName_);
  Result<> first;
  for (const ObjectID id : ids) {
    if (auto done = NoticeChange(id); !done && first) first = std::move(done);
  }
  step.End();
  return first;
}

ObjectID DocumentSession::Adopt(AKObject* instance, const ObjectPlace& place) {
  auto object = Document::AdoptInstance(instance);
  const std::string name = actionName_.empty() ? TrWith("Add %s", ClassName(object->classID)) : actionName_;
  EditStep step(*this, name);
  const ObjectID id = InsertOne(std::move(object), place);
  step.End();
  return id;
}

void DocumentSession::DeleteAny(const ObjectIDs& ids) {
  EditStep step(*this, actionName_.empty() ? Tr("Delete") : actionName_);
  for (const ObjectID id : ids) {
    if (document_->Find(id) != nullptr) RemoveOne(id);
  }
  step.End();
}

}  // namespace host
