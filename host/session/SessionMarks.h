// Hiding, locking and grouping of single objects.
#pragma once

#include "host/session/SessionSteps.h"

namespace host {

class SessionMarks {
 public:
  SessionMarks(Document& document, SessionSteps& steps, SessionSelection& selection)
      : document_(document), steps_(steps), selection_(selection) {}

  // Of objects of layers that are visible and not locked; others are refused.

  Result<> SetHidden(const ObjectIDs& ids, bool hidden);
  Result<> SetLocked(const ObjectIDs& ids, bool locked);
  /// The objects of such layers that are hidden, or locked.
  ObjectIDs Hidden() const;
  ObjectIDs Locked() const;

  /// Makes a group of two or more objects or groups, in front where the foremost of them is. What was part of groups
  /// that do not hold all of it leaves those.
  Result<> Group(const ObjectIDs& ids);
  /// Takes the outermost groups apart that lie wholly among the objects. Fails when there is none.
  Result<> Ungroup(const ObjectIDs& ids);

 private:
  template <typename Mark>
  Result<> MarkEach(const ObjectIDs& ids, const char* name, Mark mark);
  void SetMarks(ObjectID id, ObjectMarks marks);
  void Gather(const ObjectIDs& ordered, std::size_t depth);

  Document& document_;
  SessionSteps& steps_;
  SessionSelection& selection_;
};

}  // namespace host
