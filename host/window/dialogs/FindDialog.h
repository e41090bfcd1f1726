// Finding objects by what they are: what fits is selected while it is typed.
#pragma once

#include <gtkmm/dropdown.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>
#include <gtkmm/window.h>

#include <functional>
#include <vector>

#include "host/listings/FindObjects.h"
#include "host/session/DocumentSession.h"
#include "host/window/widgets/FormGrid.h"

namespace host {

class FindDialog : public Gtk::Window {
 public:
  /// `find` is given what is looked for, after each change, and returns how many were found. The dialog is modal over
  /// `parent`, and deletes itself when it is closed.
  FindDialog(Gtk::Window& parent, const Document& document, std::function<std::size_t(const Wanted&)> find);

 private:
  void Find();
  /// False where what is typed is no paint; the field says so then.
  bool ReadPaint(Gtk::Entry* field, std::optional<WantedPaint>* paint);

  std::function<std::size_t(const Wanted&)> find_;
  std::vector<AKClassID> classes_;
  std::vector<LayerID> layers_;
  FormGrid grid_;
  Gtk::Entry name_;
  Gtk::DropDown class_;
  Gtk::DropDown layer_;
  Gtk::Entry fill_;
  Gtk::Entry stroke_;
  Gtk::Label found_;
};

}  // namespace host
