// Making and ending objects, and calls that run too deep.
#include "kit/streams/AKFile.h"
#include "kit/values/AKValueClassID.h"
#include "kit/values/AKValueHelpers.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Examiner.h"
#include "torture/Lives.h"
#include "torture/Objects.h"

namespace torture {
namespace {

constexpr unsigned int kDeepest = 64;

void ExpectError(int status, const char* done) {
  Call call("class.getErrorNew", done, kClassSection);
  call.ExpectStatus(status, call([] { return AKClass::GetErrorNew(); }));
}

// Null, and the status told.
void ExpectNone(const char* entry, const Call& call, const AKObject* object, int status) {
  call.ExpectNull(object);
  ExpectError(status, entry);
}

// Made, refused by its method, ended.
void ExpectEnded(const Call& call) {
  call.Expect(Puppet::seen.deletions == 1, "one akmDelete of the instance whose method failed",
              TextOf(Puppet::seen.deletions));
  call.Expect(Puppet::seen.destructions == 1, "its destruction", TextOf(Puppet::seen.destructions));
}

void ExpectHeader(const Call& call, const AKObject* object) {
  const AKClass* const record = Puppet::_Class();
  call.Expect(object->Class() == record && _AKClassObjectGetHiddenClassPtr(object) == record,
              "an instance of the class that was asked for", "one of another");
  call.Expect(Lives::IsInitialised(object), "an initialised instance", "a bare one");
}

void AskUnknownClasses() {
  AKClassID whole;
  for (char& byte : whole.chars) byte = 'x';
  for (const AKClassID& id : {kAKNullClassID, AKClassID("noClass"), whole, AKObjectSymbolVect::_ClassID(),
                              AKObject::_ClassID(), AKClassID("_layer")}) {
    Call call("class.newObjectWithArgs", "make an object of a class that is not there or has no constructor",
              kClassSection);
    AKObject* object = call([&] { return NewWithArgs(id, "-default"); });
    ExpectNone("ask why there is no object of an unknown class", call, object, kStatusNoClass);
  }
}

void AskRefusals() {
  {
    const Puppet::Ordered ordered({.refusesConstruction = true});
    Call call("class.newObjectWithArgs", "make an object whose constructor returns null", kClassSection);
    AKObject* object = call([] { return NewWithArgs(Puppet::_ClassID(), "-default"); });
    ExpectNone("ask why there is no object that was not constructed", call, object, kStatusNoInstance);
  }
  const Puppet::Ordered ordered({.init = kStatusOwn});
  Call call("class.newObjectWithArgs", "make an object whose akmInitWithArgs returns -4711", kClassSection);
  AKObject* object = call([] { return NewWithArgs(Puppet::_ClassID(), "-default"); });
  ExpectNone("ask why there is no object that refused its arguments", call, object, kStatusOwn);
  ExpectEnded(call);
  AKClass::GetTopClass();
  AKClass::DeleteObject(nullptr);
  ExpectError(kStatusOwn, "ask again, behind other entries");
}

void AskArguments() {
  struct Case {
    const char* format;
    const char* seen;
  };
  constexpr Case kCases[] = {
      {"", ""}, {nullptr, ""}, {"-number:%d -text:\"%s\" %%", "-number:7|-text:a b|%"}, {"%%s%%n", "%s%n"}};
  for (const Case& one : kCases) {
    const Puppet::Ordered ordered({});
    Call call(
        "class.newObjectWithArgs",
        "make an object with the format " + (one.format == nullptr ? "null" : TextOf(std::string_view(one.format))),
        kClassSection);
    AKObject* object = call([&] {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
      return NewWithArgs(Puppet::_ClassID(), one.format, 7, "a b");
#pragma GCC diagnostic pop
    });
    call.Expect(object != nullptr, "an object", "null");
    if (object == nullptr) continue;
    call.ExpectIs(AKString(one.seen), Puppet::seen.arguments);
    ExpectHeader(call, object);
    ExpectError(0, "ask for the status of an object that was made");
    Delete(object);
  }
  const Puppet::Ordered ordered({});
  Call call("class.newObjectWithArgs", "make an object with arguments of many bytes", kClassSection);
  AKObject* object = call([] { return NewWithArgs(Puppet::_ClassID(), "%s", LongText().CStr()); });
  call.ExpectIs(LongText(), Puppet::seen.arguments);
  Delete(object);
}

void AskOriginals() {
  Call none("class.newObjectFromOriginal", "copy null", kClassSection);
  AKObject* copy = none([] { return AKClass::NewObjectFromOriginal(nullptr, nullptr); });
  ExpectNone("ask why there is no copy of null", none, copy, kStatusNoInstance);
  Puppet* const original = NewPuppet(0.1);
  if (original == nullptr) return;
  original->text = LongText();
  {
    const Puppet::Ordered ordered({.write = kStatusOwn});
    Call call("class.newObjectFromOriginal", "copy an object that does not write its record", kClassSection);
    copy = call([&] { return AKClass::NewObjectFromOriginal(nullptr, original); });
    ExpectNone("ask why there is no copy", call, copy, kStatusOwn);
  }
  const Puppet::Ordered ordered({});
  Call call("class.newObjectFromOriginal", "copy an object", kClassSection);
  auto* const twin = static_cast<Puppet*>(call([&] { return AKClass::NewObjectFromOriginal(nullptr, original); }));
  call.Expect(twin != nullptr && twin != original, "another object", twin == nullptr ? "null" : "the same");
  if (twin != nullptr && twin != original) {
    call.ExpectIs(original->number, twin->number);
    call.ExpectIs(original->text, twin->text);
    call.ExpectIs(1U, Puppet::seen.version);
    ExpectHeader(call, twin);
    Delete(twin);
  }
  Delete(original);
}

void AskDictionaries() {
  Call null("class.writeObjectToDictionary", "write null", kClassSection);
  AKDictionary properties;
  null.ExpectStatus(kStatusNoInstance, null([&] { return AKClass::WriteObjectToDictionary(nullptr, properties); }));
  null.Expect(properties.IsEmpty(), "nothing written", "something");
  Puppet* const puppet = NewPuppet(-0.0);
  AKObject* const bare = NewWithArgs(Bare::_ClassID(), "-default");
  if (puppet == nullptr || bare == nullptr) return;
  puppet->text = OddText();
  Call missing("class.writeObjectToDictionary", "write an object without akmGetObjectProperties", kClassSection);
  missing.ExpectStatus(-723, missing([&] { return AKClass::WriteObjectToDictionary(bare, properties); }));
  Delete(bare);
  {
    const Puppet::Ordered ordered({.get = kStatusOwn});
    Call call("class.writeObjectToDictionary", "write an object whose method returns -4711", kClassSection);
    call.ExpectStatus(kStatusOwn, call([&] { return AKClass::WriteObjectToDictionary(puppet, properties); }));
  }
  properties.SetValue("Other", AKValueSetasBool(true));
  Call write("class.writeObjectToDictionary", "write an object", kClassSection);
  write.ExpectStatus(0, write([&] { return AKClass::WriteObjectToDictionary(puppet, properties); }));
  write.Expect(properties.ContainsKey("Other"), "what the dictionary held beside it", "nothing");
  {
    const Puppet::Ordered ordered({});
    Call make("class.newObjectFromDictionary", "make an object of what was written", kClassSection);
    auto* const twin =
        static_cast<Puppet*>(make([&] { return AKClass::NewObjectFromDictionary(nullptr, properties); }));
    make.Expect(twin != nullptr, "an object", "null");
    if (twin != nullptr) {
      make.ExpectIs(puppet->number, twin->number);
      make.ExpectIs(puppet->text, twin->text);
      ExpectHeader(make, twin);
      Delete(twin);
    }
  }
  {
    const Puppet::Ordered ordered({.set = kStatusOwn});
    Call call("class.newObjectFromDictionary", "make an object whose method returns -4711", kClassSection);
    AKObject* object = call([&] { return AKClass::NewObjectFromDictionary(nullptr, properties); });
    ExpectNone("ask why there is no object that refused its properties", call, object, kStatusOwn);
    if (object == nullptr) ExpectEnded(call);
  }
  Delete(puppet);
}

void AskBadDictionaries() {
  AKDictionary properties;
  const AKValue bad[] = {AKValue(), AKValueSetasBool(true), AKValueSetasAKString("noClass"), AKValueSetasAKString(""),
                         AKValueSetasAKString(LongText())};
  for (const AKValue& id : bad) {
    properties.SetValue("ClassID", id);
    Call call("class.newObjectFromDictionary", "make an object of the class " + TextOf(id), kClassSection);
    AKObject* object = call([&] { return AKClass::NewObjectFromDictionary(nullptr, properties); });
    ExpectNone("ask why there is no object of a dictionary without a class", call, object, kStatusNoClass);
  }
}

}  // namespace

Puppet* NewPuppet(double number) {
  Call call("class.newObjectWithArgs", "make an object", kClassSection);
  auto* const puppet = static_cast<Puppet*>(call([] { return NewWithArgs(Puppet::_ClassID(), "-default"); }));
  call.Expect(puppet != nullptr, "an object", "null");
  if (puppet != nullptr) puppet->number = number;
  return puppet;
}

void Delete(AKObject* object) {
  if (object == nullptr) return;
  Call call("class.deleteObject", "end an object of the caller's", kClassSection);
  call([&] { AKClass::DeleteObject(object); });
  call.Expect(!Lives::IsAlive(object), "its akmDelete and its destructor called", "an object that lives on");
}

void AskObjects(const Moment&) {
  AskUnknownClasses();
  AskRefusals();
  AskArguments();
  AskOriginals();
  AskDictionaries();
  AskBadDictionaries();
}

// What the host still uses is left.
void AskDeletion(const Moment& moment) {
  Call null("class.deleteObject", "end null", kClassSection);
  null([] { AKClass::DeleteObject(nullptr); });
  // Who is being constructed is not the host's to know yet.
  if (moment.Object() == nullptr || moment.ID() == MomentID::kConstructor) return;
  auto* const own = const_cast<AKObject*>(moment.Object());
  const bool isInitialised = Lives::IsInitialised(own);
  Call call("class.deleteObject", "end the object whose method runs", kWithinSection);
  call([&] { AKClass::DeleteObject(own); });
  call.Expect(Lives::IsAlive(own) && Lives::IsInitialised(own) == isInitialised, "it left as it is", "it ended");
}

// Each object makes the next one from within its akmInitWithArgs.
void AskDepth() {
  unsigned int depth = 0;
  int refusal = 0;
  const Puppet::Ordered ordered({.within = [&] {
    if (++depth > kDeepest) return;
    AKObject* const next = NewWithArgs(Puppet::_ClassID(), "-next");
    if (next == nullptr) refusal = AKClass::GetErrorNew();
    AKClass::DeleteObject(next);
  }});
  Call call("class.newObjectWithArgs", "make an object, which makes one from within its method, and so on",
            kWithinSection);
  AKObject* const first = call([] { return NewWithArgs(Puppet::_ClassID(), "-next"); });
  const bool isStart = Moment::Current()->ID() == MomentID::kStart;  // pluginMain is no method
  const unsigned int all = depth + Moment::Depth() - (isStart ? 1 : 0);
  call.Expect(all <= kDeepest, "at most 64 methods within each other", TextOf(all));
  call.Expect(all + 4 >= kDeepest, "64 methods within each other, but for those of the host's own", TextOf(all));
  call.ExpectStatus(kStatusRefused, refusal);
  Delete(first);
}

}  // namespace torture
