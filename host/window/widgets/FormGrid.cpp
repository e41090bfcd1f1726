#include "host/window/widgets/FormGrid.h"

#include <gtkmm/label.h>

namespace host {
namespace {

constexpr int kLabelWidth = 80;

}  // namespace

FormGrid::FormGrid() {
  set_row_spacing(4);
  set_column_spacing(8);
}

void FormGrid::Row(int row, const char* label, Gtk::Widget& control) {
  auto* const text = Gtk::make_managed<Gtk::Label>(label);
  text->set_xalign(0);
  text->set_size_request(kLabelWidth, -1);
  text->set_mnemonic_widget(control);
  control.set_hexpand(true);
  gtk_accessible_update_property(GTK_ACCESSIBLE(control.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, label, -1);
  attach(*text, 0, row);
  attach(control, 1, row);
}

}  // namespace host
