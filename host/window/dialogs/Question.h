// Questions in front of a window.
#pragma once

#include <gtkmm/window.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// The answer comes later, as the number beside its text; another number when there is none. There is a button to
/// cancel, too; the last answer is the default.
void Ask(Gtk::Window& window, const std::string& question, const std::string& details,
         const std::vector<std::pair<std::string, int>>& answers, const std::function<void(int)>& then);

/// A file's path with the ending that it is to have. A file dialog asked about the name that was typed: when the ending
/// makes it the name of another file that is there already, `then` is called once the user agrees to replace that.
void AskForPath(Gtk::Window& window, const std::string& chosen, const std::string& ending,
                const std::function<void(const std::string& path)>& then);

}  // namespace host
