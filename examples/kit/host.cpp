// The class model from the host's side: the tables that a bundle reaches its host through, and a class that registers.
//
// A host fills the tables by name. This one is as small as can be: it knows one class, translates nothing, and prints
// what is logged.
#include <cstdio>
#include <memory>

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/text/AKArgs.h"

namespace {

// What a bundle has: see the star for all methods that a class can have.
class Dot final : public AKObjectClass<Dot, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "exDot";
  static constexpr char kClassName[] = "Dot";
  static constexpr char kLocaleDomain[] = "Dot";
  static const char* DisplayName() { return NKLocaleGetString("Dot"); }

  int akmWriteToFile(AKFile& file) const { return AKFileWriteUInt32(file, size_); }

 private:
  unsigned int size_ = 4;
};

std::unique_ptr<AKClass> sRecord;

int ClassSetup(const AKClassInfo& info, unsigned int, AKClass** out) {
  sRecord = std::make_unique<AKClass>(info, true, kAKNullClassQCast);
  *out = sRecord.get();
  return 0;
}
void SetClassName(AKClass* cls, const AKString& name, const AKString&) { cls->names[1] = name; }
AKClass* GetClassOfID(AKClassID id) { return sRecord != nullptr && sRecord->classID == id ? sRecord.get() : nullptr; }
const char* Translate(const char* text) { return text; }
void SetDomain(const char*) {}
void Log(const char* line) { std::printf("%s\n", line); }

// Whether a parent stands above a class in the chain of drawn objects.
template <typename Class>
constexpr bool kIsDrawn = std::is_base_of_v<AKObjectSymbol, Class>&& std::is_base_of_v<AKObjectShape, Class>;

}  // namespace

int main() {
  AKGeneralTable general;
  general.localeSetDomain = &SetDomain;
  general.localeGetString = &Translate;
  general.logMessage = &Log;
  AKClassTable classes;
  classes.classSetup = &ClassSetup;
  classes.setClassName = &SetClassName;
  classes.getClassOfID = &GetClassOfID;
  AKHostServiceRecord services{AKHostServiceRecord::kMagic, 0x30800, 0, 0, 1.0, &general, &classes, {}, {}, {}};

  // What pluginMain does.
  AKClass* record = nullptr;
  const int status = Dot::Register(&services, &record);
  std::printf("%d, %s, %s\n", status, record->classID.chars, record->names[1].CStr());  // prints: 0, exDot, Dot
  std::printf("%d\n", kIsDrawn<Dot>);                                                   // prints: 1
  AKLog("display scale %g", gAGDisplayScale);                                           // prints: display scale 1

  // The host makes an instance and calls a method through its slot, which the signature of the slot describes.
  AKObject* dot = record->constructor();
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  const AKMemberWords slot = record->methods[kAKMethodWriteToFile];
  static_assert(std::is_same_v<AKMethodSignature<kAKMethodWriteToFile>::Type, int(AKFile&) const>);
  const int written = AKCallMember<int, AKFile&>(slot, dot, file);
  unsigned long long size = 0;
  file.GetPos(&size);
  std::printf("%d, %llu bytes\n", written, size);                             // prints: 0, 4 bytes
  std::printf("%d\n", record->methods[kAKMethodDraw].function == 0);          // prints: 1
  std::printf("%d\n", _AKClassObjectGetHiddenClassPtr(dot) == dot->Class());  // prints: 1
  record->destructor(dot);

  // Of a host's network clients the kit carries only the null ones.
  const AKNSClientID client = kAKNullNSClientID;
  const AKNSClientFG group = kAKNullNSClientFG;
  std::printf("%llu\n", static_cast<unsigned long long>(client.value + group.value));  // prints: 0
}
