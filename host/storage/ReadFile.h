// Files as bytes.
#pragma once

#include <string>

#include "host/text/Problem.h"

namespace host {

/// Puts the whole file into `*bytes`. Fails when it can't be read.
Result<> ReadWholeFile(const std::string& path, std::string* bytes);

}  // namespace host
