// Properties: asking and setting them.
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/tables/SlotCall.h"
#include "host/validator/Subject.h"
#include "host/validator/Values.h"
#include "kit/values/AKValueHelpers.h"

namespace host::validator {
namespace {

// Calls f with each class that has properties that can be set.
void ForEachSettable(Trial& trial, const std::function<void(const ClassCalls& cls)>& f) {
  ForEachClass(trial, {kAKMethodSetObjectProperties, kAKMethodGetObjectProperties}, f);
}

// Calls f with each property of each such class, and a new object for each.
void ForEachProperty(Trial& trial,
                     const std::function<void(const ClassCalls& cls, const Instance& object, const Entry& entry)>& f) {
  ForEachSettable(trial, [&](const ClassCalls& cls) {
    for (const Entry& entry : EntriesOf(cls.Get(cls.Make()))) f(cls, cls.Make(), entry);
  });
}

void ExpectState(Trial& trial, const ClassCalls& cls, const Instance& object, const State& wanted) {
  const State now = StateOf(cls, object);
  trial.Expect(now == wanted, TextOfState(wanted), TextOfState(now));
}

void Names(Trial& trial) {
  ForEachClass(trial, {kAKMethodGetObjectProperties}, [&](const ClassCalls& cls) {
    const AKDictionary properties = cls.Get(cls.Make());
    for (const Entry& entry : EntriesOf(properties)) {
      bool isName = !entry.key.IsEmpty();
      for (const char letter : std::string(entry.key.CStr())) {
        isName = isName && (std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_');
      }
      trial.Expect(isName && !entry.value.IsEmpty(), "names of letters, digits and underscores, with values",
                   "\"" + std::string(entry.key.CStr()) + "\"");
      for (const char* host : {"Bounds", "Angle", "Brush", "Pen", "ClassID"}) {
        trial.Expect(!(entry.key == host), "no name that is the host's", host);
      }
    }
  });
}

void Same(Trial& trial) {
  ForEachClass(trial, {kAKMethodGetObjectProperties}, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    const AKDictionary first = cls.Get(object);
    const AKDictionary second = cls.Get(object);
    trial.Expect(IsSame(first, second), "the same again: " + TextOfAll(first), TextOfAll(second));
  });
}

void OthersStay(Trial& trial) {
  ForEachClass(trial, {kAKMethodGetObjectProperties}, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    AKDictionary all;
    all.SetValue("Other", AKValueSetasFloat64(12));
    trial.Do("akmGetObjectProperties into a dictionary that has \"Other\" already" + cls.Of());
    CallSlot<int, AKDictionary*>(cls.Record(), kAKMethodGetObjectProperties, object.get(), &all);
    trial.Expect(AKValueGetasFloat64(all.GetValue("Other"), false) == 12, "\"Other\" is still there", TextOfAll(all));
  });
}

void RoundTrip(Trial& trial) {
  ForEachSettable(trial, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    const State before = StateOf(cls, object);
    const int status = cls.Set(object, before.properties);
    trial.Expect(status == 0, "status 0", StatusText(status));
    ExpectState(trial, cls, object, before);
  });
}

// Not as it was made, so that nothing goes back to that unseen.
void MakeOther(const ClassCalls& cls, const Instance& object) {
  AKDictionary others;
  for (const Entry& entry : EntriesOf(cls.Get(object))) {
    const std::vector<AKValue> values = OrdinaryValues(entry.value);
    if (!values.empty()) others.SetValue(entry.key, values.back());
  }
  cls.Set(object, others);
}

void OneByOne(Trial& trial) {
  ForEachProperty(trial, [&](const ClassCalls& cls, const Instance& object, const Entry& entry) {
    MakeOther(cls, object);
    const State before = StateOf(cls, object);
    cls.Set(object, entry.key, before.properties.GetValue(entry.key));
    ExpectState(trial, cls, object, before);
  });
}

// What came of a value is one that is taken as it is.
void Settles(Trial& trial) {
  ForEachProperty(trial, [&](const ClassCalls& cls, const Instance& object, const Entry& entry) {
    for (const AKValue& value : OrdinaryValues(entry.value)) {
      if (cls.Set(object, entry.key, value) != 0) continue;
      const AKDictionary taken = cls.Get(object);
      cls.Set(object, entry.key, taken.GetValue(entry.key));
      const AKDictionary again = cls.Get(object);
      trial.Expect(IsSame(taken, again), TextOfAll(taken), TextOfAll(again));
    }
  });
}

