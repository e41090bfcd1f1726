// What is done with the bundle that examines the host: all that a host does with a bundle.
#pragma once

#include <string>

#include "host/validator/Trial.h"

namespace host {

struct TorturePlan;

/// Ends the process when what the host itself sees is not as it has to be: a document that undo does not bring back,
/// log lines that got lost. `report` is the file in which the bundle tells how many it logged.
void DriveTorture(validator::Trial& trial, const TorturePlan& plan, const std::string& report);

}  // namespace host
