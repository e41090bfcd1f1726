// A field for a text of several lines: Enter ends a line, Ctrl+Enter or leaving the field takes the text over, Escape
// gives it up (TypedField). Leaving the window for another one leaves everything as it is.
#pragma once

#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>

#include <functional>
#include <string>

#include "host/window/widgets/TypedField.h"

namespace host {

class TextArea : public Gtk::ScrolledWindow, public TypedField {
 public:
  /// Takes a text that the user entered; false where it can't be taken: it stays the user's then, to be mended.
  using Take = std::function<bool(const std::string& text)>;

  TextArea(const std::string& accessibleName, Take take);

  /// Shows a text without telling anybody; behind what is being typed.
  void Show(const std::string& text);
  /// Shows a text to be typed over, and has the keys.
  void Edit(const std::string& text);
  /// The user is done, whether the text was taken over or given up.
  sigc::signal<void()>& SignalEnded() { return ended_; }

  Gtk::TextView& View() { return view_; }

  // TypedField
  bool IsBeingTyped() const override { return typed_; }
  void TakeOver() override;
  void GiveUp() override;

 private:
  bool OnKey(guint key, Gdk::ModifierType state);
  void OnLeave();
  void SetText(const std::string& text);

  Gtk::TextView view_;
  Take take_;
  bool showing_ = false;
  bool typed_ = false;
  bool composing_ = false;  ///< an input method has the keys
  std::string shown_;
  sigc::signal<void()> ended_;
};

}  // namespace host
