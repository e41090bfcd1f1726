// What those hear of a widget who cannot see it, and what the pointer is told.
#pragma once

#include <gtkmm/widget.h>

#include <string>

namespace host {

/// The name of the widget alone.
void SetName(Gtk::Widget* widget, const std::string& name);
/// The name of the widget, and of what takes the keys within it.
void GiveName(Gtk::Widget* widget, const std::string& name);
/// The name of a widget that shows a picture in place of words, which the pointer gets too.
void SetTip(Gtk::Widget* widget, const std::string& words);

}  // namespace host
