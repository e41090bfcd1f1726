// Runs one check in a process of its own, with limits of time and memory: whatever the bundle does there ends there.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/validator/Trial.h"

namespace host::validator {

struct Outcome {
  enum class End {
    kPassed,
    kFailed,      ///< it found what it says in `expected` and `seen`
    kSkipped,     ///< for the reason in `seen`
    kExited,      ///< the bundle ended the process, with exit code `number`
    kKilled,      ///< by the signal `number`
    kHung,        ///< it was not done in time
    kNotStarted,  ///< `number` is an errno
  };

  End end = End::kNotStarted;
  int number = 0;
  std::string doing;
  std::string expected;
  std::string seen;
  std::string history;  ///< the operations of a sequence, a line each
  std::string output;   ///< what the process printed and logged last
  std::vector<std::string> calls;
  std::optional<std::uint64_t> step;
  std::uint32_t operations = 0;  ///< of the sequence that ran last
  std::uint32_t operation = 0;   ///< the one of them that ran last
  double seconds = 0;

  bool IsFailure() const { return end != End::kPassed && end != End::kSkipped; }
};

/// Waits for it.
Outcome RunTrial(const Check& check, const TrialPlan& plan);

}  // namespace host::validator
