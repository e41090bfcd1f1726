#include "host/window/widgets/Tip.h"

namespace host {

void SetTip(Gtk::Widget* widget, const std::string& words) {
  widget->set_tooltip_text(words);
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, words.c_str(), -1);
}

}  // namespace host
