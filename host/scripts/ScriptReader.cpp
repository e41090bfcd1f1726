#include "host/scripts/ScriptReader.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>

#include "host/EndSignals.h"

namespace host {
namespace {

int Milliseconds(std::chrono::duration<double> time) {
  constexpr double kLongest = 1e6;  // then it is asked again
  return static_cast<int>(std::ceil(std::min(time.count() * 1000, kLongest)));
}

}  // namespace

// False when a signal came.
bool ScriptReader::Wait() const {
  constexpr int kPause = 1000;  // between tries of work that stays to be done
  for (int least = 0;;) {
    if (EndSignals::Caught() != 0) return false;
    pollfd files[] = {{file_, POLLIN, 0}, {EndSignals::Descriptor(), POLLIN, 0}};
    const int time = std::max(Milliseconds(idle_.until()), least);
    if (poll(files, 2, time) < 0 && errno != EINTR) return true;  // reading tells what is wrong
    if (EndSignals::Caught() == 0 && files[0].revents != 0) return true;
    if (idle_.until().count() > 0) continue;
    idle_.work();
    least = kPause;
  }
}

bool ScriptReader::ReadMore() {
  char buffer[65536];
  for (;;) {
    if (!Wait()) return false;
    const ssize_t count = read(file_, buffer, sizeof(buffer));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) error_ = errno;
    if (count <= 0) return false;
    bytes_.erase(0, start_);
    start_ = 0;
    bytes_.append(buffer, static_cast<std::size_t>(count));
    return true;
  }
}

bool ScriptReader::Next(std::string* line) {
  if (EndSignals::Caught() != 0) return false;
  std::size_t searched = start_;
  for (;;) {
    const std::size_t end = bytes_.find('\n', searched);
    if (end != std::string::npos) {
      *line = bytes_.substr(start_, end - start_);
      start_ = end + 1;
      return true;
    }
    searched = bytes_.size() - start_;  // reading moves what is left to the front
    if (ReadMore()) continue;
    if (error_ != 0 || EndSignals::Caught() != 0 || start_ == bytes_.size()) return false;
    *line = bytes_.substr(start_);
    start_ = bytes_.size();
    return true;
  }
}

}  // namespace host
