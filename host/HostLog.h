// Where log lines go: those of the host's own copy of the kit, and those of bundles.
//
// A bundle's line is printed behind its name ("objecthost: Star.so: ..."), whatever the host is doing: its author has
// to see it. The host's own lines are dropped while it does something whose failure it tells in words of its own.
#pragma once

#include <functional>
#include <string>

namespace host {

class HostLog {
 public:
  using Sink = std::function<void(const std::string& line)>;

  /// The process's log.
  static HostLog& Instance();

  HostLog(const HostLog&) = delete;
  HostLog& operator=(const HostLog&) = delete;

  /// Takes a line. `caller` is an address in the code that logs it, which tells whose line it is. Called on any thread
  /// that a bundle chooses to log from, one at a time.
  void Take(const char* line, const void* caller);

  /// Lines go here, as they came, instead of to standard error; null for standard error.
  Sink sink;

 private:
  friend class QuietLog;

  HostLog() = default;

  unsigned int quietCount_ = 0;
};

/// Keeps the host's own lines back while it lives.
class QuietLog {
 public:
  QuietLog() { ++HostLog::Instance().quietCount_; }
  QuietLog(const QuietLog&) = delete;
  QuietLog& operator=(const QuietLog&) = delete;
  ~QuietLog() { --HostLog::Instance().quietCount_; }
};

}  // namespace host
