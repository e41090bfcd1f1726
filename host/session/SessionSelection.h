// What is selected in a session, and what lies where. Only objects that are visible and unlocked, as their layers are,
// can be selected; others are passed over.
#pragma once

#include <optional>

#include "host/model/EditRules.h"
#include "host/session/Selection.h"
#include "host/session/SessionObservers.h"

namespace host {

/// Which objects a rubber band takes: those whose turned bounds lie within it, or all that it touches.
enum class Band { kWithin, kTouched };

/// What objects have in common: what they are filled with, what they are outlined with, their class.
enum class Likeness { kFill, kStroke, kClass };

class SessionSelection {
 public:
  SessionSelection(Document& document, SessionObservers& observers) : document_(document), observers_(observers) {}

  const ObjectIDs& IDs() const { return selection_.IDs(); }
  bool IsEmpty() const { return selection_.IsEmpty(); }
  std::size_t Count() const { return selection_.Count(); }
  bool Contains(ObjectID id) const { return selection_.Contains(id); }

  void Select(const ObjectIDs& ids);
  void Add(const ObjectIDs& ids);
  /// Adds the objects, or takes them away when the first is selected.
  void Toggle(const ObjectIDs& ids);
  /// All that can be selected, of a group that was entered.
  void SelectAll();
  void SelectNone();
  /// Forgets what can't be selected any more.
  void Prune();

  // Groups. For who points at things, a group is one thing, until it is entered: then what lies directly in it are.

  /// The groups that were entered, the outermost first.
  const std::vector<GroupID>& Entered() const { return entered_; }
  /// Enters the next group around an object that can be selected, and selects what is there. False when there is none.
  bool Enter(ObjectID id);
  /// Leaves the group that was entered last, and selects it. False when none was.
  bool Leave();
  /// Leaves the groups that an object is not in.
  void LeaveFor(ObjectID id);
  /// All that is taken with an object that a pointer is on, in drawing order.
  ObjectIDs UnitOf(ObjectID id) const;
  bool IsWithinEntered(const DocumentObject& object) const;

  bool IsEditable(ObjectID id) const;
  /// The foremost object that can be selected and shows ink within `tolerance` of the point; kNoObjectID for none.
  ObjectID ObjectAt(const AGPoint& point, double tolerance) const;
  /// The next one behind the foremost selected one that is there, which is how repeated clicks come through a stack;
  /// the foremost one where there is no further, or where none is selected. `*fromSelected` tells whether one is.
  ObjectID ObjectBelow(const AGPoint& point, double tolerance, bool* fromSelected) const;
  /// Those that a rubber band takes, in drawing order.
  ObjectIDs ObjectsIn(const AGRect& band, Band rule) const;
  /// The same for who deals with groups: those of which each object is taken, or any, as the rule has it.
  ObjectIDs InBand(const AGRect& band, Band rule) const;
  /// Those that can be selected and are like an object, itself among them, in drawing order. Of a placeholder, those of
  /// its class alone.
  ObjectIDs Alike(ObjectID id, Likeness likeness) const;
  /// The box of the objects' turned bounds; false for none.
  bool GetBox(const ObjectIDs& ids, AGRect* box) const;

  // A drag of many objects changes the document at its end; until then it only shows them moved.

  /// By how much, in map units; none when they are shown where they are. Another selection is shown where it is.
  const std::optional<AGPoint>& Shift() const { return shift_; }
  void SetShift(const std::optional<AGPoint>& shift);
  /// The box of the selected objects where they are shown; false for none.
  bool GetShownBox(AGRect* box) const;

 private:
  void SelectionChanged();
  template <typename Test>
  const DocumentObject* FindFrontIn(const AGRect& area, Test test) const;

  Document& document_;
  SessionObservers& observers_;
  Selection selection_;
  std::vector<GroupID> entered_;
  std::optional<AGPoint> shift_;
  // The box of the selected objects in the document of that version; of none, it is to be found anew.
  mutable std::optional<std::uint64_t> boxVersion_;
  mutable AGRect box_;
};

}  // namespace host
