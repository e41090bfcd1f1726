// Objects in files.
#include <memory>

#include "kit/streams/AKFile.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Lives.h"
#include "torture/Objects.h"

namespace torture {
namespace {

constexpr unsigned int kVersion = 7;
constexpr char kBehind[] = "what follows";

AKMemoryBlock ContentOf(const AKFile& file) {
  const void* data = nullptr;
  unsigned long long size = 0;
  file.GetMemoryStreamDataPtr(&data, &size);
  return data == nullptr ? AKMemoryBlock() : AKMemoryBlock(data, static_cast<unsigned int>(size));
}

std::unique_ptr<AKFile> NewFile() {
  auto file = std::make_unique<AKFile>(AKFile::kModeMemory);
  file->CreateForReadWrite();
  return file;
}

int Write(const AKObject* object, AKFile* file, const char* done, int expected) {
  Call call("class.writeObjectToFile", done, kClassSection);
  const int status = call([&] { return AKClass::WriteObjectToFile(object, *file); });
  call.ExpectStatus(expected, status);
  return status;
}

void ExpectNone(const Call& call, const AKObject* object, int status) {
  call.ExpectNull(object);
  Call error("class.getErrorNew", "ask why there is no object of a file", kClassSection);
  const int seen = error([] { return AKClass::GetErrorNew(); });
  if (status != 0) return error.ExpectStatus(status, seen);
  error.ExpectFailure(seen);
}

// Objects stand one behind the other: each reads its own bytes and no others.
void AskTwoAndMore(Puppet* one, Puppet* other) {
  const auto file = NewFile();
  if (Write(one, file.get(), "write an object", 0) != 0 ||
      Write(other, file.get(), "write another behind it", 0) != 0) {
    return;
  }
  file->Write(kBehind, sizeof(kBehind));
  file->SetPos(0);
  for (const Puppet* original : {one, other}) {
    const Puppet::Ordered ordered({});
    Call call("class.newObjectFromFile", "read an object of several in a file, version 7", kClassSection);
    auto* const twin = static_cast<Puppet*>(call([&] { return AKClass::NewObjectFromFile(nullptr, *file, kVersion); }));
    call.Expect(twin != nullptr, "an object", "null");
    if (twin == nullptr) return;
    call.ExpectIs(original->number, twin->number);
    call.ExpectIs(original->text, twin->text);
    call.ExpectIs(kVersion, Puppet::seen.version);
    call.ExpectIs(1U, Puppet::seen.reads);
    call.Expect(twin->Class() == Puppet::_Class(), "an instance of the class that was written", "one of another");
    Delete(twin);
  }
  char behind[sizeof(kBehind)] = {};
  const int status = file->Read(behind, sizeof(behind));
  Call("class.newObjectFromFile", "look at what stands behind the objects", kClassSection)
      .Expect(status == 0 && std::string_view(behind) == kBehind, "it untouched, and the file in front of it", "else");
}

// A record cut anywhere is a status, and what was begun is ended.
void AskCutFiles(Puppet* puppet) {
  const auto whole = NewFile();
  if (Write(puppet, whole.get(), "write an object that will be cut", 0) != 0) return;
  const AKMemoryBlock content = ContentOf(*whole);
  for (unsigned int length = 0; length < content.Size(); ++length) {
    AKFile file(content.Data(), length);
    file.OpenForRead();
    const std::size_t before = Lives::Count();
    Call call("class.newObjectFromFile", "read an object of which " + TextOf(length) + " bytes are there",
              kClassSection);
    ExpectNone(call, call([&] { return AKClass::NewObjectFromFile(nullptr, file, 1); }), 0);
    call.Expect(Lives::Count() == before, "the instance that was begun ended", "it lives on");
  }
}

void AskBadFiles(Puppet* puppet) {
  AKFile closed(AKFile::kModeMemory);
  Call write("class.writeObjectToFile", "write into a file that is not open", kClassSection);
  write.ExpectFailure(write([&] { return AKClass::WriteObjectToFile(puppet, closed); }));
  Call read("class.newObjectFromFile", "read a file that is not open", kClassSection);
  ExpectNone(read, read([&] { return AKClass::NewObjectFromFile(nullptr, closed, 1); }), 0);
  Call again("class.reinitObjectFromFile", "read a file that is not open", kClassSection);
  again.ExpectFailure(again([&] { return AKClass::ReinitObjectFromFile(puppet, closed); }));
  const auto file = NewFile();
  Write(nullptr, file.get(), "write null", kStatusNoInstance);
  Call("class.writeObjectToFile", "look at the file that null was written to", kClassSection)
      .Expect(ContentOf(*file).Size() == 0, "nothing written", "something");
  file->Write("noClass\0............", 20);
  file->SetPos(0);
  Call unknown("class.newObjectFromFile", "read an object of a class that nobody has", kClassSection);
  ExpectNone(unknown, unknown([&] { return AKClass::NewObjectFromFile(nullptr, *file, 1); }), kStatusNoClass);
}

void AskRefusals(Puppet* puppet) {
  const auto file = NewFile();
  Write(puppet, file.get(), "write an object", 0);
  {
    const Puppet::Ordered ordered({.write = kStatusOwn});
    const auto other = NewFile();
    Write(puppet, other.get(), "write an object whose method returns -4711", kStatusOwn);
  }
  const Puppet::Ordered ordered({.read = kStatusOwn});
  file->SetPos(0);
  Call call("class.newObjectFromFile", "read an object whose method returns -4711", kClassSection);
  ExpectNone(call, call([&] { return AKClass::NewObjectFromFile(nullptr, *file, 1); }), kStatusOwn);
  call.Expect(Puppet::seen.deletions == 1 && Puppet::seen.destructions == 1, "it ended, once",
              TextOf(Puppet::seen.deletions) + " times akmDelete");
  file->SetPos(0);
  Call again("class.reinitObjectFromFile", "have an object read whose method returns -4711", kClassSection);
  again.ExpectStatus(kStatusOwn, again([&] { return AKClass::ReinitObjectFromFile(puppet, *file); }));
}

void AskReading(Puppet* puppet, Puppet* other) {
  const auto file = NewFile();
  Call null("class.reinitObjectFromFile", "have null read a file", kClassSection);
  null.ExpectStatus(kStatusNoInstance, null([&] { return AKClass::ReinitObjectFromFile(nullptr, *file); }));
  Write(other, file.get(), "write an object for another to read", 0);
  file->SetPos(0);
  const Puppet::Ordered ordered({});
  Call call("class.reinitObjectFromFile", "have an object read what another wrote", kClassSection);
  call.ExpectStatus(0, call([&] { return AKClass::ReinitObjectFromFile(puppet, *file); }));
  call.ExpectIs(other->number, puppet->number);
  call.ExpectIs(other->text, puppet->text);
  call.ExpectIs(1U, Puppet::seen.version);
  call.Expect(Puppet::seen.made == nullptr && Lives::IsAlive(puppet), "the same instance", "another one");
}

}  // namespace

void AskRecords(const Moment&) {
  Puppet* const one = NewPuppet(1.0 / 3);
  Puppet* const other = NewPuppet(-1e300);
  if (one == nullptr || other == nullptr) return;
  one->text = "one \x80";
  other->text = LongText();
  AskTwoAndMore(one, other);
  AskCutFiles(one);
  AskBadFiles(one);
  AskRefusals(one);
  AskReading(one, other);
  Delete(one);
  Delete(other);
}

}  // namespace torture
