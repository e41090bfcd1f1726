// The focus of the keys, and parts of a window that come and go.
//
// The toolkit leaves the focus with a part that is removed until the next frame: keys pressed meanwhile are lost. So
// whoever removes what may have the focus takes it away first; the window then gives it to its canvas.
#pragma once

#include <gtkmm/listbox.h>
#include <gtkmm/widget.h>

namespace host {

/// True when the focus is within the widget.
bool HasFocus(const Gtk::Widget& widget);
/// Leaves the window without a focus if it is within the widget. True when it was.
bool TakeFocusFrom(const Gtk::Widget& widget);
/// Hides a part, or shows it. Until it has its place, with the next frame, the toolkit takes it to be in the corner of
/// what is around it: clicks pass it by meanwhile.
void ShowPart(Gtk::Widget& part, bool shown);
/// Removes all rows of a list. True when the focus was within one of them: a row that comes instead may have it.
bool RemoveRows(Gtk::ListBox& list);

}  // namespace host
