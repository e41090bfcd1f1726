// A host held against what its tables promise: HostTorture.so, a bundle that examines whoever loads it, driven through
// all that a host does with a bundle, in a process of its own.
#pragma once

#include <string>

#include "host/Host.h"
#include "host/text/Problem.h"
#include "host/validator/TrialProcess.h"

namespace host {

struct TorturePlan {
  std::string bundle;                                               ///< HostTorture.so
  AKHostServiceRecord services = Host::Instance().ServiceRecord();  ///< what it is given
  double seconds = 120;                                             ///< the limit
  bool huge = false;                                                ///< gigabytes too
  bool endsEarly = false;                                           ///< with the first finding
};

struct TortureResult {
  validator::Outcome outcome;  ///< of the process; what the host itself saw going wrong is its failure
  std::string text;            ///< the bundle's report; empty when it wrote none
  std::string json;            ///< the same as JSON
  unsigned long findings = 0;  ///< of the report
  bool isComplete = false;     ///< every entry and every moment was reached

  /// Nothing was found, everything was reached, and the process came to its end.
  bool IsPassed() const;
};

/// A number of the report: "findings", "logLines"; 0 when it is not there.
unsigned long NumberIn(const std::string& json, const std::string& key);

/// The bundle that comes with the program.
std::string TortureBundle();

/// Waits for it. Fails when it can't be run.
Result<TortureResult> Torture(const TorturePlan& plan);

}  // namespace host
