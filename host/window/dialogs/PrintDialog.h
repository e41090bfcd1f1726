// Printing, and looking at it before.
#pragma once

#include <gtkmm/window.h>

#include <functional>

#include "host/model/Document.h"
#include "host/text/Problem.h"

namespace host {

/// Asks for a printer and prints the page as the document has it now. What goes wrong, now or later, goes to `report`.
void PrintDocument(Gtk::Window& window, const Document& document, const std::function<void(const Problem&)>& report);

/// The page as it would be printed, as a PDF file that the desktop's viewer opens; it goes when the program ends.
Result<> PreviewPrint(Gtk::Window& window, const Document& document);

}  // namespace host
