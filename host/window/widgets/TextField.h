// A field for a line of text, which is sent when it is taken over (TypedField) and is another one then.
#pragma once

#include <gtkmm/entry.h>

#include "host/window/widgets/TypedField.h"

namespace host {

class TextField : public Gtk::Entry, public TypedField {
 public:
  TextField();

  /// Shows a text without telling anybody; behind what is being typed.
  void Show(const Glib::ustring& text);
  /// The user entered a text.
  sigc::signal<void(Glib::ustring)>& SignalChosen() { return chosen_; }

  // TypedField
  bool IsBeingTyped() const override { return typed_; }
  void TakeOver() override;
  void GiveUp() override;

 private:
  bool showing_ = false;
  bool typed_ = false;
  Glib::ustring shown_;
  sigc::signal<void(Glib::ustring)> chosen_;
};

}  // namespace host
