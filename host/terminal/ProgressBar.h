// A progress bar on standard error, when that is a terminal: shown once the work has taken half a second.
#pragma once

#include <chrono>
#include <string>

#include "host/pictures/Progress.h"

namespace host {

class ProgressBar final : public Progress {
 public:
  /// `what` is one word for the work.
  explicit ProgressBar(std::string what);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  /// Wipes the bar away.
  ~ProgressBar() override;

  bool Step(double fraction) override;

 private:
  std::string what_;
  bool isTerminal_;
  int shown_ = -1;  // percent
  std::chrono::steady_clock::time_point start_;
};

}  // namespace host
