#include "kit/objects/AKClass.h"

#include "kit/host/AKHostCall.h"

namespace {

// Byte offsets of the class service table: 8 bytes an entry.
constexpr std::size_t Entry(unsigned int index) { return std::size_t{index} * 8; }

}  // namespace

void* AKClass::sWrapper = nullptr;

AKClass::AKClass(const AKClassInfo& info, bool marked, AKClassQCast quickCastFunction)
    : classID(info.classID),
      parentClassID(info.parentClassID),
      constructor(info.constructor),
      destructor(info.destructor),
      quickCast(quickCastFunction),
      instanceQCast(quickCastFunction),
      flags((marked ? kFlagMarked : kFlagNotMarked) |
            (info.constructor != nullptr ? kFlagHasConstructor : kFlagNoConstructor)),
      instanceSize(info.instanceSize) {
  const AKString name(info.className);
  for (AKString& copy : names) copy = name;
}

int AKClass::ClassSetup(const AKClassInfo& info, unsigned int setupWord, AKClass** out) {
  if (sWrapper == nullptr) return -1;
  return AKHostCallPlain<int, const AKClassInfo&, unsigned int, AKClass**>(sWrapper, Entry(4), info, setupWord, out);
}

void AKClass::SetClassName(AKClass* cls, const AKString& name, const AKString& second) {
  if (sWrapper == nullptr) return;
  AKHostCallPlain<void, AKClass*, const AKString&, const AKString&>(sWrapper, Entry(5), cls, name, second);
}

void AKClass::SetClassComments(AKClass* cls, const AKString& text) {
  if (sWrapper == nullptr) return;
  AKHostCallPlain<void, AKClass*, const AKString&>(sWrapper, Entry(6), cls, text);
}

void AKClass::AddInspectorGUIDesc(AKClass* cls, AKGUIDesc* panel) {
  if (sWrapper == nullptr) return;
  AKHostCallPlain<void, AKClass*, AKGUIDesc*>(sWrapper, Entry(7), cls, panel);
}

AKClass* AKClass::GetTopClass() {
  return sWrapper == nullptr ? nullptr : AKHostCallPlain<AKClass*>(sWrapper, Entry(12));
}

AKClass* AKClass::GetClassOfID(AKClassID id) {
  return sWrapper == nullptr ? nullptr : AKHostCallPlain<AKClass*, AKClassID>(sWrapper, Entry(13), id);
}

void AKClass::GetClassCollection(AKClassArray* out, const AKClass* cls, unsigned int selection) {
  if (sWrapper == nullptr) return;
  AKHostCallPlain<void, AKClassArray*, const AKClass*, unsigned int>(sWrapper, Entry(14), out, cls, selection);
}

AKObject* AKClass::NewObjectWithArgs(const AKContextObject* context, AKClassID id, const char* format, va_list list) {
  if (sWrapper == nullptr) return nullptr;
  using Function = AKObject* (*)(const AKContextObject*, AKClassID, const char*, va_list);
  return reinterpret_cast<Function>(AKHostTableWord(sWrapper, Entry(20)))(context, id, format, list);
}

AKObject* AKClass::NewObjectFromFile(const AKContextObject* context, const AKFile& file, unsigned int version) {
  if (sWrapper == nullptr) return nullptr;
  return AKHostCallPlain<AKObject*, const AKContextObject*, const AKFile&, unsigned int>(sWrapper, Entry(21), context,
                                                                                         file, version);
}

AKObject* AKClass::NewObjectFromDictionary(const AKContextObject* context, const AKDictionary& dictionary) {
  if (sWrapper == nullptr) return nullptr;
  return AKHostCallPlain<AKObject*, const AKContextObject*, const AKDictionary&>(sWrapper, Entry(22), context,
                                                                                 dictionary);
}

AKObject* AKClass::NewObjectFromOriginal(const AKContextObject* context, const AKObject* original) {
  if (sWrapper == nullptr) return nullptr;
  return AKHostCallPlain<AKObject*, const AKContextObject*, const AKObject*>(sWrapper, Entry(23), context, original);
}

int AKClass::WriteObjectToFile(const AKObject* object, AKFile& file) {
  if (sWrapper == nullptr) return -1;
  return AKHostCallPlain<int, const AKObject*, AKFile&>(sWrapper, Entry(24), object, file);
}

int AKClass::WriteObjectToDictionary(const AKObject* object, AKDictionary& dictionary) {
  if (sWrapper == nullptr) return -1;
  return AKHostCallPlain<int, const AKObject*, AKDictionary&>(sWrapper, Entry(25), object, dictionary);
}

int AKClass::ReinitObjectFromFile(AKObject* object, const AKFile& file) {
  if (sWrapper == nullptr) return -1;
  return AKHostCallPlain<int, AKObject*, const AKFile&>(sWrapper, Entry(26), object, file);
}

void AKClass::DeleteObject(AKObject* object) {
  if (sWrapper == nullptr) return;
  AKHostCallPlain<void, AKObject*>(sWrapper, Entry(27), object);
}

int AKClass::GetErrorNew() { return sWrapper == nullptr ? -1 : AKHostCallPlain<int>(sWrapper, Entry(28)); }

AKClass* AKClassOfID(AKClassID id) { return AKClass::GetClassOfID(id); }

AKClass* _AKClassInitStaticPtr(AKClassID id) { return AKClassOfID(id); }

AKClassQCast _AKClassInitStaticQCastF(AKClassID id) {
  const AKClass* cls = AKClassOfID(id);
  return cls == nullptr ? kAKNullClassQCast : cls->quickCast;
}
