#include "host/window/widgets/TextField.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerkey.h>

namespace host {

TextField::TextField() {
  signal_changed().connect([this] { typed_ = typed_ || !showing_; });
  signal_activate().connect([this] { TakeOver(); });
  auto focus = Gtk::EventControllerFocus::create();
  focus->signal_leave().connect([this] { TakeOver(); });
  add_controller(focus);
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](guint key, guint, Gdk::ModifierType) {
        if (key != GDK_KEY_Escape || !typed_) return false;
        GiveUp();
        return true;
      },
      false);
  add_controller(keys);
}

void TextField::Show(const Glib::ustring& text) {
  shown_ = text;
  if (!typed_) GiveUp();
}

void TextField::TakeOver() {
  if (!typed_) return;
  typed_ = false;
  if (get_text().raw() == shown_.raw()) return;
  shown_ = get_text();
  chosen_.emit(shown_);
}

void TextField::GiveUp() {
  typed_ = false;
  showing_ = true;
  if (get_text().raw() != shown_.raw()) set_text(shown_);
  showing_ = false;
}

}  // namespace host
