#include "host/window/widgets/Tip.h"

namespace host {
namespace {

// The toolkit's own parts have the names of their types.
void NameParts(GtkWidget* widget, const char* name) {
  for (GtkWidget* part = gtk_widget_get_first_child(widget); part != nullptr;
       part = gtk_widget_get_next_sibling(part)) {
    if (GTK_IS_POPOVER(part)) continue;
    if (gtk_widget_get_focusable(part)) {
      gtk_accessible_update_property(GTK_ACCESSIBLE(part), GTK_ACCESSIBLE_PROPERTY_LABEL, name, -1);
    }
    NameParts(part, name);
  }
}

}  // namespace

void SetName(Gtk::Widget* widget, const std::string& name) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str(), -1);
}

void GiveName(Gtk::Widget* widget, const std::string& name) {
  SetName(widget, name);
  NameParts(widget->gobj(), name.c_str());
}

void SetTip(Gtk::Widget* widget, const std::string& words) {
  widget->set_tooltip_text(words);
  GiveName(widget, words);
}

}  // namespace host
