#include "host/model/Document.h"

#include <algorithm>
#include <cstdarg>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "host/HostLog.h"
#include "host/model/InstanceCall.h"
#include "host/model/ObjectRecord.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

AKObject* NewInstance(AKClassID classID, const char* format, ...) {
  va_list list;
  va_start(list, format);
  AKObject* object = AKClass::NewObjectWithArgs(nullptr, classID, format, list);
  va_end(list);
  return object;
}

}  // namespace

Document::Document(const AGSize& page) : page_(page) { InsertLayer({TrWith("Layer %s", "1")}, 0); }

Document::~Document() {
  objects_.ForEach([](DocumentObject& object) { InstanceCall::Destroy(std::move(object.instance)); });
}

// The observers may remove themselves meanwhile.
template <typename Call>
void Document::Notify(Call call) const {
  for (std::size_t i = observers_.size(); i > 0; --i) {
    if (i <= observers_.size()) call(*observers_[i - 1]);
  }
}

void Document::NotifyArea(const DocumentObject& object, const Layer& layer) {
  if (layer.settings.visible && !observers_.empty()) NotifyArea(PaintedBox(object));
}

void Document::NotifyArea(const AGRect& area) {
  constexpr std::size_t kMostAreas = 64;
  if (batches_ == 0) return Notify([&area](DocumentObserver& observer) { observer.OnAreaChanged(area); });
  if (batchedAreas_.size() < kMostAreas) return batchedAreas_.push_back(area);
  AGRect& last = batchedAreas_.back();
  last = {std::min(last.x0, area.x0), std::min(last.y0, area.y0), std::max(last.x1, area.x1),
          std::max(last.y1, area.y1)};
}

void Document::EndBatch() {
  if (--batches_ != 0) return;
  for (const AGRect& area : std::exchange(batchedAreas_, {})) NotifyArea(area);
}

void Document::SetPage(const AGSize& page, AGColor background) {
  page_ = page;
  background_ = background;
  Notify([](DocumentObserver& observer) { observer.OnPageChanged(); });
}

void Document::SetAids(PageAids aids) {
  aids_ = std::move(aids);
  Notify([](DocumentObserver& observer) { observer.OnAidsChanged(); });
}

LayerID Document::InsertLayer(LayerSettings settings, std::size_t index, LayerID id) {
  auto layer = std::make_unique<Layer>();
  layer->id = id == kNoLayerID ? lastLayer_ + 1 : id;
  lastLayer_ = std::max(lastLayer_, layer->id);
  layer->settings = std::move(settings);
  const LayerID given = layer->id;
  layers_.Insert(std::move(layer), index);
  Notify([](DocumentObserver& observer) { observer.OnLayersChanged(); });
  return given;
}

void Document::RemoveLayer(LayerID id) {
  InstanceCall::Destroy(std::move(layers_.Take(id)->standIn));
  Notify([](DocumentObserver& observer) { observer.OnLayersChanged(); });
}

void Document::MoveLayer(LayerID id, std::size_t index) {
  layers_.Insert(layers_.Take(id), index);
  Notify([](DocumentObserver& observer) { observer.OnLayersChanged(); });
  const AreaBatch batch(*this);
  layers_.Find(id)->objects.ForEach([&](const DocumentObject& object) { NotifyArea(object, *FindLayer(id)); });
}

void Document::SetLayerSettings(LayerID id, LayerSettings settings) {
  Layer* layer = layers_.Find(id);
  const bool shownOrHidden = layer->settings.visible != settings.visible;
  layer->settings = std::move(settings);
  Notify([](DocumentObserver& observer) { observer.OnLayersChanged(); });
  if (!shownOrHidden) return;
  const AreaBatch batch(*this);
  layer->objects.ForEach([this](const DocumentObject& object) { NotifyArea(PaintedBox(object)); });
}

AKObject* Document::StandInOf(LayerID id) {
  Layer* layer = layers_.Find(id);
  if (!layer->standIn) layer->standIn = LayerObject::Make(id);
  return layer->standIn.get();
}

const DocumentObject* Document::Find(ObjectID id) const {
  const ObjectTable::Entry* entry = objects_.Find(id);
  return entry == nullptr ? nullptr : entry->object.get();
}

const DocumentObject* Document::FindByInstance(const AKObject* instance) const {
  return Find(instances_.Find(instance));
}

const Layer* Document::LayerOf(ObjectID id) const {
  const ObjectTable::Entry* entry = objects_.Find(id);
  if (entry == nullptr) return nullptr;
  FetchObject(entry->object.get());  // whoever asks goes on to the object
  return entry->layer;
}

ObjectPlace Document::PlaceOf(ObjectID id) const {
  const ObjectTable::Entry& entry = *objects_.Find(id);
  return {entry.layer->id, entry.layer->objects.IndexOf(entry.object.get())};
}

const DocumentObject& Document::ObjectAt(std::size_t number) const {
  const Layer& layer = layers_.WithObject(&number);
  return *layer.objects.At(number);
}

std::size_t Document::NumberOf(ObjectID id) const {
  const ObjectTable::Entry& entry = *objects_.Find(id);
  return layers_.ObjectsBelow(*entry.layer) + entry.layer->objects.IndexOf(entry.object.get());
}

std::unique_ptr<DocumentObject> Document::AdoptInstance(AKObject* instance) {
  auto object = std::make_unique<DocumentObject>();
  object->classID = instance->ClassID();
  object->brush.SetStyleSolid(AGColor(70, 130, 180));
  object->pen.SetStyleSolid(kAGColorBlack, 1.0, kAGPenSizeModeAbsolute);
  object->instance.reset(instance);
  WriteRecord(*instance, &object->record);
  return object;
}

