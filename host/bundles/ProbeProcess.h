// The process that tries a bundle, seen from the host that starts it.
#pragma once

#include <chrono>
#include <string>

#include "host/text/Problem.h"

namespace host {

/// What became of it.
struct ProbeResult {
  enum class End {
    kPassed,      ///< it came to its end and said so
    kRefused,     ///< it said why not: `text`
    kExited,      ///< it ended without its last word, with exit code `number`
    kKilled,      ///< by the signal `number`
    kHung,        ///< it was not done in time
    kNotStarted,  ///< `number` is an errno
  };
  End end = End::kNotStarted;
  int number = 0;
  std::string text;        ///< one line
  std::string translated;  ///< the same in the user's language
  std::string log;         ///< what the bundle logged meanwhile, its last lines
};

/// Runs `program --probe BUNDLE` and waits for it. Whatever the bundle does, it ends by `limit`, with all that it
/// started in its process group; nothing of what it holds open is waited for.
ProbeResult RunProbeProcess(const std::string& program, const std::string& bundle, std::chrono::milliseconds limit);

/// In the process itself: the file to which the verdict goes, and the limits that keep the process from outliving its
/// host or eating the machine.
class ProbeReport {
 public:
  ProbeReport();

  /// Log lines of the bundle, kept for the host.
  void Log(const std::string& line) const;
  /// The last word.
  void Pass() const;
  void Refuse(const Problem& problem) const;

 private:
  void Send(char kind, const std::string& line) const;
};

}  // namespace host
