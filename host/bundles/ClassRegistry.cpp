#include "host/bundles/ClassRegistry.h"

#include <bit>

#include "host/panels/HostPanel.h"
#include "kit/log/AKLog.h"

namespace host {
namespace {

std::uint64_t BytesOf(AKClassID id) { return std::bit_cast<std::uint64_t>(id); }

// A name of at most 7 characters with nothing but NULs behind it.
bool IsWellFormed(AKClassID id) { return id.chars[sizeof(id.chars) - 1] == '\0' && id == AKClassID(id.chars); }

}  // namespace

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
  Add(std::move(record), false);
}

void ClassRegistry::Add(std::unique_ptr<AKClass> record, bool fromBundle) {
  const AKClassID id = record->classID;
  classes_.push_back({id, std::move(record), nullptr, fromBundle});
  RegisteredClass& entry = classes_.back();
  byID_[BytesOf(id)] = &entry;
  byRecord_[entry.record.get()] = &entry;
}

int ClassRegistry::Register(const AKClassInfo& info, AKClass** out) {
  const bool named = !(info.classID == kAKNullClassID) && IsWellFormed(info.classID);
  const bool complete = named && info.className != nullptr && info.className[0] != '\0' &&
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
  Add(std::move(record), true);
  return 0;
}

void ClassRegistry::AttachPanel(AKClass* cls, AKGUIDesc* panel) {
  const auto found = byRecord_.find(cls);
  if (found != byRecord_.end() && found->second->panel.get() == panel) return;
  std::unique_ptr<AKGUIDesc> owned(panel);
  if (found == byRecord_.end()) return;
  if (HostPanel* own = HostPanel::Of(panel)) own->SetOwner(*cls);
  found->second->panel = std::move(owned);
}

const RegisteredClass* ClassRegistry::FindEntry(AKClassID id) const {
  const auto found = byID_.find(BytesOf(id));
  return found == byID_.end() ? nullptr : found->second;
}

AKClass* ClassRegistry::Find(AKClassID id) const {
  const RegisteredClass* entry = FindEntry(id);
  return entry == nullptr ? nullptr : entry->record.get();
}

void ClassRegistry::RemoveAfter(std::size_t count) {
  for (; classes_.size() > count; classes_.pop_back()) {
    byID_.erase(BytesOf(classes_.back().id));
    byRecord_.erase(classes_.back().record.get());
  }
}

const AKString& DisplayName(const AKClass& cls) { return cls.names[1]; }

}  // namespace host