// Arguments that the kit's text can't hold stay UTF-8: a signature would stand before the first parameter's name.
Result<std::unique_ptr<DocumentObject>> Document::NewObject(AKClassID classID, const std::string& arguments) {
  const QuietLog quiet;
  const AKString text = TextForBundles(arguments);
  const bool isHeld = !std::string_view(text.CStr()).starts_with("\xEF\xBB\xBF");
  AKObject* instance = NewInstance(classID, "%s", isHeld ? text.CStr() : arguments.c_str());
  if (instance != nullptr) return AdoptInstance(instance);
  return Problem(N_("can't make an object of class \"%s\" (status %s)"),
                 {classID.chars, std::to_string(AKClass::GetErrorNew())});
}

void Document::InsertInto(Layer* layer, std::size_t index, DocumentObject* object) {
  layer->objects.Insert(index, object);
  layers_.CountObjects(*layer, 1);
}

void Document::RemoveFrom(Layer* layer, DocumentObject* object) {
  layer->objects.Remove(object);
  layers_.CountObjects(*layer, -1);
}

ObjectID Document::InsertObject(std::unique_ptr<DocumentObject> object, const ObjectPlace& place) {
  if (object->id == kNoObjectID) object->id = lastObject_ + 1;
  lastObject_ = std::max(lastObject_, object->id);
  const ObjectID id = object->id;
  Layer* layer = layers_.Find(place.layer);
  InsertInto(layer, place.index, object.get());
  if (object->instance) instances_.Insert(object->instance.get(), id);
  groups_.Add(*object);
  const DocumentObject& inserted = *object;
  objects_.Insert(std::move(object), layer);
  NotifyArea(inserted, *layer);
  NotifyObject(id);
  return id;
}

ObjectID Document::AppendObject(std::unique_ptr<DocumentObject> object) {
  const Layer& last = *Layers().back();
  return InsertObject(std::move(object), {last.id, last.objects.Count()});
}

std::unique_ptr<DocumentObject> Document::RemoveObject(ObjectID id) {
  Layer* layer = objects_.Find(id)->layer;
  std::unique_ptr<DocumentObject> object = objects_.Remove(id);
  if (object->instance) instances_.Remove(object->instance.get());
  groups_.Remove(*object);
  RemoveFrom(layer, object.get());
  NotifyArea(*object, *layer);
  NotifyObject(id);
  return object;
}

void Document::MoveObject(ObjectID id, const ObjectPlace& place) {
  ObjectTable::Entry& entry = *objects_.Find(id);
  NotifyArea(*entry.object, *entry.layer);
  RemoveFrom(entry.layer, entry.object.get());
  entry.layer = layers_.Find(place.layer);
  InsertInto(entry.layer, place.index, entry.object.get());
  NotifyArea(*entry.object, *entry.layer);
  NotifyObject(id);
}

void Document::NotifyObject(ObjectID id) {
  ++objectsVersion_;
  Notify([id](DocumentObserver& observer) { observer.OnObjectChanged(id); });
}

// Tells of the area before and after.
void Document::ObjectChanged(DocumentObject* object) {
  Layer* layer = objects_.Find(object->id)->layer;
  const AGRect former = layer->objects.Update(object);
  if (layer->settings.visible) {
    NotifyArea(former);
    NotifyArea(*object, *layer);
  }
  NotifyObject(object->id);
}

void Document::SetPlacement(ObjectID id, const ObjectPlacement& placement) {
  DocumentObject* object = Mutable(id);
  object->bounds = placement.bounds;
  object->angle = placement.angle;
  ObjectChanged(object);
}

void Document::SetStyle(ObjectID id, const AGBrush& brush, const AGPen& pen) {
  DocumentObject* object = Mutable(id);
  object->brush = brush;
  object->pen = pen;
  ObjectChanged(object);
}

void Document::SetMarks(ObjectID id, ObjectMarks marks) {
  DocumentObject* object = Mutable(id);
  groups_.Remove(*object);
  object->marks = std::move(marks);
  groups_.Add(*object);
  ObjectChanged(object);
}

std::vector<GroupID> Document::GroupsInOrder() const {
  std::vector<GroupID> groups;
  std::unordered_set<GroupID> known;
  ForEachObject([&](const DocumentObject& object) {
    for (const GroupID group : object.marks.groups) {
      if (known.insert(group).second) groups.push_back(group);
    }
  });
  return groups;
}

void Document::ReplaceInstance(ObjectID id, Instance instance, const AKMemoryBlock& record) {
  DocumentObject* object = Mutable(id);
  instances_.Remove(object->instance.get());
  InstanceCall::Destroy(std::exchange(object->instance, std::move(instance)));
  object->record = record;
  object->isRecordProven = object->instance != nullptr;
  if (object->instance) {
    instances_.Insert(object->instance.get(), id);
  } else {
    object->unknownBody = BodyOf(*object);
    object->record.Free();
  }
  ObjectChanged(object);
}

void Document::NoteRecord(ObjectID id, const AKMemoryBlock& record) {
  DocumentObject* object = Mutable(id);
  object->record = record;
  object->isRecordProven = false;
  ObjectChanged(object);
}

void Document::AddObserver(DocumentObserver* observer) { observers_.push_back(observer); }
void Document::RemoveObserver(DocumentObserver* observer) { std::erase(observers_, observer); }

}  // namespace host
