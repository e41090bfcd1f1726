// The lines of a script as they come: from a file, or typed or sent by another program with pauses between them.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace host {

class ScriptReader {
 public:
  /// What is to be done in a pause, and how long until then (the largest duration for never).
  struct Idle {
    std::function<std::chrono::duration<double>()> until;
    std::function<void()> work;
  };

  /// Reads from a descriptor, which stays the caller's.
  ScriptReader(int file, Idle idle) : file_(file), idle_(std::move(idle)) {}

  /// The next line without its end. False at the end, when reading failed (Error), and when EndSignals caught one.
  bool Next(std::string* line);
  /// An errno, or 0.
  int Error() const { return error_; }

 private:
  bool Wait() const;
  bool ReadMore();

  int file_;
  Idle idle_;
  std::string bytes_;
  std::size_t start_ = 0;  // of what was not handed out
  int error_ = 0;
};

}  // namespace host
