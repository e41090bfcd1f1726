#include "host/window/dialogs/FileChooser.h"

#include <glibmm/main.h>

#include <utility>

namespace host {
namespace {

constexpr unsigned int kSeconds = 60;

}  // namespace

void LetGo(Glib::RefPtr<Gtk::FileChooserNative>* chooser) {
  Glib::signal_timeout().connect_seconds_once([kept = std::exchange(*chooser, {})] {}, kSeconds);
}

}  // namespace host
