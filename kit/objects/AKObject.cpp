#include "kit/objects/AKObject.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "kit/objects/AKClass.h"

namespace {
constexpr unsigned long kHiddenPointerSize = sizeof(void*);
}

void* _AKClassObjectAlloc(const AKClass* cls, unsigned long size) {
  if (size > SIZE_MAX - kHiddenPointerSize) return nullptr;
  auto* block = static_cast<char*>(std::calloc(1, size + kHiddenPointerSize));
  if (block == nullptr) return nullptr;
  std::memcpy(block, &cls, kHiddenPointerSize);
  return block + kHiddenPointerSize;
}

void _AKClassObjectDealloc(void* object) {
  if (object != nullptr) std::free(static_cast<char*>(object) - kHiddenPointerSize);
}

const AKClass* _AKClassObjectGetHiddenClassPtr(const AKObject* object) {
  const AKClass* cls = nullptr;
  std::memcpy(&cls, reinterpret_cast<const char*>(object) - kHiddenPointerSize, kHiddenPointerSize);
  return cls;
}

AKObject::AKObject() : class_(_AKClassObjectGetHiddenClassPtr(this)), qcast_(kAKNullClassQCast) {
  if (class_ == nullptr) return;
  classID_ = class_->classID;
  qcast_ = class_->instanceQCast;
  furtherClassID_ = class_->furtherClassID;
}

void AKObject::operator delete(void*) { std::abort(); }

AKClassID AKObject::_ClassID() {
  static const AKClassID id("_object");
  return id;
}

AKClass* AKObject::_Class() {
  static AKClass* const record = _AKClassInitStaticPtr(_ClassID());
  return record;
}

AKClassID AKObjectShape::_ClassID() {
  static const AKClassID id("_shape");
  return id;
}

AKClass* AKObjectShape::_Class() {
  static AKClass* const record = _AKClassInitStaticPtr(_ClassID());
  return record;
}

AKClassID AKObjectSymbol::_ClassID() {
  static const AKClassID id("_symbol");
  return id;
}

AKClass* AKObjectSymbol::_Class() {
  static AKClass* const record = _AKClassInitStaticPtr(_ClassID());
  return record;
}

AKClassID AKObjectSymbolVect::_ClassID() {
  static const AKClassID id("_syVect");
  return id;
}

AKClass* AKObjectSymbolVect::_Class() {
  static AKClass* const record = _AKClassInitStaticPtr(_ClassID());
  return record;
}

void AKDeletes(AKObjectArray& objects) {
  for (unsigned int i = objects.Count(); i > 0; --i) AKClass::DeleteObject(objects[i - 1]);
  objects.Clear();
}
