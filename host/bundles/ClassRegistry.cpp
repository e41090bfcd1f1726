#include "host/bundles/ClassRegistry.h"

#include "host/panels/HostPanel.h"
#include "kit/log/AKLog.h"

namespace host {

ClassRegistry::ClassRegistry() {
  AddOwn(AKObject::_ClassID(), kAKNullClassID, "AKObject");
  AddOwn(AKObjectShape::_ClassID(), AKObject::_ClassID(), "AKObjectShape");
  AddOwn(AKObjectSymbol::_ClassID(), AKObjectShape::_ClassID(), "AKObjectSymbol");
  AddOwn(AKObjectSymbolVect::_ClassID(), AKObjectSymbol::_ClassID(), "AKObjectSymbolVect");
  AddOwn(AKClassID("_layer"), AKObject::_ClassID(), "AKObjectLayer");
}

void ClassRegistry::AddOwn(AKClassID id, AKClassID parent, const char* name) {
  AKClassInfo info;
  info.classID = id;
  info.parentClassID = parent;
  info.className = name;
  auto record = std::make_unique<AKClass>(info, false, kAKNullClassQCast);
  record->parentLink = Find(info.parentClassID);
  classes_.push_back({std::move(record), nullptr, false});
}

int ClassRegistry::Register(const AKClassInfo& info, AKClass** out) {
  const bool complete = !(info.classID == kAKNullClassID) && info.className != nullptr && info.className[0] != '\0' &&
                        info.constructor != nullptr && info.destructor != nullptr && info.instanceSize != 0;
  if (out == nullptr || !complete) return AKLogError(kStatusBadInfo, "The description of a class is not complete");
  if (Find(info.classID) != nullptr) {
    return AKLogError(kStatusDuplicate, "A class of ID \"%.8s\" is registered already", info.classID.chars);
  }
  AKClass* parent = Find(info.parentClassID);
  if (parent == nullptr) {
    return AKLogError(kStatusNoParent, "Class \"%s\" has an unknown parent \"%.8s\"", info.className,
                      info.parentClassID.chars);
  }
  auto record = std::make_unique<AKClass>(info, false, kAKNullClassQCast);
  record->parentLink = parent;
  *out = record.get();
  classes_.push_back({std::move(record), nullptr, true});
  return 0;
}

void ClassRegistry::AttachPanel(AKClass* cls, AKGUIDesc* panel) {
  std::unique_ptr<AKGUIDesc> owned(panel);
  for (RegisteredClass& entry : classes_) {
    if (entry.record.get() != cls) continue;
    if (HostPanel* own = HostPanel::Of(panel)) own->SetOwner(*cls);
    entry.panel = std::move(owned);
    return;
  }
}

const RegisteredClass* ClassRegistry::FindEntry(AKClassID id) const {
  for (const RegisteredClass& entry : classes_) {
    if (entry.record->classID == id) return &entry;
  }
  return nullptr;
}

AKClass* ClassRegistry::Find(AKClassID id) const {
  const RegisteredClass* entry = FindEntry(id);
  return entry == nullptr ? nullptr : entry->record.get();
}

void ClassRegistry::RemoveAfter(std::size_t count) {
  while (classes_.size() > count) classes_.pop_back();
}

const AKString& DisplayName(const AKClass& cls) { return cls.names[1]; }

}  // namespace host
