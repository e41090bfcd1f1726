// The scene of the demo command: rectangles over the whole range of curvatures, turned, translucent, and stroked with
// pens of several widths.
#pragma once

#include <memory>
#include <string>

#include "host/session/DocumentSession.h"
#include "host/text/Problem.h"

namespace host {

/// The scene, partly set through properties and partly through the inspector panel, as the two say on standard output.
/// Fails when the rectangle class is missing or does not behave.
Result<std::unique_ptr<DocumentSession>> MakeDemoScene();

}  // namespace host
