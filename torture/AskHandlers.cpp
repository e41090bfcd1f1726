// Handlers: what a bundle may do to the open document.
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kit/objects/AKHandler.h"
#include "kit/values/AKValueClassID.h"
#include "kit/values/AKValueHelpers.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Entries.h"
#include "torture/Examiner.h"
#include "torture/Lives.h"
#include "torture/Objects.h"

namespace torture {
namespace {

constexpr unsigned int kManyObjects = 300;

AKObjectArray ArrayOf(std::initializer_list<AKObject*> objects) { return AKObjectArray(objects); }

int Add(AKHandler& handler, const char* done, const AKObjectArray& objects, AKObject* parent, unsigned int mode,
        int expected, const char* section = kHandlerSection) {
  Call call("handler.addObjects", done, section);
  const int status = call([&] { return handler.AddObjects(objects, parent, mode); });
  call.ExpectStatus(expected, status);
  return status;
}
int Remove(AKHandler& handler, const char* done, const AKObjectArray& objects, int expected,
           const char* section = kHandlerSection) {
  Call call("handler.deleteObjects", done, section);
  const int status = call([&] { return handler.DeleteObjects(objects); });
  call.ExpectStatus(expected, status);
  for (const AKObject* object : objects) {
    const bool isGone = status == 0 && object != nullptr && !Lives::IsAlive(object);
    call.Expect(!isGone, "objects that are ended when the outermost method has returned", "one that is gone already");
    if (status == 0 && object != nullptr) Lives::ExpectToLeave(object);
  }
  return status;
}
int Revise(AKHandler& handler, const char* done, const AKObjectArray& objects, int expected,
           const char* section = kHandlerSection) {
  Call call("handler.reviseObjects", done, section);
  const int status = call([&] { return handler.ReviseObjects(objects); });
  call.ExpectStatus(expected, status);
  return status;
}

// What a handler without a document, or in a method that only looks, answers.
void ExpectAllRefused(AKHandler& handler, int status, const char* section) {
  Puppet* const puppet = NewPuppet(0.25);
  if (puppet == nullptr) return;
  Add(handler, "add an object where it is not allowed", ArrayOf({puppet}), nullptr, 0, status, section);
  Remove(handler, "delete an object where it is not allowed", ArrayOf({puppet}), status, section);
  Revise(handler, "revise an object where it is not allowed", ArrayOf({puppet}), status, section);
  Call("handler.addObjects", "look at the object that was refused", section)
      .Expect(Lives::IsAlive(puppet), "the caller's, alive", "ended");
  Delete(puppet);
}

void AskNames(AKHandler& handler, bool isActive) {
  const std::string most(120, 'n');
  for (const AKString& name : {AKString("Examine"), AKString("%s%n"), AKString(most), AKString("")}) {
    AKString given(name.CStr(), name.Length());
    Call set("handler.setActionName", "name the change " + TextOf(name), kHandlerSection);
    set([&] { handler.SetActionName(given); });
    given = "overwritten";
    Call get("handler.actionName", "ask for the name " + TextOf(name) + " that was set", kHandlerSection);
    get.ExpectIs(isActive ? name : AKString(), get([&] { return handler.ActionName(); }));
  }
  for (const AKString& name : {OddText(), LongText(), AKString("")}) {
    Call set("handler.setActionName", "name the change " + TextOf(name), kHandlerSection);
    set([&] { handler.SetActionName(name); });
  }
}

AKObject* Master(AKHandler& handler) {
  Call call("handler.getMasterLayer", "ask for the master layer", kHandlerSection);
  AKObject* const master = call([&] { return handler.GetMasterLayer(); });
  call.Expect(call([&] { return handler.GetMasterLayer(); }) == master, "the same again", "another one");
  return master;
}

// The master layer is the document's, and a parent only.
void AskMaster(AKHandler& handler) {
  AKObject* const master = Master(handler);
  Call call("handler.getMasterLayer", "ask for the master layer of a document", kHandlerSection);
  call.Expect(master != nullptr, "what stands for the first layer", "null");
  if (master == nullptr) return;
  call.Expect(master->ClassID() == AKClassID("_layer"), "an object of class \"_layer\"", "one of another");
  Call("class.deleteObject", "end the master layer", kWithinSection)([&] { AKClass::DeleteObject(master); });
  call.Expect(master->ClassID() == AKClassID("_layer"), "the master layer left as it is", "another object");
  if (!Moment::MayEdit()) return;
  Add(handler, "add the master layer", ArrayOf({master}), nullptr, 0, kStatusBadObject);
  Remove(handler, "delete the master layer", ArrayOf({master}), kStatusNotInDocument);
  Revise(handler, "revise the master layer", ArrayOf({master}), kStatusNotInDocument);
}

// An object of a class that the host has not got.
class Stranger final : public AKObject {
 public:
  AK_OBJECT_MEMORY
  static Stranger* Make() {
    static AKClass record(AKClassInfo{AKClassID("akNone"), AKObjectSymbolVect::_ClassID(), &Construct, &Destruct,
                                      sizeof(Stranger), "None"},
                          false, nullptr);
    void* memory = _AKClassObjectAlloc(&record, sizeof(Stranger));
    return memory == nullptr ? nullptr : new (memory) Stranger;
  }
  void _PureVirtualMethod() const override {}

