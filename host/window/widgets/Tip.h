// Parts of the window that show a picture in place of words.
#pragma once

#include <gtkmm/widget.h>

#include <string>

namespace host {

/// The words that the pointer and those who cannot see the picture get for it.
void SetTip(Gtk::Widget* widget, const std::string& words);

}  // namespace host
