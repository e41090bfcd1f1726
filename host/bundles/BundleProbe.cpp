#include "host/bundles/BundleProbe.h"

#include <cstdio>
#include <cstring>

#include "host/bundles/ProbeProcess.h"

namespace host {
namespace {

Problem ProblemOf(const ProbeResult& result, const std::string& bundle, std::chrono::milliseconds limit) {
  const std::string number = std::to_string(result.number);
  switch (result.end) {
    case ProbeResult::End::kRefused:
      return {N_("%s"), {Problem::Part(result.text, result.translated)}};
    case ProbeResult::End::kExited:
      return {N_("bundle \"%s\" ends the program that loads it, with exit code %s"), {bundle, number}};
    case ProbeResult::End::kKilled:
      return {N_("bundle \"%s\" crashes: %s"), {bundle, strsignal(result.number)}};
    case ProbeResult::End::kHung:
      return {N_("bundle \"%s\" hangs: it was not done after %s seconds"),
              {bundle, std::to_string(static_cast<double>(limit.count()) / 1000).substr(0, 4)}};
    default:
      return {N_("bundle \"%s\" can't be tried: %s"), {bundle, std::strerror(result.number)}};
  }
}

}  // namespace

Result<> ProbeBundle(const std::string& program, const std::string& bundle, std::chrono::milliseconds limit) {
  const ProbeResult result = RunProbeProcess(program, bundle, limit);
  if (result.end == ProbeResult::End::kPassed) return {};
  std::fputs(result.log.c_str(), stderr);
  return ProblemOf(result, bundle, limit);
}

}  // namespace host
