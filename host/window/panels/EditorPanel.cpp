#include "host/window/panels/EditorPanel.h"

#include <glibmm/main.h>

namespace host {

EditorPanel::EditorPanel() : Gtk::Box(Gtk::Orientation::VERTICAL, 6) { add_css_class("panel"); }

EditorPanel::~EditorPanel() {
  idle_.disconnect();
  if (session_ != nullptr) session_->RemoveObserver(this);
}

void EditorPanel::SetSession(DocumentSession* session) {
  if (session_ != nullptr) session_->RemoveObserver(this);
  session_ = session;
  if (session_ != nullptr) session_->AddObserver(this);
  idle_.disconnect();
  RefreshNow();
}

void EditorPanel::RefreshSoon() {
  if (idle_.connected()) return;
  idle_ = Glib::signal_idle().connect([this] {
    RefreshNow();
    return false;
  });
}

void EditorPanel::RefreshNow() {
  refreshing_ = true;
  Refresh();
  refreshing_ = false;
}

}  // namespace host
