#include "host/window/widgets/Focus.h"

namespace host {
namespace {

GtkRoot* RootOf(const Gtk::Widget& widget) { return gtk_widget_get_root(const_cast<GtkWidget*>(widget.gobj())); }

}  // namespace

bool HasFocus(const Gtk::Widget& widget) {
  GtkRoot* const root = RootOf(widget);
  GtkWidget* const focus = root == nullptr ? nullptr : gtk_root_get_focus(root);
  GtkWidget* const asked = const_cast<GtkWidget*>(widget.gobj());
  return focus != nullptr && (focus == asked || gtk_widget_is_ancestor(focus, asked));
}

bool TakeFocusFrom(const Gtk::Widget& widget) {
  const bool had = HasFocus(widget);
  if (had) gtk_root_set_focus(RootOf(widget), nullptr);
  return had;
}

void ShowPart(Gtk::Widget& part, bool shown) {
  if (part.get_visible() == shown) return;
  if (!shown) TakeFocusFrom(part);
  part.set_visible(shown);
  if (!shown) return;
  part.set_can_target(false);
  part.add_tick_callback([&part, frames = 0](const Glib::RefPtr<Gdk::FrameClock>&) mutable {
    if (++frames < 2) return true;
    part.set_can_target(true);
    return false;
  });
}

bool RemoveRows(Gtk::ListBox& list) {
  const bool hadFocus = TakeFocusFrom(list);
  while (Gtk::Widget* row = list.get_first_child()) list.remove(*row);
  return hadFocus;
}

}  // namespace host
