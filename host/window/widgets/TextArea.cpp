#include "host/window/widgets/TextArea.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerkey.h>

#include "host/window/widgets/Tip.h"

namespace host {
namespace {

// What an input method shows of what it composes.
void NoteComposing(GtkTextView*, const char* text, bool* composing) { *composing = *text != '\0'; }

}  // namespace

TextArea::TextArea(const std::string& accessibleName, Take take) : take_(std::move(take)) {
  set_child(view_);
  set_has_frame(true);
  set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  view_.set_wrap_mode(Gtk::WrapMode::WORD_CHAR);
  view_.set_accepts_tab(false);
  SetName(&view_, accessibleName);
  view_.get_buffer()->signal_changed().connect([this] { typed_ = typed_ || !showing_; });
  g_signal_connect(view_.gobj(), "preedit-changed", G_CALLBACK(&NoteComposing), &composing_);
  auto focus = Gtk::EventControllerFocus::create();
  focus->signal_leave().connect([this] { OnLeave(); });
  view_.add_controller(focus);
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect([this](guint key, guint, Gdk::ModifierType state) { return OnKey(key, state); },
                                     false);
  view_.add_controller(keys);
}

bool TextArea::OnKey(guint key, Gdk::ModifierType state) {
  if (composing_ || !typed_) return false;
  if (key == GDK_KEY_Escape) {
    GiveUp();
    return true;
  }
  const bool control = (state & Gdk::ModifierType::CONTROL_MASK) == Gdk::ModifierType::CONTROL_MASK;
  if (!control || (key != GDK_KEY_Return && key != GDK_KEY_KP_Enter)) return false;
  TakeOver();
  return true;
}

void TextArea::OnLeave() {
  const auto* const window = dynamic_cast<Gtk::Window*>(get_root());
  if (window == nullptr || window->is_active()) TakeOver();
}

void TextArea::SetText(const std::string& text) {
  showing_ = true;
  view_.get_buffer()->begin_irreversible_action();  // what was typed before is not to come back
  view_.get_buffer()->set_text(text);
  view_.get_buffer()->end_irreversible_action();
  showing_ = false;
}

void TextArea::Show(const std::string& text) {
  shown_ = text;
  if (!typed_ && view_.get_buffer()->get_text().raw() != text) SetText(text);
}

void TextArea::Edit(const std::string& text) {
  shown_ = text;
  SetText(text);
  view_.get_buffer()->select_range(view_.get_buffer()->begin(), view_.get_buffer()->end());
  typed_ = true;
  view_.grab_focus();
}

// What is told may have the field shown anew, or hidden.
void TextArea::TakeOver() {
  if (!typed_) return;
  typed_ = false;
  const std::string text = view_.get_buffer()->get_text();
  if (text != shown_ && !take_(text)) {
    typed_ = true;
    return;
  }
  ended_.emit();
}

void TextArea::GiveUp() {
  if (!typed_) return;
  typed_ = false;
  SetText(shown_);
  ended_.emit();
}

}  // namespace host
