// The program's version.
#pragma once

namespace host {

/// "0.1.0", for example: the version of the whole project.
extern const char* const kVersion;

}  // namespace host
