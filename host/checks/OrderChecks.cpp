// Random sequences of everything that a host does with objects, against what is known of their states.
//
// An operation is made from numbers of its own, so that a sequence from which others are left out does the same with
// it.
#include <array>

#include "host/validator/Controls.h"
#include "host/validator/Picture.h"
#include "host/validator/States.h"
#include "host/validator/Values.h"

namespace host::validator {
namespace {

constexpr std::uint32_t kLength = 60;
constexpr std::size_t kObjects = 3;

/// An object, and the state that it was last left in.
struct Known {
  Instance object;
  State state;
};

class Sequence {
 public:
  Sequence(Trial& trial, const ClassCalls& cls, std::uint64_t step) : trial_(trial), cls_(cls), step_(step) {
    for (Known& known : objects_) Renew(&known, cls.Make());
  }

  void Run() {
    for (std::uint32_t i = 0; i < kLength; ++i) {
      if (!trial_.WantsOperation(i, kLength)) continue;
      Dice dice = trial_.DiceOf(step_ * kLength + i + 1);
      number_ = dice.Below(kObjects);
      Operate(&objects_[number_], &dice);
      ExpectAllAsKnown();
    }
  }

 private:
  using Operation = void (Sequence::*)(Known* known, Dice* dice);

  void Tell(const std::string& what) {
    operation_ = what + " (object " + std::to_string(number_) + ")";
    trial_.Tell(operation_);
  }

  void Renew(Known* known, Instance object) {
    known->object = std::move(object);
    known->state = StateOf(cls_, known->object);
  }

  void Operate(Known* known, Dice* dice) {
    static constexpr Operation kOperations[] = {
        &Sequence::Make,   &Sequence::Set,    &Sequence::Set,    &Sequence::Set,        &Sequence::Draw,
        &Sequence::Draw,   &Sequence::Copy,   &Sequence::Undo,   &Sequence::Fill,       &Sequence::Change,
        &Sequence::Change, &Sequence::Change, &Sequence::Reread, &Sequence::ReadDamaged};
    (this->*kOperations[dice->Below(std::size(kOperations))])(known, dice);
  }

  void ExpectAllAsKnown() {
    for (std::size_t i = 0; i < kObjects; ++i) {
      const State now = StateOf(cls_, objects_[i].object);
      trial_.Do(operation_);
      trial_.Expect(now == objects_[i].state, "object " + std::to_string(i) + ": " + TextOfState(objects_[i].state),
                    TextOfState(now));
    }
  }

  bool HasRecord() const { return cls_.Has(kAKMethodInitFromFile) && cls_.Has(kAKMethodWriteToFile); }

  // What is done to the object gives the same when it is done to another one in the same state, one that has no past.
  // An object that keeps more than its record has no such other one.
  void DoLikeTwin(Known* known, const std::function<void(const Instance& object)>& act) {
    const Instance twin = HasRecord() ? cls_.MakeFrom(known->state.record) : nullptr;
    const bool isTwin = twin != nullptr && StateOf(cls_, twin) == known->state;
    act(known->object);
    known->state = StateOf(cls_, known->object);
    if (!isTwin) return;
    act(twin);
    const State other = StateOf(cls_, twin);
    trial_.Do(operation_);
    trial_.Expect(known->state == other, "what becomes of another object in the same state: " + TextOfState(other),
                  TextOfState(known->state));
  }

  void Make(Known* known, Dice* dice) {
    const std::string arguments = dice->Below(2) == 0 ? "-default" : "";
    Tell("end it and make a new one, \"" + arguments + "\"");
    known->object.reset();
    Renew(known, cls_.Make(arguments));
  }

  void Set(Known* known, Dice* dice) {
    const std::vector<Entry> entries = EntriesOf(known->state.properties);
    if (entries.empty() || !cls_.Has(kAKMethodSetObjectProperties)) return;
    const Entry& entry = entries[dice->Below(entries.size())];
    AKDictionary properties;
    properties.SetValue(entry.key, RandomValue(entry.value, dice));
    Tell("set " + TextOfAll(properties));
    DoLikeTwin(known, [&](const Instance& object) { cls_.Set(object, properties); });
  }

