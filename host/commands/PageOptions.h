// The options --size and --background.
#pragma once

#include "graphics/values/AGColor.h"
#include "graphics/values/AGSize.h"
#include "host/commands/CommandLine.h"

namespace host {

/// Takes what is given; the rest stays. False, with one line in `*error`, when it makes no sense.
bool ParsePageOptions(CommandLine const& line, AGSize* size, AGColor* background, std::string* error);

}  // namespace host
