// Objects do not know of each other.
#include <cstdlib>
#include <filesystem>

#include "host/validator/Controls.h"
#include "host/validator/Picture.h"
#include "host/validator/States.h"
#include "host/validator/Values.h"

namespace host::validator {
namespace {

constexpr int kRounds = 20;

// Something that changes the object or asks it.
void Disturb(Trial& trial, const ClassCalls& cls, const Instance& object, Dice* dice) {
  switch (dice->Below(5)) {
    case 0:
      for (const Entry& entry : EntriesOf(cls.Get(object))) {
        cls.Set(object, entry.key, RandomValue(entry.value, dice));
      }
      break;
    case 1: {
      const Picture picture(cls, object, DrawJob());
      break;
    }
    case 2:
      if (cls.Has(kAKMethodInitFromFile)) cls.Read(object, cls.Write(RandomObject(cls, dice)));
      break;
    case 3:
      if (cls.Panel() == nullptr) break;
      for (HostControl* control : UsableControls(*cls.Panel())) {
        Change(trial, cls, *cls.Panel(), object, control, RandomControlValue(*control, dice));
      }
      break;
    default:
      RandomObject(cls, dice);
  }
}

void ExpectUntouched(Trial& trial, const ClassCalls& cls, const Instance& object, const State& before) {
  const State now = StateOf(cls, object);
  trial.Expect(now == before, "the other object as it was: " + TextOfState(before), TextOfState(now));
}

// What is done to objects of `busyClass` changes none of `quietClass`.
void ExpectApart(Trial& trial, const ClassCalls& quietClass, const ClassCalls& busyClass) {
  for (std::size_t step = 0; step < kRounds; ++step) {
    if (!trial.Wants(step)) continue;
    Dice dice = trial.DiceOf(step);
    const Instance quiet = RandomObject(quietClass, &dice);
    const Instance busy = RandomObject(busyClass, &dice);
    const State before = StateOf(quietClass, quiet);
    for (int i = 0; i < 4; ++i) Disturb(trial, busyClass, busy, &dice);
    ExpectUntouched(trial, quietClass, quiet, before);
  }
}

void Instances(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) { ExpectApart(trial, cls, cls); });
}

void Pictures(Trial& trial) {
  ForEachClass(trial, {kAKMethodDraw}, [&](const ClassCalls& cls) {
    for (std::size_t step = 0; step < kRounds; ++step) {
      if (!trial.Wants(step)) continue;
      Dice dice = trial.DiceOf(step);
      const Instance quiet = RandomObject(cls, &dice);
      const Instance busy = RandomObject(cls, &dice);
      const Picture before(cls, quiet, DrawJob());
      Disturb(trial, cls, busy, &dice);
      const Picture between(cls, busy, DrawJob());
      const std::size_t others = Picture(cls, quiet, DrawJob()).CountOthers(before);
      trial.Expect(others == 0, "the picture of the other object as it was", std::to_string(others) + " pixels differ");
    }
  });
}

void Ends(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    for (const bool isFirst : {true, false}) {
      Instance first = cls.Make();
      Instance second = cls.Make();
      Instance& kept = isFirst ? second : first;
      const State before = StateOf(cls, kept);
      trial.Do("end another object of the class");
      (isFirst ? first : second).reset();
      ExpectUntouched(trial, cls, kept, before);
      const Picture picture(cls, kept, DrawJob());
      if (cls.Panel() != nullptr) Fill(trial, cls, *cls.Panel(), kept);
    }
  });
}

void ClassesApart(Trial& trial) {
  const auto* subject = new Subject(trial);  // stays as long as the process
  if (subject->Classes().size() < 2) trial.Skip("the bundle has one class");
  for (const ClassCalls& cls : subject->Classes()) {
    for (const ClassCalls& other : subject->Classes()) {
      if (&other != &cls) ExpectApart(trial, cls, other);
    }
  }
}

// A copy of the bundle's file under its name, in a folder of its own, gone with this.
class FileCopy {
 public:
  explicit FileCopy(Trial& trial) {
    std::string folder = (std::filesystem::temp_directory_path() / "copyXXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) trial.Skip("no copy of the file can be made");
    folder_ = folder;
    std::error_code error;
    std::filesystem::copy_file(trial.Bundle(), Path(trial), error);
    if (!error) return;
    Remove();
    trial.Skip("no copy of the file can be made");
  }
  FileCopy(const FileCopy&) = delete;
  FileCopy& operator=(const FileCopy&) = delete;
  ~FileCopy() { Remove(); }

  void Remove() const {
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
  }

  std::string Path(const Trial& trial) const { return folder_ / std::filesystem::path(trial.Bundle()).filename(); }

 private:
  std::filesystem::path folder_;
};

// The copy's classes have IDs of their own, as those of another bundle would.
AKClassID CopiedID(AKClassID id) {
  id.chars[0] = '~';
  return id;
}

const AKHostServiceRecord& ServicesOfCopy() {
  static AKClassTable classes = *ClassTable();
  static AKHostServiceRecord record = Host::Instance().ServiceRecord();
  classes.classSetup = [](const AKClassInfo& info, unsigned int word, AKClass** out) {
    AKClassInfo other = info;
    other.classID = CopiedID(info.classID);
    return ClassTable()->classSetup(other, word, out);
  };
  classes.getClassOfID = [](AKClassID id) {
    AKClass* const copied = ClassTable()->getClassOfID(CopiedID(id));
    return copied != nullptr ? copied : ClassTable()->getClassOfID(id);
  };
  record.classTable = &classes;
  return record;
}

void BundlesApart(Trial& trial) {
  const auto* subject = new Subject(trial);  // both stay as long as the process
  std::vector<Instance> quiet;
  std::vector<State> states;
  std::vector<Picture> pictures;
  for (const ClassCalls& cls : subject->Classes()) {
    quiet.push_back(cls.Make());
    states.push_back(StateOf(cls, quiet.back()));
    pictures.emplace_back(cls, quiet.back(), DrawJob());
  }
  const Subject* copy = nullptr;
  {
    const FileCopy file(trial);
    gBeforeCall = [&file] { file.Remove(); };  // it is loaded then, and nothing stays of it should it crash
    copy = new Subject(trial, ServicesOfCopy(), file.Path(trial));
    gBeforeCall = nullptr;
  }
  Dice dice = trial.DiceOf(0);
  for (const ClassCalls& cls : copy->Classes()) {
    for (int i = 0; i < kRounds; ++i) Disturb(trial, cls, RandomObject(cls, &dice), &dice);
  }
  for (std::size_t i = 0; i < quiet.size(); ++i) {
    const ClassCalls& cls = subject->Classes()[i];
    ExpectUntouched(trial, cls, quiet[i], states[i]);
    const std::size_t others = Picture(cls, quiet[i], DrawJob()).CountOthers(pictures[i]);
    trial.Do("load another copy of the bundle beside it, use that, and draw an object of the first one");
    trial.Expect(others == 0, "the picture as it was", std::to_string(others) + " pixels differ");
  }
}

}  // namespace

std::vector<Check> IsolationChecks() {
  return {
      {"isolate-objects", "What is done to an object changes no other one.", 2, &Instances},
      {"isolate-pictures", "What is done to an object does not change how another one is drawn.", 2, &Pictures},
      {"isolate-ends", "An object that ends takes nothing of another one with it.", 2, &Ends},
      {"isolate-classes", "Objects of two classes of a bundle do not change each other.", 2, &ClassesApart},
      {"isolate-bundles", "Another bundle beside it, even a copy of the same, changes nothing of its objects.", 3,
       &BundlesApart},
  };
}

}  // namespace host::validator
