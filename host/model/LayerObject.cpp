#include "host/model/LayerObject.h"

#include <new>

#include "host/Host.h"

namespace host {

AKClassID LayerObject::ClassOfLayers() {
  static const AKClassID id("_layer");
  return id;
}

void LayerObject::Destruct(AKObject* object) { delete static_cast<LayerObject*>(object); }

Instance LayerObject::Make(LayerID layer) {
  AKClass* record = Host::Instance().Classes().Find(ClassOfLayers());
  if (record == nullptr) return nullptr;
  record->destructor = &Destruct;
  void* memory = _AKClassObjectAlloc(record, sizeof(LayerObject));
  return Instance(memory == nullptr ? nullptr : new (memory) LayerObject(layer));
}

LayerID LayerObject::LayerOf(const AKObject* object) {
  if (object == nullptr || !(object->ClassID() == ClassOfLayers())) return kNoLayerID;
  return static_cast<const LayerObject*>(object)->layer_;
}

}  // namespace host
