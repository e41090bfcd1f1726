#include "host/window/dialogs/FindDialog.h"

#include <glibmm/main.h>
#include <gtkmm/box.h>
#include <gtkmm/stringlist.h>

#include "host/Host.h"
#include "host/bundles/ClassRegistry.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
#include "host/window/dialogs/CloseByEscape.h"

namespace host {

FindDialog::FindDialog(Gtk::Window& parent, const Document& document, std::function<std::size_t(const Wanted&)> find)
    : find_(std::move(find)) {
  set_title(Tr("Find"));
  set_transient_for(parent);
  set_modal(true);
  set_resizable(false);
  std::vector<Glib::ustring> classes = {Tr("Any")};
  for (const RegisteredClass& entry : Host::Instance().Classes().Classes()) {
    if (!entry.fromBundle) continue;
    classes_.push_back(entry.id);
    classes.emplace_back(DisplayText(DisplayName(*entry.record)));
  }
  std::vector<Glib::ustring> layers = {Tr("Any")};
  for (const Layer* layer : document.Layers()) {
    layers_.push_back(layer->id);
    layers.emplace_back(layer->settings.name);
  }
  class_.set_model(Gtk::StringList::create(classes));
  layer_.set_model(Gtk::StringList::create(layers));
  grid_.Row(0, Tr("Name or Text"), name_);
  grid_.Row(1, Tr("Kind"), class_);
  grid_.Row(2, Tr("Layer"), layer_);
  grid_.Row(3, Tr("Fill"), fill_);
  grid_.Row(4, Tr("Outline"), stroke_);
  for (Gtk::Entry* field : {&fill_, &stroke_}) field->set_placeholder_text("red, #4682b4, none");
  for (Gtk::Entry* field : {&name_, &fill_, &stroke_}) {
    field->signal_changed().connect([this] { Find(); });
    field->signal_activate().connect([this] { close(); });
  }
  for (Gtk::DropDown* choice : {&class_, &layer_}) {
    choice->property_selected().signal_changed().connect([this] { Find(); });
  }
  found_.set_xalign(0);
  auto* const box = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 12);
  box->set_margin(16);
  box->append(grid_);
  box->append(found_);
  set_child(*box);
  signal_hide().connect([this] { Glib::signal_idle().connect_once([this] { delete this; }); });
  CloseByEscape(*this);
  present();
  name_.grab_focus();
}

bool FindDialog::ReadPaint(Gtk::Entry* field, std::optional<WantedPaint>* paint) {
  const std::string text = field->get_text();
  *paint = ParsePaint(text);
  const bool isPaint = text.empty() || paint->has_value();
  isPaint ? field->remove_css_class("error") : field->add_css_class("error");
  return isPaint;
}

void FindDialog::Find() {
  Wanted wanted;
  wanted.name = name_.get_text();
  if (class_.get_selected() > 0) wanted.classID = classes_.at(class_.get_selected() - 1);
  if (layer_.get_selected() > 0) wanted.layer = layers_.at(layer_.get_selected() - 1);
  const bool isFill = ReadPaint(&fill_, &wanted.fill);
  const bool isStroke = ReadPaint(&stroke_, &wanted.stroke);
  if (!isFill || !isStroke) return found_.set_text(Tr("A colour is typed as red, #4682b4 or none."));
  found_.set_text(TrWith("Found: %s", std::to_string(find_(wanted))));
}

}  // namespace host
