// The class service table.
#include <cstdarg>
#include <unordered_set>

#include "host/Host.h"
#include "host/HostLog.h"
#include "host/bundles/Instance.h"
#include "host/model/LayerObject.h"
#include "host/tables/SlotCall.h"
#include "kit/log/AKLog.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/text/AKArgs.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueHelpers.h"

namespace host {
namespace {

constexpr int kStatusNoClass = -721;
constexpr int kStatusNoInstance = -722;
constexpr int kStatusNoMethod = -723;

int sErrorNew = 0;

AKObject* Fail(int status) {
  sErrorNew = status;
  return nullptr;
}

// A bare instance of a registered class.
Instance NewInstance(AKClassID id) {
  sErrorNew = 0;
  const AKClass* cls = Host::Instance().Classes().Find(id);
  if (cls == nullptr || cls->constructor == nullptr) {
    sErrorNew = AKLogError(kStatusNoClass, "There is no class of ID \"%.8s\"", id.chars);
    return nullptr;
  }
  const InstanceCall call(*cls, InstanceCall::kConstructor, nullptr);
  if (!call.MayRun()) {
    sErrorNew = InstanceCall::kStatusRefused;
    return nullptr;
  }
  Instance object(cls->constructor());
  if (!object) sErrorNew = AKLogError(kStatusNoInstance, "Can't make an instance of class \"%.8s\"", id.chars);
  return object;
}

// An instance for which a method slot returned `status`.
AKObject* Finish(Instance object, int status) { return status == 0 ? object.release() : Fail(status); }

int ClassSetup(const AKClassInfo& info, unsigned int, AKClass** out) {
  if (!InstanceCall::IsOutside("ClassSetup")) return InstanceCall::kStatusRefused;
  return Host::Instance().Classes().Register(info, out);
}

// Of the four name strings the second is what users see; the bundle's second text is kept beside it when it is given.
void SetClassName(AKClass* cls, const AKString& name, const AKString& second) {
  if (cls == nullptr) return;
  cls->names[1] = name;
  if (!second.IsEmpty()) cls->names[2] = second;
}

void SetClassComments(AKClass* cls, const AKString& comments) {
  if (cls != nullptr) cls->comments = comments;
}

// The panel that it would replace may be the one that a method is filling.
void AddInspectorGUIDesc(AKClass* cls, AKGUIDesc* panel) {
  Host::Instance().Classes().AttachPanel(InstanceCall::IsOutside("AddInspectorGUIDesc") ? cls : nullptr, panel);
}

AKClass* GetTopClass() { return Host::Instance().Classes().Top(); }
AKClass* GetClassOfID(AKClassID id) { return Host::Instance().Classes().Find(id); }

// All classes from `cls` down (all there are for null), in the order of registration, in which a parent comes before
// what is below it; no selection is made.
void GetClassCollection(AKClassArray* out, const AKClass* cls, unsigned int) {
  if (out == nullptr) return;
  out->Clear();
  std::unordered_set<const void*> taken;
  for (const RegisteredClass& entry : Host::Instance().Classes().Classes()) {
    AKClass* const record = entry.record.get();
    if (cls != nullptr && record != cls && !taken.contains(record->parentLink)) continue;
    if (taken.insert(record).second) out->Append(record);
  }
}

AKObject* NewObjectWithArgs(const AKContextObject*, AKClassID id, const char* format, va_list list) {
  Instance object = NewInstance(id);
  if (!object) return nullptr;
  AKString text;
  if (format != nullptr) text.Assignv(format, list);
  const AKClass& cls = *object->Class();
  if (!HasSlot(cls, kAKMethodInitWithArgs)) return object.release();
  const AKArgs args(text, true);
  const int status = CallSlot<int, const AKArgs&>(cls, kAKMethodInitWithArgs, object.get(), args);
  return Finish(std::move(object), status);
}

// What WriteObjectToFile wrote: the class ID and the object's own record, which a class without state need not have.
AKObject* NewObjectFromFile(const AKContextObject*, const AKFile& file, unsigned int version) {
  AKClassID id;
  const int readStatus = AKFileRead(file, id.chars, sizeof(id.chars));
  if (readStatus != 0) return Fail(readStatus);
  Instance object = NewInstance(id);
  if (!object) return nullptr;
  const AKClass& cls = *object->Class();
  if (!HasSlot(cls, kAKMethodInitFromFile)) return object.release();
  const int status =
      CallSlot<int, const AKFile&, unsigned int>(cls, kAKMethodInitFromFile, object.get(), file, version);
  return Finish(std::move(object), status);
}

int WriteObjectToFile(const AKObject* object, AKFile& file) {
  if (object == nullptr) return kStatusNoInstance;
  const AKClass& cls = *object->Class();
  const int status = AKFileWrite(file, cls.classID.chars, sizeof(cls.classID.chars));
  if (status != 0 || !HasSlot(cls, kAKMethodWriteToFile)) return status;
  return CallSlot<int, AKFile&>(cls, kAKMethodWriteToFile, object, file);
}

int WriteObjectToDictionary(const AKObject* object, AKDictionary& dictionary) {
  if (object == nullptr) return kStatusNoInstance;
  const AKClass& cls = *object->Class();
  if (!HasSlot(cls, kAKMethodGetObjectProperties)) return kStatusNoMethod;
  const int status = CallSlot<int, AKDictionary*>(cls, kAKMethodGetObjectProperties, object, &dictionary);
  if (status != 0) return status;
  AKValue value;
  AKValueSetasAKClassID(&value, cls.classID);
  return dictionary.SetValue("ClassID", value);
}

AKObject* NewObjectFromDictionary(const AKContextObject*, const AKDictionary& dictionary) {
  Instance object = NewInstance(AKValueGetasAKClassID(dictionary.GetValue("ClassID")));
  if (!object) return nullptr;
  const AKClass& cls = *object->Class();
  if (!HasSlot(cls, kAKMethodSetObjectProperties)) return object.release();
  const InstanceCall making(cls, InstanceCall::kConstructor, object.get());  // nobody may put it into a document yet
  const int status = CallSlot<int, const AKDictionary&>(cls, kAKMethodSetObjectProperties, object.get(), dictionary);
  return Finish(std::move(object), status);
}

// A copy goes through the object's own record, so that it carries all that a document would.
AKObject* NewObjectFromOriginal(const AKContextObject* context, const AKObject* original) {
  AKFile stream(AKFile::kModeMemory);
  int status = stream.CreateForReadWrite();
  if (status == 0) status = WriteObjectToFile(original, stream);
  if (status == 0) status = stream.SetPos(0);
  return status == 0 ? NewObjectFromFile(context, stream, kRecordVersion) : Fail(status);
}

int ReinitObjectFromFile(AKObject* object, const AKFile& file) {
  if (object == nullptr) return kStatusNoInstance;
  const AKClass& cls = *object->Class();
  const int status = AKFileSkip(file, sizeof(AKClassID));
  if (status != 0 || !HasSlot(cls, kAKMethodInitFromFile)) return status;
  return CallSlot<int, const AKFile&, unsigned int>(cls, kAKMethodInitFromFile, object, file, kRecordVersion);
}

void DeleteObject(AKObject* object) {
  if (object == nullptr) return;
  if (InstanceCall::IsRunning(object) || InstanceCall::IsLeaving(object) ||
      LayerObject::LayerOf(object) != kNoLayerID || Host::Instance().Sessions().Has(object)) {
    return HostLog::Instance().Take(
        "DeleteObject of an object that the host still uses was refused: AKHandler::DeleteObjects takes objects out of "
        "their document, which ends them",
        __builtin_return_address(0));
  }
  Instance(object).reset();
}

int GetErrorNew() { return sErrorNew; }

AKClassTable MakeTable() {
  AKClassTable table;
  table.classSetup = &ClassSetup;
  table.setClassName = &SetClassName;
  table.setClassComments = &SetClassComments;
  table.addInspectorGUIDesc = &AddInspectorGUIDesc;
  table.getTopClass = &GetTopClass;
  table.getClassOfID = &GetClassOfID;
  table.getClassCollection = &GetClassCollection;
  table.newObjectWithArgs = &NewObjectWithArgs;
  table.newObjectFromFile = &NewObjectFromFile;
  table.newObjectFromDictionary = &NewObjectFromDictionary;
  table.newObjectFromOriginal = &NewObjectFromOriginal;
  table.writeObjectToFile = &WriteObjectToFile;
  table.writeObjectToDictionary = &WriteObjectToDictionary;
  table.reinitObjectFromFile = &ReinitObjectFromFile;
  table.deleteObject = &DeleteObject;
  table.getErrorNew = &GetErrorNew;
  return table;
}

}  // namespace

const AKClassTable* ClassTable() {
  static const AKClassTable table = MakeTable();
  return &table;
}

}  // namespace host
