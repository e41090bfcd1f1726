// What a bundle says of its classes.
#include <malloc.h>

#include <cmath>
#include <cstring>

#include "host/tables/SlotCall.h"
#include "host/validator/Subject.h"
#include "kit/geometry/AGRect.h"

namespace host::validator {
namespace {

constexpr AKMethodSlot kMark{0xABCDE0, 8};
constexpr unsigned int kKnownSlots[] = {
    kAKMethodInitWithArgs, kAKMethodInitFromFile,        kAKMethodWriteToFile,
    kAKMethodDelete,       kAKMethodSetObjectProperties, kAKMethodGetObjectProperties,
    kAKMethodDraw,         kAKMethodGetNaturalBounds,    kAKMethodInspector};

bool IsKnown(unsigned int slot) {
  for (const unsigned int known : kKnownSlots) {
    if (slot == known) return true;
  }
  return false;
}

void ID(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    trial.Do("look at the class ID");
    const AKClassID id = cls.Record().classID;
    const std::size_t length = strnlen(id.chars, sizeof(id.chars));
    trial.Expect(length > 0 && length < sizeof(id.chars), "1 to 7 characters", std::to_string(length));
    bool isPlain = id.chars[0] != '_';
    for (std::size_t i = 0; i < sizeof(id.chars); ++i) {
      const char letter = id.chars[i];
      isPlain = isPlain && (i < length ? letter > ' ' && letter < 0x7F : letter == '\0');
    }
    trial.Expect(isPlain, "printed ASCII without blanks, no underscore in front, zeros behind",
                 TextOfBytes(Bytes(id.chars, sizeof(id.chars))));
  });
}

void Name(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    trial.Do("look at the class's names");
    for (unsigned int i = 0; i < 2; ++i) {
      const std::string name = cls.Record().names[i].CStr();
      bool isText = !name.empty();
      for (const char letter : name) isText = isText && (static_cast<unsigned char>(letter) >= ' ');
      trial.Expect(isText, "a name of the class and one for users, without control characters",
                   "name " + std::to_string(i + 1) + " is \"" + name + "\"");
    }
  });
}

void Parent(Trial& trial) {
  ForEachClass(trial, {kAKMethodDraw}, [&](const ClassCalls& cls) {
    trial.Do("look at the parents of a class that draws");
    const AKClass* parent = &cls.Record();
    while (parent != nullptr && !(parent->classID == AKObjectSymbolVect::_ClassID())) {
      parent = static_cast<const AKClass*>(parent->parentLink);
    }
    trial.Expect(parent != nullptr, "\"_syVect\" is among them",
                 "parent \"" + std::string(cls.Record().parentClassID.chars) + "\"");
  });
}

void Size(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    const Instance object = cls.Construct();
    const std::size_t said = cls.Record().instanceSize + sizeof(void*);
    const std::size_t block = malloc_usable_size(reinterpret_cast<char*>(object.get()) - sizeof(void*));
    trial.Do("compare the block of an instance with the size of the class's description");
    // Allocators give up to 31 bytes more, and whole pages to the largest.
    const bool isRight = said >= sizeof(AKObject) && block >= said && (block < said + 32 || said > 64 * 1024);
    trial.Expect(isRight, "the instance and 8 bytes in front: " + std::to_string(said) + " bytes",
                 "a block of " + std::to_string(block));
  });
}

void Slots(Trial& trial) {
  Subject subject(trial);
  for (const ClassCalls& cls : subject.Classes()) {
    for (const unsigned int i : kKnownSlots) {
      const AKMethodSlot& slot = cls.Record().methods[i];
      if (slot.function == 0) continue;
      trial.Do("look at method slot " + std::to_string(i));
      const bool isVirtual = (slot.function & 1) != 0;
      const bool isOwn = isVirtual ? slot.function < 1024 * sizeof(void*)
                                   : subject.File().HasCode(reinterpret_cast<const void*>(slot.function));
      trial.Expect(isOwn, "a function of the bundle", "an address outside of its code");
      trial.Expect(slot.adjustment == 0, "no adjustment of the object's address",
                   "one of " + std::to_string(slot.adjustment));
    }
  }
}

void OtherSlots(Trial& trial) {
  static AKClassTable classes = *ClassTable();
  classes.classSetup = [](const AKClassInfo& info, unsigned int word, AKClass** out) {
    const int status = ClassTable()->classSetup(info, word, out);
    for (unsigned int i = 0; status == 0 && i < kAKMethodCount; ++i) {
      if (!IsKnown(i)) (*out)->methods[i] = kMark;
    }
    return status;
  };
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  record.classTable = &classes;
  Subject subject(trial, record);
  trial.Do("pluginMain with a host that has methods of its own in the class's slots");
  for (const ClassCalls& cls : subject.Classes()) {
    for (unsigned int i = 0; i < kAKMethodCount; ++i) {
      const bool isKept = IsKnown(i) || std::memcmp(&cls.Record().methods[i], &kMark, sizeof(kMark)) == 0;
      trial.Expect(isKept, "they stay", "slot " + std::to_string(i) + " was written");
    }
  }
}