// The kind of a value stays.
void KeepsKind(Trial& trial) {
  ForEachProperty(trial, [&](const ClassCalls& cls, const Instance& object, const Entry& entry) {
    for (const AKValue& value : OrdinaryValues(entry.value)) {
      cls.Set(object, entry.key, value);
      trial.Expect(cls.Get(object).GetValue(entry.key).Type() == entry.value.Type(),
                   "a value of the same kind as before", TextOfAll(cls.Get(object)));
    }
  });
}

void Refused(Trial& trial) {
  ForEachProperty(trial, [&](const ClassCalls& cls, const Instance& object, const Entry& entry) {
    std::vector<AKValue> values = OrdinaryValues(entry.value);
    for (const auto& more : {ExtremeValues(entry.value), WrongValues(entry.value)}) {
      values.insert(values.end(), more.begin(), more.end());
    }
    for (const AKValue& value : values) {
      const State before = StateOf(cls, object);
      if (cls.Set(object, entry.key, value) != 0) ExpectState(trial, cls, object, before);
    }
  });
}

void Extremes(Trial& trial) {
  const AGBitmap bitmap(64, 64, AGBitmap::kFlagZeroFill);
  ForEachProperty(trial, [&](const ClassCalls& cls, const Instance& object, const Entry& entry) {
    for (const AKValue& value : ExtremeValues(entry.value)) {
      cls.Set(object, entry.key, value);
      StateOf(cls, object);
      AKDrawEvent event;
      event.bounds = {8, 8, 56, 56};
      cls.Draw(object, bitmap.GetContextOfBitmap(), event);
    }
  });
}

void WrongKinds(Trial& trial) {
  ForEachProperty(trial, [&](const ClassCalls& cls, const Instance& object, const Entry& entry) {
    const State before = StateOf(cls, object);
    for (const AKValue& value : WrongValues(entry.value)) {
      cls.Set(object, entry.key, value);
      ExpectState(trial, cls, object, before);
    }
  });
}

void UnknownKeys(Trial& trial) {
  ForEachSettable(trial, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    MakeOther(cls, object);
    const State before = StateOf(cls, object);
    AKDictionary unknown;
    cls.Set(object, unknown);
    ExpectState(trial, cls, object, before);
    unknown.SetValue("NoSuchProperty", AKValueSetasFloat64(0.75));
    cls.Set(object, unknown);
    ExpectState(trial, cls, object, before);
  });
}

void InputKept(Trial& trial) {
  ForEachProperty(trial, [&](const ClassCalls& cls, const Instance& object, const Entry& entry) {
    for (const AKValue& value : ExtremeValues(entry.value)) {
      AKDictionary given;
      given.SetValue(entry.key, value);
      given.SetValue("Other", AKValueSetasFloat64(1));
      const AKDictionary before = given;
      cls.Set(object, given);
      trial.Expect(IsSame(given, before), "the dictionary as it was given: " + TextOfAll(before), TextOfAll(given));
    }
  });
}

}  // namespace

std::vector<Check> PropertyChecks() {
  return {
      {"property-names", "Properties have names that scripts can use and that are not the host's.", 1, &Names},
      {"property-same", "Asked twice the properties are the same.", 1, &Same},
      {"property-others-stay", "What else stands in the dictionary stays: others have put it there.", 2, &OthersStay},
      {"property-roundtrip", "Setting what was asked changes nothing, as when an object is copied.", 1, &RoundTrip},
      {"property-one-by-one", "A property can be set alone: what is not given stays.", 2, &OneByOne},
      {"property-settles", "A value that became of another one is taken as it is.", 2, &Settles},
      {"property-kind", "A property keeps its kind: a number stays one.", 2, &KeepsKind},
      {"property-refused", "Where the status says no, nothing was taken.", 2, &Refused},
      {"property-extremes", "The largest numbers, NaN and the longest texts are borne.", 3, &Extremes},
      {"property-wrong-kinds", "Values that no such value can be made of change nothing.", 2, &WrongKinds},
      {"property-unknown", "Unknown properties and an empty dictionary change nothing.", 2, &UnknownKeys},
      {"property-input-kept", "The dictionary that is given is read only.", 2, &InputKept},
  };
}

}  // namespace host::validator