  void Draw(Known* known, Dice* dice) {
    DrawJob job;
    job.angle = dice->Between(-3, 3);
    job.bounds.x1 += dice->Between(-40, 40);
    Tell("draw");
    const Picture picture(cls_, known->object, job);
  }

  // Into another place.
  void Copy(Known* known, Dice* dice) {
    if (!HasRecord()) return;
    Known& other = objects_[dice->Below(kObjects)];
    Tell("write it and read the record into a new one in place of object " + std::to_string(&other - objects_.data()));
    const Bytes record = cls_.Write(known->object);
    Instance copy = cls_.MakeFrom(record);
    const Bytes again = cls_.Write(copy);
    trial_.Do(operation_);
    trial_.Expect(again == record, TextOfBytes(record), TextOfBytes(again));
    Renew(&other, std::move(copy));
  }

  // A change and its end, as hosts undo it: a new object from the older record.
  void Undo(Known* known, Dice* dice) {
    if (!HasRecord()) return;
    const Bytes before = known->state.record;
    Set(known, dice);
    Tell("undo that by the older record");
    Renew(known, cls_.MakeFrom(before));
    trial_.Do(operation_);
    trial_.Expect(known->state.record == before, TextOfBytes(before), TextOfBytes(known->state.record));
  }

  void Reread(Known* known, Dice*) {
    if (!HasRecord()) return;
    Tell("read its own record into it");
    const Bytes record = known->state.record;
    const int status = cls_.Read(known->object, record);
    trial_.Expect(status == 0, "status 0", StatusText(status));
    known->state = StateOf(cls_, known->object);
    trial_.Do(operation_);
    trial_.Expect(known->state.record == record, TextOfBytes(record), TextOfBytes(known->state.record));
  }

  void ReadDamaged(Known* known, Dice* dice) {
    if (!HasRecord() || known->state.record.empty()) return;
    Bytes record = known->state.record.substr(0, dice->Below(known->state.record.size()));
    for (char& byte : record) byte = dice->Below(8) == 0 ? static_cast<char>(dice->Next()) : byte;
    Tell("read a damaged record into a new one, " + TextOfBytes(record));
    Instance object = cls_.Construct();
    if (cls_.Read(object, record) != 0) return;  // it is ended, as hosts do
    Renew(known, std::move(object));
  }

  void Fill(Known* known, Dice*) {
    if (cls_.Panel() == nullptr) return;
    Tell("fill the panel");
    validator::Fill(trial_, cls_, *cls_.Panel(), known->object);
  }

  void Change(Known* known, Dice* dice) {
    if (cls_.Panel() == nullptr) return;
    const std::vector<HostControl*> controls = UsableControls(*cls_.Panel());
    if (controls.empty()) return;
    HostControl* const control = controls[dice->Below(controls.size())];
    const ControlValue value = RandomControlValue(*control, dice);
    char number[40];
    std::snprintf(number, sizeof(number), "%.9g", value.number);
    Tell("change control " + std::to_string(control->ID()) + " to " + (value.text.empty() ? number : value.text));
    DoLikeTwin(known,
               [&](const Instance& object) { validator::Change(trial_, cls_, *cls_.Panel(), object, control, value); });
  }

  Trial& trial_;
  const ClassCalls& cls_;
  std::uint64_t step_;
  std::size_t number_ = 0;
  std::string operation_;
  std::array<Known, kObjects> objects_;
};

// At level 10 there are 10,000 operations and a few more.
void Random(Trial& trial) {
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    for (std::size_t step = 0; step < trial.Cases(42); ++step) {
      if (!trial.Wants(step)) continue;
      Sequence(trial, cls, step).Run();
    }
  });
}

}  // namespace

std::vector<Check> OrderChecks() {
  return {
      {"order-random", "Whatever is done in whatever order, an object does as any other in its state would.", 3,
       &Random, Check::Kind::kSequence},
  };
}

}  // namespace host::validator
