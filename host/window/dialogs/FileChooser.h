// The end of a file dialog.
#pragma once

#include <gtkmm/filechoosernative.h>

namespace host {

/// Lets a dialog go that has answered; `*chooser` is null then. It is ended a minute later: the toolkit goes on loading
/// folders for a dialog that was closed, and what is loaded is told to the dialog whether it is there or not.
void LetGo(Glib::RefPtr<Gtk::FileChooserNative>* chooser);

}  // namespace host
