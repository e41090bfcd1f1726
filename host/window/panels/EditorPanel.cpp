#include "host/window/panels/EditorPanel.h"

#include "host/window/widgets/Focus.h"
#include "host/window/widgets/TypedField.h"

namespace host {
namespace {

constexpr unsigned int kHeldPause = 50;  // milliseconds

}  // namespace

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

void EditorPanel::OnSelectionChanged() {
  otherObjects_ = true;
  idle_.disconnect();
  RefreshSoon(Glib::PRIORITY_HIGH);
}

void EditorPanel::RefreshSoon(int priority) {
  if (idle_.connected()) return;
  idle_ = Glib::signal_idle().connect(
      [this] {
        RefreshWhenFree();
        return false;
      },
      priority);
}

void EditorPanel::RefreshWhenFree() {
  if (!IsHeld(*this)) return RefreshNow();
  idle_ = Glib::signal_timeout().connect(
      [this] {
        RefreshWhenFree();
        return false;
      },
      kHeldPause);
}

void EditorPanel::RefreshNow() {
  refreshing_ = true;
  if (otherObjects_) TypedField::GiveUpLeft(*this);
  otherObjects_ = false;
  Refresh();
  refreshing_ = false;
}

void EditorPanel::ShowOrHide(bool shown) {
  if (!shown) TakeFocusFrom(*this);
  set_visible(shown);
}

}  // namespace host
