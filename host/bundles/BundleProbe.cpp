#include "host/bundles/BundleProbe.h"

#include <cstdio>
#include <cstring>

#include "host/bundles/ProbeProcess.h"

namespace host {

bool ProbeBundle(const std::string& program, const std::string& bundle, std::chrono::milliseconds limit,
                 std::string* error) {
  const std::string name = "bundle \"" + bundle + "\"";
  const ProbeResult result = RunProbeProcess(program, bundle, limit);
  switch (result.end) {
    case ProbeResult::End::kPassed:
      return true;
    case ProbeResult::End::kRefused:
      *error = result.text;
      break;
    case ProbeResult::End::kExited:
      *error = name + " ends the program that loads it, with exit code " + std::to_string(result.number);
      break;
    case ProbeResult::End::kKilled:
      *error = name + " crashes: " + strsignal(result.number);
      break;
    case ProbeResult::End::kHung:
      *error =
          name + " hangs: it was not done after " + std::to_string(limit.count() / 1000.0).substr(0, 4) + " seconds";
      break;
    case ProbeResult::End::kNotStarted:
      *error = name + " can't be tried: " + std::strerror(result.number);
      break;
  }
  std::fputs(result.log.c_str(), stderr);
  return false;
}

}  // namespace host
