// How objects are shown beyond what their classes know of: opacity, mirrored, in dashes.
//
// Placeholders are faint as others are, but not mirrored, since they can't be moved.
#pragma once

#include <vector>

#include "host/session/SessionArrangement.h"

namespace host {

class SessionLooks {
 public:
  SessionLooks(Document& document, SessionSteps& steps, SessionSelection& selection)
      : document_(document), steps_(steps), selection_(selection) {}

  /// 0 to 1; others are refused.
  Result<> SetOpacity(const ObjectIDs& ids, double opacity);
  /// As ObjectLook has them; none for lines without gaps.
  Result<> SetDashes(const ObjectIDs& ids, const std::vector<double>& dashes);
  /// Mirrors the objects together about the middle of their box: kHorizontal exchanges left and right.
  Result<> Flip(const ObjectIDs& ids, Axis axis);

 private:
  template <typename Change>
  Result<> ChangeEach(const ObjectIDs& ids, const char* name, Change change);
  void SetLook(ObjectID id, ObjectLook look);

  Document& document_;
  SessionSteps& steps_;
  SessionSelection& selection_;
};

}  // namespace host
