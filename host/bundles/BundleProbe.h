// Tries a bundle in a process of its own, so that one that crashes or hangs does not take the host with it.
#pragma once

#include <chrono>
#include <string>

#include "host/text/Problem.h"

namespace host {

inline constexpr std::chrono::seconds kProbeLimit{30};

/// Starts `program`, an objecthost, to load the bundle, make an object of each of its classes, draw it, write and read
/// it, and fill its panel. Fails when the bundle can't be used: it crashed, took longer than `limit`, or would not
/// load. The bundle's own output is dropped.
Result<> ProbeBundle(const std::string& program, const std::string& bundle, std::chrono::milliseconds limit);

/// What the process does. Returns its exit code, 0 for a bundle that can be used, and prints the reason otherwise.
int RunProbe(const std::string& bundle);

}  // namespace host
