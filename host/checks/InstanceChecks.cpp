// Making and ending instances.
#include <malloc.h>

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <set>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/validator/Heap.h"
#include "host/validator/Subject.h"

namespace host::validator {
namespace {

constexpr int kMany = 1000;

// What a host does next with an object, however it was made.
void Use(const ClassCalls& cls, const Instance& object) {
  StateOf(cls, object);
  const AGBitmap bitmap(64, 64, AGBitmap::kFlagZeroFill);
  AKDrawEvent event;
  event.bounds = {8, 8, 56, 56};
  cls.Draw(object, bitmap.GetContextOfBitmap(), event);
}

void Many(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    std::vector<Instance> all;
    std::set<const AKObject*> addresses;
    Dice dice = trial.DiceOf(0);
    for (int i = 0; i < kMany; ++i) {
      all.push_back(cls.Make());
      trial.Expect(addresses.insert(all.back().get()).second, "an instance of its own", "one that is there already");
    }
    while (!all.empty()) {
      std::swap(all[dice.Below(all.size())], all.back());
      trial.Do("end one of " + std::to_string(all.size()) + " instances");
      all.pop_back();
    }
    Use(cls, cls.Make());
  });
}

void LeavesHeap(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    HeapWatch heap(trial);
    for (int i = 0; i < kMany; ++i) {
      StateOf(cls, cls.Make());
      heap.Note(i, kMany);
    }
    heap.ExpectFlat("making, asking, writing and ending an object");
  });
}

void WithoutArguments(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    Use(cls, cls.Make(""));
    Use(cls, cls.Make("-default"));
  });
}

void ExpectBears(const ClassCalls& cls, const std::string& arguments) {
  int status = 0;
  if (const Instance object = cls.Make(arguments, &status)) Use(cls, object);
}

// The names of the properties are likely to be names of arguments.
std::vector<std::string> ArgumentNames(const ClassCalls& cls) {
  std::vector<std::string> names = {"default", "size", "count", "value", "id"};
  const AKDictionary properties = cls.Get(cls.Make());
  for (AKDictionary::Cursor cursor(properties); cursor.IsValid(); cursor.Next()) {
    std::string name = cursor.Key().CStr();
    names.push_back(name);
    for (char& letter : name) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    names.push_back(name);
  }
  return names;
}

const std::vector<std::string>& ArgumentValues() {
  static const std::vector<std::string> values = {
      "",     "0",     "1",    "-1",    "0.5", "1e308",   "-1e308", "nan",   "inf",  "99999999999999999999",
      "abc",  "(1;2)", "(;",   "\"",    "\"a", "\"a b\"", "%s%n%d", ":",     "-",    "1,2,3",
      "\xC4", "0x10",  "1e-9", "+7 -8", "()",  "\\",      "\\\"",   "1:2:3", "true", std::string(70000, '9')};
  return values;
}

void Arguments(Trial& trial) {
  ForEachClass(trial, {kAKMethodInitWithArgs}, [&](const ClassCalls& cls) {
    for (const char* text : {" ", "-", "--", "-:", ":", "default", "-default -default", "-default:", "\"-default",
                             "-unknown", "-unknown:1 -default", "\t-default\n"}) {
      ExpectBears(cls, text);
    }
    for (const std::string& name : ArgumentNames(cls)) {
      std::string text = "-";
      text += name;
      ExpectBears(cls, text);
      text += ':';
      for (const std::string& value : ArgumentValues()) ExpectBears(cls, std::string(text).append(value));
    }
  });
}

void RandomArguments(Trial& trial) {
  ForEachClass(trial, {kAKMethodInitWithArgs}, [&](const ClassCalls& cls) {
    const std::vector<std::string> names = ArgumentNames(cls);
    for (std::size_t step = 0; step < trial.Cases(200); ++step) {
      if (!trial.Wants(step)) continue;
      Dice dice = trial.DiceOf(step);
      std::string text;
      for (std::size_t i = dice.Below(24); i > 0; --i) {
        text += " -";
        text += names[dice.Below(names.size())];
        if (dice.Below(4) != 0) text += ":" + ArgumentValues()[dice.Below(ArgumentValues().size())].substr(0, 40);
        if (dice.Below(5) == 0) text += static_cast<char>(1 + dice.Below(255));
      }
      ExpectBears(cls, text);
    }
  });
}

