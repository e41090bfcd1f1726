#include "kit/objects/AKClass.h"

#include "kit/log/AKLog.h"

const AKClassTable* AKClass::sWrapper = nullptr;

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
  if (sWrapper == nullptr) return AKLogError(-1, "The host has no class table for class <%s>", info.className);
  return sWrapper->classSetup(info, setupWord, out);
}

void AKClass::SetClassName(AKClass* cls, const AKString& name, const AKString& second) {
  if (sWrapper != nullptr) sWrapper->setClassName(cls, name, second);
}

void AKClass::SetClassComments(AKClass* cls, const AKString& text) {
  if (sWrapper != nullptr) sWrapper->setClassComments(cls, text);
}

void AKClass::AddInspectorGUIDesc(AKClass* cls, AKGUIDesc* panel) {
  if (sWrapper != nullptr) sWrapper->addInspectorGUIDesc(cls, panel);
}

AKClass* AKClass::GetTopClass() { return sWrapper == nullptr ? nullptr : sWrapper->getTopClass(); }
AKClass* AKClass::GetClassOfID(AKClassID id) { return sWrapper == nullptr ? nullptr : sWrapper->getClassOfID(id); }

void AKClass::GetClassCollection(AKClassArray* out, const AKClass* cls, unsigned int selection) {
  if (sWrapper != nullptr) sWrapper->getClassCollection(out, cls, selection);
}

AKObject* AKClass::NewObjectWithArgs(const AKContextObject* context, AKClassID id, const char* format, va_list list) {
  return sWrapper == nullptr ? nullptr : sWrapper->newObjectWithArgs(context, id, format, list);
}

AKObject* AKClass::NewObjectFromFile(const AKContextObject* context, const AKFile& file, unsigned int version) {
  return sWrapper == nullptr ? nullptr : sWrapper->newObjectFromFile(context, file, version);
}

AKObject* AKClass::NewObjectFromDictionary(const AKContextObject* context, const AKDictionary& dictionary) {
  return sWrapper == nullptr ? nullptr : sWrapper->newObjectFromDictionary(context, dictionary);
}

AKObject* AKClass::NewObjectFromOriginal(const AKContextObject* context, const AKObject* original) {
  return sWrapper == nullptr ? nullptr : sWrapper->newObjectFromOriginal(context, original);
}

int AKClass::WriteObjectToFile(const AKObject* object, AKFile& file) {
  return sWrapper == nullptr ? -1 : sWrapper->writeObjectToFile(object, file);
}

int AKClass::WriteObjectToDictionary(const AKObject* object, AKDictionary& dictionary) {
  return sWrapper == nullptr ? -1 : sWrapper->writeObjectToDictionary(object, dictionary);
}

int AKClass::ReinitObjectFromFile(AKObject* object, const AKFile& file) {
  return sWrapper == nullptr ? -1 : sWrapper->reinitObjectFromFile(object, file);
}

void AKClass::DeleteObject(AKObject* object) {
  if (sWrapper != nullptr) sWrapper->deleteObject(object);
}

int AKClass::GetErrorNew() { return sWrapper == nullptr ? -1 : sWrapper->getErrorNew(); }

AKClass* AKClassOfID(AKClassID id) { return AKClass::GetClassOfID(id); }

AKClass* _AKClassInitStaticPtr(AKClassID id) { return AKClassOfID(id); }

AKClassQCast _AKClassInitStaticQCastF(AKClassID id) {
  const AKClass* cls = AKClassOfID(id);
  return cls == nullptr ? kAKNullClassQCast : cls->quickCast;
}
