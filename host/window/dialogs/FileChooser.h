// Asks for a file.
#pragma once

#include <gtkmm/filechoosernative.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace host {

struct FileQuestion {
  Glib::ustring title;
  bool isToSave = false;
  std::string path;  // of the system; its folder is shown first and its name is offered; either may be missing
  /// Names and patterns, as "*.png;*.svg", of what is shown; none for all files. Those of an equal list share dialogs.
  std::vector<std::pair<Glib::ustring, std::string>> kinds;
};

/// A dialog that is shown for one question at a time. The toolkit goes on loading folders for a dialog that was closed,
/// and tells it what changes in them whether it is there or not: its dialogs are kept and shown again, and never end.
class FileChooser {
 public:
  /// Gets a path of the system, or nothing when the user gave up.
  using Answer = std::function<void(const std::optional<std::string>& path)>;

  FileChooser() = default;
  FileChooser(const FileChooser&) = delete;
  FileChooser& operator=(const FileChooser&) = delete;
  ~FileChooser();  // an open dialog is closed without an answer

  /// Returns at once. While a dialog is open, only that one is shown again. `parent` may be null.
  void Ask(Gtk::Window* parent, const FileQuestion& question, Answer answer);

 private:
  void GiveBack();

  Glib::RefPtr<Gtk::FileChooserNative> dialog_;
  sigc::connection answered_;
  std::vector<Glib::RefPtr<Gtk::FileChooserNative>>* spare_ = nullptr;  ///< where it goes when it is closed
};

}  // namespace host
