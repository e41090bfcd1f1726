// A panel in use: filled from an object, and changed by a user.
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/validator/Controls.h"
#include "host/validator/States.h"
#include "host/validator/Values.h"

namespace host::validator {
namespace {

using Shown = std::vector<std::string>;

void ExpectShown(Trial& trial, const HostPanel& panel, const Shown& wanted, const Shown& seen) {
  trial.Expect(wanted == seen, TextOfShown(panel, wanted), TextOfShown(panel, seen));
}

// Calls f with each control of each panel that can be changed, each usual value of it, and a new object.
void ForEachChange(Trial& trial,
                   const std::function<void(const ClassCalls& cls, HostPanel& panel, const Instance& object,
                                            HostControl* control, const ControlValue& value)>& f) {
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel& panel) {
    for (HostControl* control : UsableControls(panel)) {
      for (const ControlValue& value : UsualValues(*control)) f(cls, panel, cls.Make(), control, value);
    }
  });
}

void Fills(Trial& trial) {
  static const ControlValue kMarks[] = {{1, "mark", AGColor(1, 2, 3, 4)}, {0, "sign", AGColor(5, 6, 7, 8)}};
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel& panel) {
    const Instance object = cls.Make();
    Shown filled[2];
    for (int i = 0; i < 2; ++i) {
      for (HostControl* control : UsableControls(panel)) Give(control, kMarks[i]);
      filled[i] = Fill(trial, cls, panel, object);
    }
    trial.Expect(filled[0] == filled[1], "each control is filled, whatever it showed before",
                 TextOfShown(panel, filled[0]) + "; then " + TextOfShown(panel, filled[1]));
  });
}

void FillKeeps(Trial& trial) {
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel&) {
    const Instance object = cls.Make();
    const State before = StateOf(cls, object);
    AKString name;
    cls.Send(object, AKGUIEvent::kFillControls, 0, &name);
    const State after = StateOf(cls, object);
    trial.Expect(before == after, "the object as it was: " + TextOfState(before), TextOfState(after));
    trial.Expect(name.IsEmpty(), "no name of a change", "\"" + std::string(name.CStr()) + "\"");
  });
}

void Changes(Trial& trial) {
  ForEachChange(trial, [&](const ClassCalls& cls, HostPanel& panel, const Instance& object, HostControl* control,
                           const ControlValue& value) {
    const int status = Change(trial, cls, panel, object, control, value);
    trial.Expect(status == 0, "status 0", StatusText(status));
    StateOf(cls, object);
  });
}

void Shows(Trial& trial) {
  ForEachChange(trial, [&](const ClassCalls& cls, HostPanel& panel, const Instance& object, HostControl* control,
                           const ControlValue& value) {
    Change(trial, cls, panel, object, control, value);
    const Shown shown = ShownIn(panel);
    const Shown filled = Fill(trial, cls, panel, object);
    trial.Do("change control " + std::to_string(control->ID()) + ", then fill the panel again" + cls.Of());
    ExpectShown(trial, panel, filled, shown);
  });
}

// Also of values that lie out of the range.
void Settles(Trial& trial) {
  ForEachChange(trial, [&](const ClassCalls& cls, HostPanel& panel, const Instance& object, HostControl* control,
                           const ControlValue& value) {
    Change(trial, cls, panel, object, control, value);
    const Shown first = Fill(trial, cls, panel, object);
    cls.Send(object, AKGUIEvent::kControlChanged, control->ID());
    const Shown second = Fill(trial, cls, panel, object);
    trial.Do("tell of a change of control " + std::to_string(control->ID()) + " that shows what it was filled with" +
             cls.Of());
    ExpectShown(trial, panel, first, second);
  });
}

void Absurd(Trial& trial) {
  const AGBitmap bitmap(64, 64, AGBitmap::kFlagZeroFill);
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel& panel) {
    for (HostControl* control : UsableControls(panel)) {
      for (const ControlValue& value : AbsurdValues()) {
        const Instance object = cls.Make();
        Change(trial, cls, panel, object, control, value);
        StateOf(cls, object);
        AKDrawEvent event;
        event.bounds = {8, 8, 56, 56};
        cls.Draw(object, bitmap.GetContextOfBitmap(), event);
        Fill(trial, cls, panel, object);
      }
    }
  });
}

void ExpectNoEffect(Trial& trial, const ClassCalls& cls, HostPanel& panel, unsigned int kind, unsigned int control) {
  const Instance object = cls.Make();
  for (HostControl* usable : UsableControls(panel)) {
    Change(trial, cls, panel, object, usable, UsualValues(*usable).back());
  }
  Fill(trial, cls, panel, object);
  const State before = StateOf(cls, object);
  AKString name;
  const int status = cls.Send(object, kind, control, &name);
  trial.Expect(status == 0, "status 0", StatusText(status));
  trial.Expect(name.IsEmpty(), "no name of a change", "\"" + std::string(name.CStr()) + "\"");
  const State after = StateOf(cls, object);
  trial.Do("an event of kind " + std::to_string(kind) + " for control " + std::to_string(control) + cls.Of());
  trial.Expect(before == after, "the object as it was: " + TextOfState(before), TextOfState(after));
}

void UnknownControls(Trial& trial) {
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel& panel) {
    for (const unsigned int id : {999U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      if (panel.GetController(id) == nullptr) ExpectNoEffect(trial, cls, panel, AKGUIEvent::kControlChanged, id);
    }
  });
}

void UnknownEvents(Trial& trial) {
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel& panel) {
    const std::vector<HostControl*> usable = UsableControls(panel);
    for (const unsigned int kind : {0U, HostPanel::kEventIdle, 4U, 77U, 0xFFFFFFFFU}) {
      ExpectNoEffect(trial, cls, panel, kind, usable.empty() ? 0 : usable[0]->ID());
    }
  });
}

