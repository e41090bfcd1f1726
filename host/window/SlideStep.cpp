#include "host/window/SlideStep.h"

#include <gdkmm/event.h>
#include <glibmm/main.h>
#include <gtkmm/eventcontrollerlegacy.h>
#include <gtkmm/scale.h>

#include <utility>

#include "host/Host.h"
#include "host/session/DocumentSession.h"

namespace host {
namespace {

constexpr unsigned int kPause = 500;  // milliseconds

struct Burst {
  std::uint64_t session = 0;  // its serial, since the session may be gone
  std::string what;
  sigc::connection timer;
  const Gtk::Scale* held = nullptr;  // the slider that is pressed
  std::function<void()> finishDrag;
};

Burst& TheBurst() {
  static Burst burst;
  return burst;
}

void Press(const Gtk::Scale& scale) {
  SlideStep::End();
  TheBurst().held = &scale;
}

// The slider itself sees the release later, and may then change once more.
void Release(const Gtk::Scale& scale) {
  if (TheBurst().held != &scale) return;
  TheBurst().held = nullptr;
  Glib::signal_idle().connect_once(
      [] {
        if (TheBurst().held == nullptr) SlideStep::End();
      },
      Glib::PRIORITY_HIGH);
}

}  // namespace

void SlideStep::Continue(DocumentSession* session, const std::string& what) {
  Burst& burst = TheBurst();
  if (burst.session != session->Serial() || burst.what != what) {
    End();
    if (session->Steps().IsOpen()) return;  // a plug-in's, which takes the change in
    session->Steps().Begin("");
    burst.session = session->Serial();
    burst.what = what;
  }
  burst.timer.disconnect();
  if (burst.held != nullptr) return;
  burst.timer = Glib::signal_timeout().connect(
      [] {
        End();
        return false;
      },
      kPause);
}

void SlideStep::End() {
  Burst& burst = TheBurst();
  if (const auto finish = std::exchange(burst.finishDrag, nullptr)) finish();
  burst.timer.disconnect();
  DocumentSession* const session = Host::Instance().Sessions().Find(burst.session);
  burst.session = 0;
  burst.what.clear();
  if (session != nullptr && session->Steps().IsOpen()) session->Steps().End();
}

void SlideStep::Drag(std::function<void()> finish) { TheBurst().finishDrag = std::move(finish); }

bool SlideStep::IsHeld(const Gtk::Scale& scale) { return TheBurst().held == &scale; }

void SlideStep::Follow(Gtk::Scale& scale) {
  auto events = Gtk::EventControllerLegacy::create();
  events->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  events->signal_event().connect(
      [&scale](const Glib::RefPtr<const Gdk::Event>& event) {
        switch (event->get_event_type()) {
          case Gdk::Event::Type::BUTTON_PRESS:
          case Gdk::Event::Type::TOUCH_BEGIN:
            Press(scale);
            break;
          case Gdk::Event::Type::BUTTON_RELEASE:
          case Gdk::Event::Type::TOUCH_END:
          case Gdk::Event::Type::TOUCH_CANCEL:
          case Gdk::Event::Type::GRAB_BROKEN:
            Release(scale);
            break;
          default:
            break;
        }
        return false;
      },
      false);
  scale.add_controller(events);
  scale.signal_unmap().connect([&scale] { Release(scale); });
}

}  // namespace host