void DestroysNull(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    trial.Do("the class destructor with null");
    cls.Record().destructor(nullptr);
  });
}

void EndsUnfinished(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    Instance object = cls.Construct();
    trial.Do("akmDelete and the class destructor" + cls.Of() + " that was only constructed");
    object.reset();
    if (!cls.Has(kAKMethodInitFromFile)) return;
    object = cls.Construct();
    cls.Read(object, "");
    trial.Do("akmDelete and the class destructor" + cls.Of() + " that has read an empty record");
    object.reset();
  });
}

// The allocator rounds up: what lies between the end of the instance and that of its block is nobody's and zero.
void WithinBlock(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    Use(cls, object);
    if (cls.Panel() != nullptr) cls.Send(object, AKGUIEvent::kFillControls, 0);
    const char* const block = reinterpret_cast<const char*>(object.get()) - sizeof(void*);
    const std::size_t whole = malloc_usable_size(const_cast<char*>(block));
    trial.Do("look at the bytes behind the instance" + cls.Of());
    for (std::size_t at = cls.Record().instanceSize + sizeof(void*); at < whole; ++at) {
      trial.Expect(block[at] == 0, "nothing is written there",
                   "the byte " + std::to_string(at - sizeof(void*)) + " of an instance of " +
                       std::to_string(cls.Record().instanceSize) + " bytes was written");
    }
  });
}

// Blocks of all small sizes that were full of a byte when they were given back: the next ones taken are these.
void Soil(int byte) {
  constexpr std::size_t kLargest = 2048;
  constexpr int kEach = 8;
  std::vector<void*> blocks;
  for (std::size_t size = 16; size <= kLargest; size += 16) {
    for (int i = 0; i < kEach; ++i) {
      blocks.push_back(std::malloc(size));
      if (blocks.back() != nullptr) std::memset(blocks.back(), byte, size);
    }
  }
  for (void* block : blocks) std::free(block);
}

void InitsAll(Trial& trial) {
  if (HasSanitizer()) trial.Skip("a sanitizer's allocator fills memory itself");
  static std::vector<State> states;
  Subject subject(trial);
  for (const ClassCalls& cls : subject.Classes()) {
    states.clear();
    for (const int byte : {0x00, 0x5A, 0xFF}) {
      Soil(byte);
      const Instance object = cls.Make();
      states.push_back(StateOf(cls, object));
    }
    trial.Do("make an object" + cls.Of() + " in memory filled with other bytes, and write it");
    for (const State& state : states) {
      trial.Expect(state == states[0], TextOfState(states[0]), TextOfState(state));
    }
  }
}

}  // namespace

std::vector<Check> InstanceChecks() {
  return {
      {"make-many", "A thousand instances live beside each other and end in any order.", 2, &Many},
      {"make-heap", "Ended objects leave no memory taken, or a long session runs out of it.", 3, &LeavesHeap},
      {"make-plain", "An object is made with no arguments and with \"-default\", as hosts do.", 1, &WithoutArguments},
      {"make-arguments", "Arguments of every form are borne: a user types them.", 3, &Arguments},
      {"make-random-arguments", "Random arguments are borne.", 4, &RandomArguments},
      {"make-within-block", "An object writes within its own memory; what lies behind belongs to others.", 2,
       &WithinBlock},
      {"make-initialised", "Nothing of an object depends on what stood in its memory before.", 3, &InitsAll},
      {"delete-null", "The class destructor ignores null.", 1, &DestroysNull},
      {"delete-unfinished", "An object can be ended that was never initialised, as after a record that can't be read.",
       2, &EndsUnfinished},
  };
}

}  // namespace host::validator
