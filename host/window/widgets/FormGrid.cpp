#include "host/window/widgets/FormGrid.h"

#include <gtkmm/label.h>
#include <gtkmm/listitem.h>
#include <gtkmm/signallistitemfactory.h>
#include <gtkmm/stack.h>
#include <gtkmm/stringlist.h>

#include "host/text/Localisation.h"
#include "host/window/widgets/Tip.h"

namespace host {
namespace {

constexpr int kLabelWidth = 80;
constexpr char kMixedStyle[] = "mixed";

// Where the toolkit's pop-up says that nothing is selected: "(None)", which may be an entry's name.
GtkWidget* EmptyLabel(GtkWidget* part) {
  if (GTK_IS_STACK(part)) return gtk_stack_get_child_by_name(GTK_STACK(part), "empty");
  for (GtkWidget* child = gtk_widget_get_first_child(part); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (GtkWidget* const found = EmptyLabel(child)) return found;
  }
  return nullptr;
}

// The button shows as much of the entry as there is room for: a panel must not grow with what is selected.
void CutChosenEntry(Gtk::DropDown* choice) {
  choice->set_list_factory(choice->get_factory());  // the list shows them whole
  auto factory = Gtk::SignalListItemFactory::create();
  factory->signal_setup().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
    auto* const label = Gtk::make_managed<Gtk::Label>();
    label->set_xalign(0);
    label->set_ellipsize(Pango::EllipsizeMode::END);
    item->set_child(*label);
  });
  factory->signal_bind().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
    auto* const label = dynamic_cast<Gtk::Label*>(item->get_child());
    GObject* const entry = item->get_item()->gobj();
    if (label != nullptr && GTK_IS_STRING_OBJECT(entry)) {
      label->set_text(gtk_string_object_get_string(GTK_STRING_OBJECT(entry)));
    }
  });
  choice->set_factory(factory);
}

}  // namespace

FormGrid::FormGrid() {
  set_row_spacing(4);
  set_column_spacing(8);
}

void FormGrid::Row(int row, const char* label, Gtk::Widget& control) {
  auto* const text = Gtk::make_managed<Gtk::Label>(label);
  text->set_xalign(0);
  text->set_size_request(kLabelWidth, -1);
  control.set_hexpand(true);
  if (auto* const choice = dynamic_cast<Gtk::DropDown*>(&control)) CutChosenEntry(choice);
  GiveName(&control, label);
  attach(*text, 0, row);
  attach(control, 1, row);
}

void FormGrid::ShowMixed(int row, bool mixed) {
  Gtk::Widget& control = *get_child_at(1, row);
  const char* const words = mixed ? Tr("Mixed") : "";
  control.set_tooltip_text(words);
  gtk_accessible_update_property(GTK_ACCESSIBLE(control.gobj()), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, words, -1);
  for (Gtk::Widget* part : {get_child_at(0, row), &control}) {
    mixed ? part->add_css_class(kMixedStyle) : part->remove_css_class(kMixedStyle);
  }
}

void ShowChoice(Gtk::DropDown* choice, unsigned int index, bool mixed) {
  GtkWidget* const empty = mixed ? EmptyLabel(GTK_WIDGET(choice->gobj())) : nullptr;
  if (GTK_IS_LABEL(empty)) gtk_label_set_text(GTK_LABEL(empty), Tr("Mixed"));
  choice->set_selected(mixed ? GTK_INVALID_LIST_POSITION : index);
}

}  // namespace host
