// Where the outlines of single objects lie that a view shows besides the frame of the selection.
#pragma once

#include <vector>

#include "host/session/DocumentSession.h"

namespace host {

/// More selected objects than this have no outlines of their own: a frame would wait for them.
inline constexpr std::size_t kMostOutlined = 1000;

/// The turned bounds of each of several selected objects, where they are shown, that touch an area of the map.
std::vector<ObjectPlacement> SelectedOutlines(const DocumentSession& session, const AGRect& area);

/// The outline of the object that the pointer is over; none when it is the only selected one, which has the frame.
std::vector<ObjectPlacement> HoverOutlines(const DocumentSession& session, ObjectID object);

}  // namespace host