bool sIsNamed = false;

// Stands for the host's handlers: a change may be named through one of them too.
struct NamedHandler {
  void SetActionName(const AKString& name) { sIsNamed = sIsNamed || !name.IsEmpty(); }
};

void Names(Trial& trial) {
  static AKHostServiceRecord record = Host::Instance().ServiceRecord();
  static AKHandlerTable handlers = *HandlerTable();
  handlers.setActionName.Set<NamedHandler>(&NamedHandler::SetActionName);
  record.handlerTable = &handlers;
  gServices = &record;
  ForEachChange(trial, [&](const ClassCalls& cls, HostPanel& panel, const Instance& object, HostControl* control,
                           const ControlValue& value) {
    const State before = StateOf(cls, object);
    AKString name;
    sIsNamed = false;
    Change(trial, cls, panel, object, control, value, &name);
    const State after = StateOf(cls, object);
    trial.Do("change control " + std::to_string(control->ID()) + cls.Of());
    trial.Expect(before == after || sIsNamed || !name.IsEmpty(), "the name of the change in the event", "no name");
  });
}

// Two objects that write the same record show the same.
void ExpectSameShown(Trial& trial, const ClassCalls& cls, HostPanel& panel, const Instance& object, const char* what) {
  const Bytes record = cls.Write(object);
  const Instance copy = cls.MakeFrom(record);
  if (cls.Write(copy) != record) return;
  const Shown own = Fill(trial, cls, panel, object);
  const Shown other = Fill(trial, cls, panel, copy);
  trial.Do(std::string(what) + ", fill the panel, and fill it from another object that has read its record" + cls.Of());
  ExpectShown(trial, panel, other, own);
}

void AfterProperty(Trial& trial) {
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel& panel) {
    if (!cls.Has(kAKMethodInitFromFile) || !cls.Has(kAKMethodWriteToFile)) return;
    for (const Entry& entry : EntriesOf(cls.Get(cls.Make()))) {
      for (const AKValue& value : OrdinaryValues(entry.value)) {
        const Instance object = cls.Make();
        Fill(trial, cls, panel, object);
        cls.Set(object, entry.key, value);
        ExpectSameShown(trial, cls, panel, object, "set a property");
      }
    }
  });
}

void PropertyAfter(Trial& trial) {
  ForEachChange(trial, [&](const ClassCalls& cls, HostPanel& panel, const Instance& object, HostControl* control,
                           const ControlValue& value) {
    if (!cls.Has(kAKMethodInitFromFile) || !cls.Has(kAKMethodSetObjectProperties)) return;
    Change(trial, cls, panel, object, control, value);
    const Bytes record = cls.Write(object);
    const Instance copy = cls.MakeFrom(record);
    if (cls.Write(copy) != record) return;
    // What the record leaves out of a number is left out of the other's properties too.
    const AKDictionary own = cls.Get(cls.MakeFrom(record));
    const Instance set = cls.Make();
    cls.Set(set, cls.Get(object));
    const AKDictionary other = cls.Get(cls.MakeFrom(cls.Write(set)));
    trial.Do("change control " + std::to_string(control->ID()) + " and ask the properties" + cls.Of());
    trial.Expect(IsSame(own, other), "the properties of the changed object: " + TextOfAll(own), TextOfAll(other));
  });
}

void SeveralObjects(Trial& trial) {
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel& panel) {
    if (!panel.AllowsMultipleSelection()) return;
    for (HostControl* control : UsableControls(panel)) {
      for (const ControlValue& value : UsualValues(*control)) {
        const Instance first = cls.Make("");
        const Instance second = cls.Make("-default");
        const Instance alone = cls.Make("-default");
        Change(trial, cls, panel, alone, control, value);
        const State wanted = StateOf(cls, alone);
        // As the host does: both are told, one after the other, of what the user gave.
        Change(trial, cls, panel, first, control, value);
        Give(control, value);
        cls.Send(second, AKGUIEvent::kControlChanged, control->ID());
        const State seen = StateOf(cls, second);
        trial.Do("change control " + std::to_string(control->ID()) + " of two selected objects" + cls.Of());
        trial.Expect(seen == wanted, "the second one as if it were alone: " + TextOfState(wanted), TextOfState(seen));
      }
    }
  });
}

}  // namespace

std::vector<Check> PanelUseChecks() {
  return {
      {"panel-fills", "Each control is filled, or it shows what another object had.", 1, &Fills},
      {"panel-fill-keeps", "Filling changes nothing of the object and names no change.", 1, &FillKeeps},
      {"panel-changes", "Each control can be changed, to the least, the most and between.", 1, &Changes},
      {"panel-shows", "After a change all controls show what became of it.", 2, &Shows},
      {"panel-settles", "What a control was filled with can be given back to it.", 2, &Settles},
      {"panel-absurd", "Values that no user can give are borne, since scripts can.", 2, &Absurd},
      {"panel-unknown-control", "A change of an unknown control changes nothing.", 1, &UnknownControls},
      {"panel-unknown-event", "Events of other kinds change nothing: hosts have kinds of their own.", 1,
       &UnknownEvents},
      {"panel-names", "A change has a name, which the user reads in the undo menu.", 1, &Names},
      {"panel-after-property", "A property that was set is shown.", 2, &AfterProperty},
      {"panel-before-property", "What a control changed stands in the properties.", 2, &PropertyAfter},
      {"panel-several-objects", "With several selected objects each takes the change.", 2, &SeveralObjects},
  };
}

}  // namespace host::validator
