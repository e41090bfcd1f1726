#include "host/terminal/ProgressBar.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace host {
namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr int kWidth = 40;

}  // namespace

ProgressBar::ProgressBar(std::string what)
    : what_(std::move(what)), isTerminal_(isatty(STDERR_FILENO) != 0), start_(std::chrono::steady_clock::now()) {}

ProgressBar::~ProgressBar() {
  if (shown_ >= 0) std::fputs("\r\033[K", stderr);
}

bool ProgressBar::Step(double fraction) {
  if (!isTerminal_ || std::chrono::steady_clock::now() - start_ < kPatience) return true;
  const int percent = static_cast<int>(std::floor(std::clamp(fraction, 0.0, 1.0) * 100));
  if (percent == shown_) return true;
  shown_ = percent;
  const auto full = static_cast<std::size_t>(percent * kWidth / 100);
  const std::string bar = std::string(full, '#') + std::string(kWidth - full, '.');
  std::fprintf(stderr, "\r%s [%s] %3d %%", what_.c_str(), bar.c_str(), percent);
  return true;
}

}  // namespace host
