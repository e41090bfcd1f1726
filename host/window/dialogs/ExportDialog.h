// Exporting the page, the drawing or the selection as a picture: kind, scale or size in pixels, transparency, quality,
// and a progress bar that can be stopped.
#pragma once

#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/window.h>

#include <functional>
#include <string>

#include "host/pictures/DocumentPicture.h"
#include "host/session/DocumentSession.h"
#include "host/window/dialogs/FileChooser.h"
#include "host/window/widgets/FormGrid.h"
#include "host/window/widgets/NumberField.h"

namespace host {

class ExportDialog : public Gtk::Window {
 public:
  /// What happened, in one line, goes to `report`. The session outlives the dialog, which is modal over `parent` and
  /// deletes itself when it is closed.
  ExportDialog(Gtk::Window& parent, DocumentSession& session,
               std::function<void(const std::string& file, const Result<>& done)> report);

 private:
  void AddRows();
  void ShowWhatCounts();
  /// What is drawn, and how large that is in map units.
  void TakeArea(PictureOptions* options) const;
  AGSize AreaSize() const;
  void ShowScale(double scale);
  void ChooseFile();
  void Export(const std::string& path);

  Gtk::Window& parent_;
  DocumentSession& session_;
  std::function<void(const std::string&, const Result<>&)> report_;
  FormGrid grid_;
  Gtk::DropDown kind_;
  Gtk::DropDown area_;
  NumberField scale_;
  NumberField resolution_;  ///< dots an inch
  NumberField width_;       ///< pixels
  Gtk::CheckButton transparent_;
  NumberField quality_;
  FileChooser chooser_;
};

}  // namespace host