void Pairs(Trial& trial) {
  static constexpr unsigned int kPairs[][2] = {{kAKMethodInitFromFile, kAKMethodWriteToFile},
                                               {kAKMethodSetObjectProperties, kAKMethodGetObjectProperties}};
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    for (const auto& pair : kPairs) {
      // What can only be asked, as fixed properties can, does no harm.
      if (pair[0] == kAKMethodSetObjectProperties && !cls.Has(pair[0])) continue;
      trial.Do("look at the slots " + std::to_string(pair[0]) + " and " + std::to_string(pair[1]));
      trial.Expect(cls.Has(pair[0]) == cls.Has(pair[1]), "both or none of them",
                   "slot " + std::to_string(pair[cls.Has(pair[0]) ? 1 : 0]) + " is empty");
    }
  });
}

void RecordKept(Trial& trial) {
  static std::vector<std::pair<AKClass*, std::string>> made;
  static AKClassTable classes = *ClassTable();
  classes.classSetup = [](const AKClassInfo& info, unsigned int word, AKClass** out) {
    const int status = ClassTable()->classSetup(info, word, out);
    if (status == 0) made.emplace_back(*out, std::string(reinterpret_cast<const char*>(*out), sizeof(AKClass)));
    return status;
  };
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  record.classTable = &classes;
  const Subject subject(trial, record);
  trial.Do("compare the class record before and after pluginMain");
  static constexpr std::size_t kRanges[][2] = {{0, offsetof(AKClass, names)},
                                               {offsetof(AKClass, instanceSize), offsetof(AKClass, methods)}};
  for (const auto& [cls, before] : made) {
    const char* now = reinterpret_cast<const char*>(cls);
    for (const auto& [begin, end] : kRanges) {
      for (std::size_t at = begin; at < end; ++at) {
        trial.Expect(now[at] == before[at], "only names, comments and slots are written",
                     "the byte at " + std::to_string(at) + " was changed");
      }
    }
  }
}

void NaturalBounds(Trial& trial) {
  ForEachClass(trial, {kAKMethodGetNaturalBounds}, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    trial.Do("akmGetNaturalBounds" + cls.Of());
    const auto bounds = CallSlot<AGRect>(cls.Record(), kAKMethodGetNaturalBounds, object.get());
    const bool isBox = std::isfinite(bounds.x0) && std::isfinite(bounds.y0) && std::isfinite(bounds.x1) &&
                       std::isfinite(bounds.y1) && bounds.x0 < bounds.x1 && bounds.y0 < bounds.y1;
    trial.Expect(isBox, "four numbers, the lower ones first",
                 "(" + std::to_string(bounds.x0) + ", " + std::to_string(bounds.y0) + ", " + std::to_string(bounds.x1) +
                     ", " + std::to_string(bounds.y1) + ")");
  });
}

void Header(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    const Instance object = cls.Construct();
    trial.Do("look at the header of a new instance");
    trial.Expect(_AKClassObjectGetHiddenClassPtr(object.get()) == &cls.Record(),
                 "the class record's address in front of it", "another address");
    trial.Expect(object->Class() == &cls.Record() && object->ClassID() == cls.Record().classID,
                 "the class record and its ID in the header", "others");
    trial.Expect(
        object->QCast() == cls.Record().instanceQCast && object->FurtherClassID() == cls.Record().furtherClassID,
        "quick-cast function and further class ID as the record has them", "others");
  });
}

}  // namespace

std::vector<Check> ClassChecks() {
  return {
      {"class-id", "Class IDs have 1 to 7 ASCII characters with zeros behind, as they stand in documents.", 1, &ID},
      {"class-name", "A class has a name, and one that users see.", 1, &Name},
      {"class-parent", "A class that draws is below \"_syVect\", or hosts don't take it for a drawn object.", 1,
       &Parent},
      {"class-size", "The size of an instance is that of the block that the constructor takes.", 1, &Size},
      {"class-slots", "Method slots hold functions of the bundle, without an adjustment.", 1, &Slots},
      {"class-other-slots", "Slots that have no number in the kit are the host's and stay as they are.", 1,
       &OtherSlots},
      {"class-pairs", "What can be written can be read, and what can be set can be asked.", 1, &Pairs},
      {"class-record-kept", "Of the class record a bundle writes the slots alone: the rest is the host's.", 1,
       &RecordKept},
      {"class-natural-bounds", "The natural bounds are a box, from which hosts take a new object's proportions.", 1,
       &NaturalBounds},
      {"class-header", "The constructor fills the header of an instance, by which hosts find its class.", 1, &Header},
  };
}

}  // namespace host::validator
