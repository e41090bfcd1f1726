// Objects that are dealt with as one: those of a group, or one that is in none.
#pragma once

#include "host/model/EditRules.h"

namespace host {

struct Unit {
  ObjectIDs objects;      ///< in drawing order
  std::size_t depth = 0;  ///< so many groups of its objects lie around it
};

/// The largest units that objects make up, the hindmost first. A group counts as whole when those of its objects that
/// are neither hidden nor locked are among them; the unit has the others, too. Groups that were entered do not count.
std::vector<Unit> UnitsOf(const Document& document, const ObjectIDs& ids, const std::vector<GroupID>& entered);

/// The units without what is not among the objects.
std::vector<ObjectIDs> PartsOf(const Document& document, const ObjectIDs& ids, const std::vector<GroupID>& entered);

/// The innermost group around a unit; kNoGroupID when it is in none.
GroupID GroupAround(const Document& document, const Unit& unit);

}  // namespace host
