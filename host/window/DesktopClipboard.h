// The clipboard of the desktop.
//
// What is copied is offered as a document, which other windows and programs of this kind paste, and as an SVG, PNG or
// PDF picture; each is made when somebody asks for it, of what was copied then. What is pasted may come from any
// program.
#pragma once

#include <gtkmm/widget.h>

#include <functional>
#include <string>

#include "host/session/CopiedObjects.h"

namespace host {

/// Something that can be pasted.
struct ClipboardContent {
  bool isObjects = false;  ///< as SessionClipboard::Paste takes them; else a picture, as SessionImport::Take does
  std::string bytes;
};

/// Takes the place of what was on the clipboard.
void OfferOnClipboard(Gtk::Widget& widget, CopiedObjects copied);

/// Calls `then` with what is on the clipboard: at once where this program offers it, else once the program that does
/// has given it, or a problem; not at all where nothing was copied. It may be called when the widget is gone.
void ReadClipboard(Gtk::Widget& widget, const std::function<void(const Result<ClipboardContent>&)>& then);

}  // namespace host
