// The options --size and --background.
#pragma once

#include "host/commands/CommandLine.h"
#include "kit/geometry/AGColor.h"
#include "kit/geometry/AGSize.h"

namespace host {

/// Takes what is given; the rest stays. False, with one line in `*error`, when it makes no sense.
bool ParsePageOptions(const CommandLine& line, AGSize* size, AGColor* background, std::string* error);

}  // namespace host
