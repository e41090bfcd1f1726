#include "host/window/panels/LayersPanel.h"

#include <gtkmm/button.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/settings.h>

#include <algorithm>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/widgets/Focus.h"

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
    SlideStep::End();
    Session()->Layers().SetActive(rows_[static_cast<std::size_t>(row->get_index())].id);
  });
  list_.set_activate_on_single_click(false);
  list_.signal_row_activated().connect(
      [this](Gtk::ListBoxRow* row) { rows_[static_cast<std::size_t>(row->get_index())].name->Edit(); });
  AddDoubleClick();
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

// Taken from the list, which would give the focus back to the row when the button is let go. The toolkit counts on when
// the pointer has gone on to another row, so what counts is whether both clicks were on one name.
void LayersPanel::AddDoubleClick() {
  auto clicks = Gtk::GestureClick::create();
  clicks->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  clicks->signal_pressed().connect([this, gesture = clicks.get()](int, double x, double y) {
    Gtk::Widget* const hit = list_.pick(x, y);
    auto* const name = hit == nullptr ? nullptr : dynamic_cast<NameField*>(hit->get_parent());
    const guint32 time = gesture->get_current_event_time();  // milliseconds
    const auto most = static_cast<guint32>(get_settings()->property_gtk_double_click_time().get_value());
    const bool second = name != nullptr && name == clicked_ && time - clickTime_ <= most;
    clicked_ = second ? nullptr : name;
    clickTime_ = time;
    if (!second) return;
    gesture->set_state(Gtk::EventSequenceState::CLAIMED);
    name->Edit();
  });
  list_.add_controller(clicks);
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

LayersPanel::Row LayersPanel::MakeRow(LayerID id) {
  auto* const content = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 4);
  Row row{id, content, Gtk::make_managed<Gtk::CheckButton>(), Gtk::make_managed<Gtk::ToggleButton>(),
          Gtk::make_managed<NameField>(Tr("Name of the layer"))};
  SetName(row.visible, Tr("Visible"));
  row.visible->signal_toggled().connect([this, id, visible = row.visible] {
    if (IsRefreshing()) return;
    SlideStep::End();
    Report(Session()->Layers().SetVisible(id, visible->get_active()));
  });
  row.locked->set_has_frame(false);
  SetName(row.locked, Tr("Locked"));
  row.locked->signal_toggled().connect([this, id, locked = row.locked] {
    if (IsRefreshing()) return;
    SlideStep::End();
    Report(Session()->Layers().SetLocked(id, locked->get_active()));
  });
  row.name->set_hexpand(true);
  row.name->SignalChosen().connect([this, id, field = row.name](const Glib::ustring& name) {
    if (!IsRefreshing()) Rename(id, field, name.raw());
  });
  content->append(*row.visible);
  content->append(*row.locked);
  content->append(*row.name);
  return row;
}

void LayersPanel::Rename(LayerID id, NameField* field, const std::string& name) {
  if (Session() == nullptr || Session()->Doc().FindLayer(id) == nullptr) return;
  SlideStep::End();
  const auto done = Session()->Layers().SetName(id, name);
  if (!done) field->Show(Session()->Doc().FindLayer(id)->settings.name);
  Report(done);
}

bool LayersPanel::ShowsTheLayers() const {
  const auto& layers = Session()->Doc().Layers();
  return std::equal(rows_.begin(), rows_.end(), layers.rbegin(), layers.rend(),
                    [](const Row& row, const auto& layer) { return row.id == layer->id; });
}

bool LayersPanel::Build() {
  rows_.clear();
  clicked_ = nullptr;
  const bool hadFocus = RemoveRows(list_);
  if (Session() == nullptr) return false;
  const auto& layers = Session()->Doc().Layers();
  for (std::size_t i = layers.size(); i > 0; --i) {
    rows_.push_back(MakeRow(layers[i - 1]->id));
    list_.append(*rows_.back().content);
  }
  return hadFocus;
}

// The rows stay as long as the layers do: a name may be edited, and a click may be the first of two.
void LayersPanel::Refresh() {
  const bool hadFocus = (Session() == nullptr || !ShowsTheLayers()) && Build();
  if (Session() == nullptr) return;
  for (const Row& row : rows_) {
    const LayerSettings& settings = Session()->Doc().FindLayer(row.id)->settings;
    row.visible->set_active(settings.visible);
    row.locked->set_active(settings.locked);
    row.locked->set_icon_name(settings.locked ? "changes-prevent-symbolic" : "changes-allow-symbolic");
    row.name->Show(settings.name);
  }
  const std::size_t active = Session()->Doc().IndexOfLayer(Session()->Layers().Active());
  Gtk::ListBoxRow* const row = list_.get_row_at_index(static_cast<int>(rows_.size() - 1 - active));
  list_.select_row(*row);
  if (hadFocus) row->grab_focus();
}

}  // namespace host