 private:
  static AKObject* Construct() { return Make(); }
  static void Destruct(AKObject* object) { delete static_cast<Stranger*>(object); }
};

// A call that names one bad object changes nothing, and what the caller wanted to add stays its own.
void AskBadCalls(AKHandler& handler, AKObject* own) {
  Puppet* const fresh = NewPuppet(0.5);
  Puppet* const other = NewPuppet(0.75);
  const std::unique_ptr<Stranger> stranger(Stranger::Make());
  if (fresh == nullptr || other == nullptr) return;
  Add(handler, "add an object and null", ArrayOf({fresh, nullptr}), nullptr, 0, kStatusBadObject);
  Add(handler, "add an object twice at once", ArrayOf({fresh, fresh}), nullptr, 0, kStatusBadObject);
  Add(handler, "add an object of a class that is not registered", ArrayOf({fresh, stranger.get()}), nullptr, 0,
      kStatusBadObject);
  Add(handler, "add an object that is in the document", ArrayOf({fresh, own}), nullptr, 0, kStatusBadObject);
  Add(handler, "add below a parent that is in no document", ArrayOf({fresh}), other, 0, kStatusNotInDocument);
  Add(handler, "add below itself", ArrayOf({fresh}), fresh, 0, kStatusNotInDocument);
  Remove(handler, "delete an object that is in no document", ArrayOf({fresh}), kStatusNotInDocument);
  Remove(handler, "delete null", ArrayOf({nullptr}), kStatusNotInDocument);
  Revise(handler, "revise an object that is in no document", ArrayOf({fresh}), kStatusNotInDocument);
  Revise(handler, "revise null", ArrayOf({nullptr}), kStatusNotInDocument);
  Add(handler, "add nothing", AKObjectArray(), nullptr, 0, 0);
  Remove(handler, "delete nothing", AKObjectArray(), 0);
  Revise(handler, "revise nothing", AKObjectArray(), 0);
  Delete(fresh);
  Delete(other);
}

// What the host still uses is left.
void EndInUse(Puppet* puppet, const char* done) {
  Call call("class.deleteObject", done, kWithinSection);
  call([&] { AKClass::DeleteObject(puppet); });
  call.Expect(Lives::IsInitialised(puppet), "it left as it is", "ended");
}

// Everything that can be done to the document, and all of it taken back.
void AskEdits(AKHandler& handler, AKObject* own) {
  std::vector<AKObject*> added;
  const std::pair<AKObject*, const char*> parents[] = {
      {nullptr, "without a parent"}, {Master(handler), "below the master layer"}, {own, "beside an object"}};
  for (const auto& [parent, where] : parents) {
    for (const unsigned int mode : {0U, 1U, 2U, 0xFFFFFFFFU}) {
      Puppet* const puppet = NewPuppet(mode);
      if (puppet == nullptr) return;
      const std::string done = std::string("add an object ") + where + ", mode " + TextOf(mode);
      if (Add(handler, done.c_str(), ArrayOf({puppet}), parent, mode, 0) != 0) return Delete(puppet);
      added.push_back(puppet);
    }
  }
  auto* const first = static_cast<Puppet*>(added.front());
  Add(handler, "add an object again", ArrayOf({first}), nullptr, 0, kStatusBadObject);
  EndInUse(first, "end an object that is in a document");
  first->number = 0.125;
  Revise(handler, "revise an object twice at once", ArrayOf({first, first}), 0);
  Revise(handler, "revise an object that did not change", ArrayOf({first}), 0);
  Puppet* const foreign = NewPuppet(1);
  Remove(handler, "delete an object and one that is in no document", ArrayOf({first, foreign}), kStatusNotInDocument);
  Revise(handler, "revise an object of the document, which a failed call deleted not", ArrayOf({first}), 0);
  Delete(foreign);
  added.push_back(first);  // named twice
  Remove(handler, "delete all that was added, one named twice",
         AKObjectArray(added.data(), static_cast<unsigned int>(added.size())), 0);
  Remove(handler, "delete an object again", ArrayOf({first}), kStatusNotInDocument);
  Add(handler, "add an object that was deleted", ArrayOf({first}), nullptr, 0, kStatusBadObject);
  EndInUse(first, "end an object that was deleted, which the host does");
}

// The host takes an object back to the record that it has; the instance may be another one then.
void AskUnwritable(AKHandler& handler) {
  Puppet* puppet = NewPuppet(0.5);
  if (puppet == nullptr) return;
  if (Add(handler, "add an object", ArrayOf({puppet}), nullptr, 0, 0) != 0) return Delete(puppet);
  puppet->number = 0.625;
  {
    const Puppet::Ordered ordered({.write = -4711});
    Revise(handler, "revise an object that can't write its record", ArrayOf({puppet}), kStatusUnwritable);
    if (Puppet::seen.made != nullptr) puppet = Puppet::seen.made;
  }
  Call call("handler.reviseObjects", "look at an object that could not write its record", kHandlerSection);
  call.Expect(puppet->number == 0.5, "it as it was before", TextOf(puppet->number));
  Remove(handler, "delete that object", ArrayOf({puppet}), 0);
}

void AskWith(AKHandler& handler, const Moment& moment) {
  Call call("handler.isActive", "ask whether there is a document", kHandlerSection);
  const bool isActive = call([&] { return handler.IsActive(); });
  call.Expect(moment.ID() != MomentID::kStart || !isActive, "none while pluginMain runs", "one");
  AskNames(handler, isActive);
  if (!isActive) {
    call.Expect(Master(handler) == nullptr, "no master layer without a document", "one");
    const bool isLooking = moment.ID() != MomentID::kStart && !Moment::MayEdit();
    if (!isLooking) ExpectAllRefused(handler, kStatusNoDocument, kHandlerSection);
    return;
  }
  AskMaster(handler);
  if (!Moment::MayEdit()) return ExpectAllRefused(handler, kStatusNotHere, kWithinSection);
  auto* const own = const_cast<AKObject*>(moment.Object());
  Call inside("handler.reviseObjects", "revise the object whose method runs, if it is in the document",
              kHandlerSection);
  const bool isIn = inside([&] { return handler.ReviseObject(own); }) == 0;
  AskBadCalls(handler, isIn ? own : nullptr);
  AskEdits(handler, isIn ? own : nullptr);
  AskUnwritable(handler);
}

// Its methods ask as those of the host's own objects do.
void AskOwnFromDictionary() {
  AKDictionary properties;
  properties.SetValue("ClassID", AKValueSetasAKClassID(Examiner::_ClassID()));
  properties.SetValue("Value", AKValueSetasFloat64(0.25));
  Call call("class.newObjectFromDictionary", "make an examiner of a dictionary", kClassSection);
  AKObject* const object = call([&] { return AKClass::NewObjectFromDictionary(nullptr, properties); });
  call.Expect(object != nullptr, "an object", "null");
  Delete(object);
}

}  // namespace

void AskManyHandlers() {
  std::vector<std::unique_ptr<AKHandler>> handlers(50);
  for (auto& handler : handlers) {
    Call call("handler.construct", "make one of many handlers", kHandlerSection);
    call([&] { handler = std::make_unique<AKHandler>(nullptr); });
    call.Expect(handler != nullptr && handler->HostObject() != nullptr, "the wrapper filled", "it empty");
  }
  for (std::size_t i = 0; i < handlers.size(); ++i) {
    Call call("handler.destruct", "end one of many handlers", kHandlerSection);
    call([&] { handlers[(i * 7) % handlers.size()].reset(); });
  }
}

void AskHandlers(const Moment& moment) {
  if (!HasTable(TableID::kHandler) || !IsCallable("handler.construct") || !IsCallable("handler.destruct")) return;
  AskManyHandlers();
  AKHandler handler(nullptr);
  if (handler.HostObject() != nullptr) AskWith(handler, moment);
}

void AskManyEdits(const Moment& moment) {
  AskHandlers(moment);
  AskOwnFromDictionary();
  AKHandler handler(nullptr);
  if (!HasTable(TableID::kHandler) || !handler.IsActive()) return;
  AKObjectArray objects;
  for (unsigned int i = 0; i < kManyObjects; ++i) {
    if (Puppet* const puppet = NewPuppet(i)) objects.Append(puppet);
  }
  if (Add(handler, "add 300 objects at once", objects, nullptr, 0, 0) != 0) return;
  for (AKObject* object : objects) {
    static_cast<Puppet*>(object)->number += 0.5;
    Revise(handler, "revise one of 300 objects", ArrayOf({object}), 0);
  }
  const AKObjectArray most(objects.Data(), objects.Count() - 1);
  Remove(handler, "delete all but one of 300 objects", most, 0);
}

void AskOwnDeletion(Examiner* examiner) {
  AKHandler handler(nullptr);
  if (!HasTable(TableID::kHandler) || !handler.IsActive()) return;
  Remove(handler, "delete the object whose method runs", ArrayOf({examiner}), 0);
  Revise(handler, "revise it afterwards", ArrayOf({examiner}), kStatusNotInDocument);
}

}  // namespace torture
