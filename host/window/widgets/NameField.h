// A name that is shown as a label and edited in place.
//
// Edit shows a field with the name; Enter, leaving it, or a command takes the name over, Escape gives it up.
#pragma once

#include <gtkmm/entry.h>
#include <gtkmm/label.h>
#include <gtkmm/stack.h>

#include <string>

#include "host/window/widgets/TypedField.h"

namespace host {

class NameField : public Gtk::Stack, public TypedField {
 public:
  explicit NameField(const Glib::ustring& accessibleName);

  /// Shows a name; while the old one is edited, behind the field.
  void Show(const Glib::ustring& name) { label_.set_text(name); }
  void Edit();
  /// The user entered another name.
  sigc::signal<void(Glib::ustring)>& SignalChosen() { return chosen_; }

  // TypedField
  bool IsBeingTyped() const override { return editing_; }
  void TakeOver() override { End(true); }
  void GiveUp() override { End(false); }

 private:
  void End(bool takeOver);

  bool editing_ = false;
  Gtk::Label label_;
  Gtk::Entry entry_;
  sigc::signal<void(Glib::ustring)> chosen_;
};

}  // namespace host
