#include "host/window/SlideStep.h"

#include <glibmm/main.h>

#include "host/Host.h"
#include "host/session/DocumentSession.h"

namespace host {
namespace {

constexpr unsigned int kPause = 500;  // milliseconds

struct Burst {
  std::uint64_t session = 0;  // its serial, since the session may be gone
  std::string what;
  sigc::connection timer;
};

Burst& TheBurst() {
  static Burst burst;
  return burst;
}

}  // namespace

void SlideStep::Continue(DocumentSession* session, const std::string& what) {
  Burst& burst = TheBurst();
  if (burst.session != session->Serial() || burst.what != what) {
    End();
    if (session->Steps().IsOpen()) return;  // a drag has its own step
    session->Steps().Begin("");
    burst.session = session->Serial();
    burst.what = what;
  }
  burst.timer.disconnect();
  burst.timer = Glib::signal_timeout().connect(
      [] {
        End();
        return false;
      },
      kPause);
}

void SlideStep::End() {
  Burst& burst = TheBurst();
  burst.timer.disconnect();
  DocumentSession* const session = Host::Instance().Sessions().Find(burst.session);
  burst.session = 0;
  burst.what.clear();
  if (session != nullptr && session->Steps().IsOpen()) session->Steps().End();
}

}  // namespace host
