// The options --size, --paper, --orientation and --background.
#pragma once

#include "host/commands/CommandLine.h"
#include "host/text/Problem.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGSize.h"

namespace host {

/// Takes what is given; the rest stays. Fails when it makes no sense.
Result<> ParsePageOptions(const CommandLine& line, AGSize* size, AGColor* background);

}  // namespace host
