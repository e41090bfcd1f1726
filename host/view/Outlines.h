// Where the outlines of single objects lie that a view shows besides the frame of the selection.
#pragma once

#include <optional>
#include <vector>

#include "host/session/DocumentSession.h"

namespace host {

/// More selected objects than this have no outlines of their own: a frame would wait for them.
inline constexpr std::size_t kMostOutlined = 1000;

/// The turned bounds of each of several selected objects, where they are shown, that touch an area of the map.
std::vector<ObjectPlacement> SelectedOutlines(const DocumentSession& session, const AGRect& area);

/// The outlines of the object that the pointer is over and of its group; none when that is selected, and has the frame.
std::vector<ObjectPlacement> HoverOutlines(const DocumentSession& session, ObjectID object);

/// The box of the group that was entered last; none when none was.
std::optional<AGRect> EnteredBox(const DocumentSession& session);

}  // namespace host
