#include "host/EndSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace host {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP};

volatile std::sig_atomic_t sCaught = 0;
int sPipe[2] = {-1, -1};
struct sigaction sFormer[2];

void Note(int signal) {
  sCaught = signal;
  const char byte = 0;
  if (sPipe[1] >= 0 && write(sPipe[1], &byte, 1) < 0) return;  // who waits has been told already
}

}  // namespace

EndSignals::EndSignals() {
  if (pipe2(sPipe, O_CLOEXEC | O_NONBLOCK) != 0) sPipe[0] = sPipe[1] = -1;
  struct sigaction action {};
  action.sa_handler = &Note;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (int i = 0; i < 2; ++i) {
    sigaction(kSignals[i], nullptr, &sFormer[i]);
    if (sFormer[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &action, nullptr);
  }
}

EndSignals::~EndSignals() {
  for (int i = 0; i < 2; ++i) sigaction(kSignals[i], &sFormer[i], nullptr);
  for (int& end : sPipe) {
    if (end >= 0) close(end);
    end = -1;
  }
}

int EndSignals::Caught() { return sCaught; }
int EndSignals::Descriptor() { return sPipe[0]; }

void EndSignals::End() {
  std::signal(sCaught, SIG_DFL);
  std::raise(sCaught);
  std::_Exit(1);
}

}  // namespace host
