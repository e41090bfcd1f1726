#include "host/window/widgets/NameField.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerkey.h>

#include "host/window/widgets/Focus.h"

namespace host {

NameField::NameField(const Glib::ustring& accessibleName) {
  label_.set_xalign(0);
  label_.set_ellipsize(Pango::EllipsizeMode::END);
  entry_.set_width_chars(4);
  set_tooltip_text(accessibleName);
  gtk_accessible_update_property(GTK_ACCESSIBLE(entry_.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, accessibleName.c_str(),
                                 -1);
  set_vhomogeneous(false);
  add(label_);
  add(entry_);
  entry_.signal_activate().connect([this] { TakeOver(); });
  auto focus = Gtk::EventControllerFocus::create();
  focus->signal_leave().connect([this] { TakeOver(); });
  entry_.add_controller(focus);
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](guint key, guint, Gdk::ModifierType) {
        if (key != GDK_KEY_Escape) return false;
        GiveUp();
        return true;
      },
      false);
  entry_.add_controller(keys);
}

void NameField::Edit() {
  if (editing_) return;
  entry_.set_text(label_.get_text());
  set_visible_child(entry_);
  entry_.grab_focus();  // selects all
  editing_ = true;
}

// The field loses the focus when it is hidden, which must not end it once more. The focus goes on to the row then, if
// the user has not put it elsewhere.
void NameField::End(bool takeOver) {
  if (!editing_) return;
  editing_ = false;
  const bool hadFocus = HasFocus(entry_);
  const Glib::ustring name = entry_.get_text();
  const bool changed = takeOver && name.raw() != label_.get_text().raw();
  if (changed) label_.set_text(name);
  set_visible_child(label_);
  if (hadFocus) {
    if (Gtk::Widget* const row = get_ancestor(GTK_TYPE_LIST_BOX_ROW)) row->grab_focus();
  }
  if (changed) chosen_.emit(name);
}

}  // namespace host
