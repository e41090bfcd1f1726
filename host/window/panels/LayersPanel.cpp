#include "host/window/panels/LayersPanel.h"

#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/editablelabel.h>
#include <gtkmm/togglebutton.h>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"

namespace host {
namespace {

void SetName(Gtk::Widget* widget, const std::string& name) {
  widget->set_tooltip_text(name);
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str(), -1);
}

}  // namespace

LayersPanel::LayersPanel() {
  list_.set_selection_mode(Gtk::SelectionMode::BROWSE);
  SetName(&list_, Tr("Layers"));
  list_.signal_row_selected().connect([this](Gtk::ListBoxRow* row) {
    if (IsRefreshing() || row == nullptr || Session() == nullptr) return;
    const auto& layers = Session()->Doc().Layers();
    Session()->Layers().SetActive(layers[layers.size() - 1 - static_cast<std::size_t>(row->get_index())]->id);
  });
  append(list_);
  auto* const buttons = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 4);
  AddButton(buttons, "list-add-symbolic", Tr("New Layer"), [this] { Session()->Layers().Add(""); });
  AddButton(buttons, "list-remove-symbolic", Tr("Delete Layer"),
            [this] { Report(Session()->Layers().Remove(Session()->Layers().Active())); });
  AddButton(buttons, "go-up-symbolic", Tr("Move Layer Up"), [this] { MoveActive(1); });
  AddButton(buttons, "go-down-symbolic", Tr("Move Layer Down"), [this] { MoveActive(-1); });
  AddButton(buttons, "insert-object-symbolic", Tr("Move Selection to Layer"), [this] {
    Report(Session()->Layers().MoveObjects(Session()->Selection().IDs(), Session()->Layers().Active()));
  });
  append(*buttons);
}

void LayersPanel::AddButton(Gtk::Box* box, const char* icon, const char* tip, const std::function<void()>& pressed) {
  auto* const button = Gtk::make_managed<Gtk::Button>();
  button->set_icon_name(icon);
  SetName(button, tip);
  button->signal_clicked().connect([this, pressed] {
    SlideStep::End();
    if (Session() != nullptr) pressed();
  });
  box->append(*button);
}

void LayersPanel::MoveActive(int by) {
  const std::size_t index = Session()->Doc().IndexOfLayer(Session()->Layers().Active());
  if ((by < 0 && index == 0) || (by > 0 && index + 1 == Session()->Doc().Layers().size())) return;
  const std::size_t target = by < 0 ? index - 1 : index + 1;
  Report(Session()->Layers().Move(Session()->Layers().Active(), target));
}

Gtk::Widget* LayersPanel::MakeRow(const Layer& layer) {
  auto* const row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 4);
  const LayerID id = layer.id;
  auto* const visible = Gtk::make_managed<Gtk::CheckButton>();
  visible->set_active(layer.settings.visible);
  SetName(visible, Tr("Visible"));
  visible->signal_toggled().connect([this, id, visible] {
    SlideStep::End();
    Report(Session()->Layers().SetVisible(id, visible->get_active()));
  });
  auto* const locked = Gtk::make_managed<Gtk::ToggleButton>();
  locked->set_icon_name(layer.settings.locked ? "changes-prevent-symbolic" : "changes-allow-symbolic");
  locked->set_active(layer.settings.locked);
  locked->set_has_frame(false);
  SetName(locked, Tr("Locked"));
  locked->signal_toggled().connect([this, id, locked] {
    SlideStep::End();
    Report(Session()->Layers().SetLocked(id, locked->get_active()));
  });
  auto* const name = Gtk::make_managed<Gtk::EditableLabel>(layer.settings.name);
  name->set_hexpand(true);
  SetName(name, Tr("Name of the layer"));
  name->property_editing().signal_changed().connect([this, id, name] {
    if (name->get_editing() || Session()->Doc().FindLayer(id) == nullptr) return;
    if (name->get_text().raw() == Session()->Doc().FindLayer(id)->settings.name) return;
    SlideStep::End();
    Report(Session()->Layers().SetName(id, name->get_text()));
  });
  row->append(*visible);
  row->append(*locked);
  row->append(*name);
  return row;
}

void LayersPanel::Refresh() {
  while (Gtk::Widget* row = list_.get_first_child()) list_.remove(*row);
  if (Session() == nullptr) return;
  const auto& layers = Session()->Doc().Layers();
  for (std::size_t i = layers.size(); i > 0; --i) list_.append(*MakeRow(*layers[i - 1]));
  const std::size_t active = Session()->Doc().IndexOfLayer(Session()->Layers().Active());
  list_.select_row(*list_.get_row_at_index(static_cast<int>(layers.size() - 1 - active)));
}

}  // namespace host
