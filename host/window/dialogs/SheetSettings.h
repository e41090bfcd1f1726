// What is kept of printing: the sheet that a page goes on, and what was chosen of the printer.
#pragma once

#include <gtkmm/pagesetup.h>
#include <gtkmm/printsettings.h>
#include <gtkmm/window.h>

#include "kit/geometry/AGSize.h"

namespace host {

/// The sheet that was chosen for pages of this size, in map units; without, the sheet that the page is.
Glib::RefPtr<Gtk::PageSetup> SheetOf(const AGSize& page);
/// Asks for the sheet that pages of this size go on, from now on.
void ChooseSheet(Gtk::Window& window, const AGSize& page);

/// What was chosen last, but for how often, which pages and into which file was printed.
Glib::RefPtr<Gtk::PrintSettings> KeptPrintSettings();
void KeepPrintSettings(const Glib::RefPtr<const Gtk::PrintSettings>& settings);

}  // namespace host
