// Wrong class services.
#include <stdexcept>

#include "host/bundles/Instance.h"
#include "host/tables/SlotCall.h"
#include "kit/panels/AKGUIDesc.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/text/AKArgs.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueClassID.h"
#include "tests/host/torture/HostMutants.h"

namespace host {
namespace {

using Tables = HostTables;

int sAsked = 0;

AKObject* NewWithText(AKClassID id, const char* format, ...) {
  va_list list;
  va_start(list, format);
  AKObject* object = gReal.classes.newObjectWithArgs(nullptr, id, format, list);
  va_end(list);
  return object;
}

int Initialise(AKObject* object, const char* format, va_list list) {
  AKString text;
  if (format != nullptr) text.Assignv(format, list);
  const AKArgs args(text, true);
  if (!HasSlot(*object->Class(), kAKMethodInitWithArgs)) return 0;
  return CallSlot<int, const AKArgs&>(*object->Class(), kAKMethodInitWithArgs, object, args);
}

int SetUpInheriting(const AKClassInfo& info, unsigned int word, AKClass** out) {
  const int status = gReal.classes.classSetup(info, word, out);
  const AKClass* const parent = gReal.classes.getClassOfID(info.parentClassID);
  for (unsigned int i = 0; status == 0 && i < kAKMethodCount; ++i) (*out)->methods[i] = parent->methods[i];
  return status;
}

// Without an akmDelete of the instance, or with two.
template <int deletions>
void DeleteWith(AKObject* object) {
  if (object == nullptr) return;
  const AKClass& cls = *object->Class();
  for (int i = 0; i < deletions; ++i) {
    if (HasSlot(cls, kAKMethodDelete)) CallSlot<int>(cls, kAKMethodDelete, object);
  }
  cls.destructor(object);
}

int WriteWithoutLast(const AKObject* object, AKFile& file) {
  AKFile own(AKFile::kModeMemory);
  own.CreateForReadWrite();
  const int status = gReal.classes.writeObjectToFile(object, own);
  const void* data = nullptr;
  unsigned long long size = 0;
  own.GetMemoryStreamDataPtr(&data, &size);
  if (status != 0 || size == 0) return status;
  return file.Write(data, size - 1);
}

std::vector<HostMutant> SetupMutants() {
  return {
      {"class.classSetup", "writes its output when it refuses",
       [](Tables* t) {
         t->classes.classSetup = [](const AKClassInfo& info, unsigned int word, AKClass** out) {
           const int status = gReal.classes.classSetup(info, word, out);
           if (status != 0) *out = nullptr;
           return status;
         };
       }},
      {"class.classSetup", "one status for all refusals",
       [](Tables* t) {
         t->classes.classSetup = [](const AKClassInfo& info, unsigned int word, AKClass** out) {
           return gReal.classes.classSetup(info, word, out) == 0 ? 0 : -701;
         };
       }},
      {"class.classSetup", "puts a class of an unknown parent below the top",
       [](Tables* t) {
         t->classes.classSetup = [](const AKClassInfo& info, unsigned int word, AKClass** out) {
           AKClassInfo own = info;
           if (gReal.classes.getClassOfID(info.parentClassID) == nullptr) own.parentClassID = AKObject::_ClassID();
           return gReal.classes.classSetup(own, word, out);
         };
       }},
      {"class.classSetup", "inherits slots", [](Tables* t) { t->classes.classSetup = &SetUpInheriting; }},
      {"class.setClassName", "sets another of the names",
       [](Tables* t) {
         t->classes.setClassName = [](AKClass* cls, const AKString& name, const AKString&) { cls->names[3] = name; };
       }},
      {"class.setClassComments", "drops them",
       [](Tables* t) { t->classes.setClassComments = [](AKClass*, const AKString&) {}; }},
      {"class.addInspectorGUIDesc", "forgets panels that it refuses",
       [](Tables* t) {
         t->classes.addInspectorGUIDesc = [](AKClass* cls, AKGUIDesc* panel) {
           if (panel->GetPanelTitle() == "Refused") return;
           gReal.classes.addInspectorGUIDesc(cls, panel);
         };
       }},
  };
}

std::vector<HostMutant> LookUpMutants() {
  return {
      {"class.getTopClass", "another class",
       [](Tables* t) { t->classes.getTopClass = [] { return gReal.classes.getClassOfID(AKClassID("_shape")); }; }},
      {"class.getClassOfID", "the top class for unknown IDs",
       [](Tables* t) {
         t->classes.getClassOfID = [](AKClassID id) {
           AKClass* const found = gReal.classes.getClassOfID(id);
           return found != nullptr ? found : gReal.classes.getTopClass();
         };
       }},
      {"class.getClassCollection", "adds to what the array held",
       [](Tables* t) {
         t->classes.getClassCollection = [](AKClassArray* out, const AKClass* cls, unsigned int selection) {
           AKClassArray own;
           gReal.classes.getClassCollection(&own, cls, selection);
           for (AKClass* one : own) out->Append(one);
         };
       }},
      {"class.getClassCollection", "all classes, wherever it begins",
       [](Tables* t) {
         t->classes.getClassCollection = [](AKClassArray* out, const AKClass*, unsigned int selection) {
           gReal.classes.getClassCollection(out, nullptr, selection);
         };
       }},
      {"class.getErrorNew", "forgets the status when it was asked",
       [](Tables* t) { t->classes.getErrorNew = [] { return ++sAsked % 2 == 0 ? 0 : gReal.classes.getErrorNew(); }; }},
      {"slot.akmDelete", "calls it twice", [](Tables* t) { t->classes.deleteObject = &DeleteWith<2>; }},
      {"class.deleteObject", "ends what it still uses", [](Tables* t) { t->classes.deleteObject = &DeleteWith<1>; }},
      {"slot.destructor", "calls no akmDelete before it", [](Tables* t) { t->classes.deleteObject = &DeleteWith<0>; }},
      {"class.deleteObject", "forgets the destructor",
       [](Tables* t) {
         t->classes.deleteObject = [](AKObject* object) {
           if (object != nullptr) CallSlot<int>(*object->Class(), kAKMethodDelete, object);
         };
       }},
  };
}

std::vector<HostMutant> MakingMutants() {
  return {
      {"class.newObjectWithArgs", "throws for unknown classes",
       [](Tables* t) {
         t->classes.newObjectWithArgs = [](const AKContextObject* context, AKClassID id, const char* format,
                                           va_list list) {
           if (gReal.classes.getClassOfID(id) == nullptr) throw std::runtime_error("no such class");
           return gReal.classes.newObjectWithArgs(context, id, format, list);
         };
       }},
      {"class.newObjectWithArgs", "cuts arguments",
       [](Tables* t) {
         t->classes.newObjectWithArgs = [](const AKContextObject*, AKClassID id, const char* format, va_list list) {
           AKString text;
           if (format != nullptr) text.Assignv(format, list);
           text.SetMaxLength(1023);
           return NewWithText(id, "%s", text.CStr());
         };
       }},
      {"class.newObjectWithArgs", "takes the arguments for a format once more",
       [](Tables* t) {
         t->classes.newObjectWithArgs = [](const AKContextObject*, AKClassID id, const char* format, va_list list) {
           AKString text;
           if (format != nullptr) text.Assignv(format, list);
           text.ReplaceAll("%", "", 0);
           return NewWithText(id, "%s", text.CStr());
         };
       }},
      {"class.newObjectWithArgs", "an object that refused its arguments",
       [](Tables* t) {
         t->classes.newObjectWithArgs = [](const AKContextObject*, AKClassID id, const char* format, va_list list) {
           const AKClass* const cls = gReal.classes.getClassOfID(id);
           AKObject* const object = cls == nullptr || cls->constructor == nullptr ? nullptr : cls->constructor();
           if (object != nullptr) Initialise(object, format, list);
           return object;
         };
       }},
      {"class.newObjectFromFile", "tells version 1 whatever was asked",
       [](Tables* t) {
         t->classes.newObjectFromFile = [](const AKContextObject* context, const AKFile& file, unsigned int) {
           return gReal.classes.newObjectFromFile(context, file, 1);
         };
       }},
      {"class.newObjectFromFile", "reads a byte too many",
       [](Tables* t) {
         t->classes.newObjectFromFile = [](const AKContextObject* context, const AKFile& file, unsigned int version) {
           AKObject* const object = gReal.classes.newObjectFromFile(context, file, version);
           if (object != nullptr) file.Skip(1);
           return object;
         };
       }},
      {"class.newObjectFromDictionary", "sets no properties",
       [](Tables* t) {
         t->classes.newObjectFromDictionary = [](const AKContextObject*, const AKDictionary& dictionary) {
           return NewWithText(AKValueGetasAKClassID(dictionary.GetValue("ClassID")), "-default");
         };
       }},
      {"class.newObjectFromOriginal", "the original itself",
       [](Tables* t) {
         t->classes.newObjectFromOriginal = [](const AKContextObject* context, const AKObject* original) {
           if (original == nullptr) return gReal.classes.newObjectFromOriginal(context, nullptr);
           return const_cast<AKObject*>(original);
         };
       }},
      {"class.newObjectFromOriginal", "a new object, which is no copy",
       [](Tables* t) {
         t->classes.newObjectFromOriginal = [](const AKContextObject* context, const AKObject* original) {
           if (original == nullptr) return gReal.classes.newObjectFromOriginal(context, nullptr);
           return NewWithText(original->ClassID(), "-default");
         };
       }},
  };
}

std::vector<HostMutant> WritingMutants() {
  return {
      {"class.writeObjectToFile", "status 0 for null",
       [](Tables* t) {
         t->classes.writeObjectToFile = [](const AKObject* object, AKFile& file) {
           return object == nullptr ? 0 : gReal.classes.writeObjectToFile(object, file);
         };
       }},
      {"class.newObjectFromFile", "the last byte of a record is not written",
       [](Tables* t) { t->classes.writeObjectToFile = &WriteWithoutLast; }},
      {"class.writeObjectToDictionary", "clears what was there",
       [](Tables* t) {
         t->classes.writeObjectToDictionary = [](const AKObject* object, AKDictionary& dictionary) {
           dictionary.Clear();
           return gReal.classes.writeObjectToDictionary(object, dictionary);
         };
       }},
      {"class.writeObjectToDictionary", "no failure of a class that can't",
       [](Tables* t) {
         t->classes.writeObjectToDictionary = [](const AKObject* object, AKDictionary& dictionary) {
           const int status = gReal.classes.writeObjectToDictionary(object, dictionary);
           return status == -723 ? 0 : status;
         };
       }},
      {"class.reinitObjectFromFile", "hides the status of the method",
       [](Tables* t) {
         t->classes.reinitObjectFromFile = [](AKObject* object, const AKFile& file) {
           const int status = gReal.classes.reinitObjectFromFile(object, file);
           return object == nullptr ? status : 0;
         };
       }},
  };
}

}  // namespace

std::vector<HostMutant> ClassMutants() {
  std::vector<HostMutant> all = SetupMutants();
  for (const auto& more : {LookUpMutants(), MakingMutants(), WritingMutants()}) {
    all.insert(all.end(), more.begin(), more.end());
  }
  return all;
}

}  // namespace host
