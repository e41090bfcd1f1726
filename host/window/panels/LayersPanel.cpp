#include "host/window/panels/LayersPanel.h"

#include <gtkmm/button.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/settings.h>

#include <algorithm>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/widgets/Focus.h"
#include "host/window/widgets/Tip.h"

namespace host {
namespace {

// A row costs as much memory as thousands of layers in the document.
constexpr std::size_t kMostRows = 200;
constexpr int kLeastHeight = 32;  // of the list
constexpr int kMostHeight = 150;

}  // namespace

LayersPanel::LayersPanel() {
  list_.set_selection_mode(Gtk::SelectionMode::BROWSE);
  SetTip(&list_, Tr("Layers"));
  list_.signal_row_selected().connect([this](Gtk::ListBoxRow* row) {
    if (IsRefreshing() || row == nullptr || Session() == nullptr) return;
    SlideStep::End();
    Session()->Layers().SetActive(rows_[static_cast<std::size_t>(row->get_index())].id);
  });
  list_.set_activate_on_single_click(false);
  list_.signal_row_activated().connect(
      [this](Gtk::ListBoxRow* row) { rows_[static_cast<std::size_t>(row->get_index())].name->Edit(); });
  AddDoubleClick();
  AddSlideButton(above_, Tr("More Layers Above"), false);
  auto* const scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
  scrolled->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  scrolled->set_focusable(false);
  scrolled->set_min_content_height(kLeastHeight);
  scrolled->set_max_content_height(kMostHeight);
  scrolled->set_propagate_natural_height(true);
  scrolled->set_child(list_);
  append(*scrolled);
  AddSlideButton(below_, Tr("More Layers Below"), true);
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
  SetTip(button, tip);
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
  SetTip(row.visible, Tr("Visible"));
  row.visible->signal_toggled().connect([this, id, visible = row.visible] {
    if (IsRefreshing()) return;
    SlideStep::End();
    Report(Session()->Layers().SetVisible(id, visible->get_active()));
  });
  row.locked->set_has_frame(false);
  SetTip(row.locked, Tr("Locked"));
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

void LayersPanel::AddSlideButton(Gtk::Button& button, const char* text, bool isDown) {
  button.set_label(text);
  button.set_has_frame(false);
  button.set_visible(false);
  button.signal_clicked().connect([this, isDown] {
    if (Session() != nullptr) Slide(isDown);
  });
  append(button);
}

// Half of the rows stay, so that one sees where the others come from; the first of the others takes the focus.
void LayersPanel::Slide(bool isDown) {
  const std::size_t half = kMostRows / 2;
  const std::size_t before = first_;
  first_ = isDown ? first_ + half : first_ - std::min(first_, half);
  RefreshNow();
  const std::size_t next = isDown ? before + kMostRows - first_ : before - std::min(before, first_ + 1);
  FocusWhenPlaced(rows_[std::min(next, rows_.size() - 1)].id);
}

// The toolkit scrolls to what takes the focus if it has a place by then, which new rows have with the second frame.
void LayersPanel::FocusWhenPlaced(LayerID id) {
  list_.add_tick_callback([this, id, frames = 0](const Glib::RefPtr<Gdk::FrameClock>&) mutable {
    if (++frames < 2) return true;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (rows_[i].id == id) list_.get_row_at_index(static_cast<int>(i))->grab_focus();
    }
    return false;
  });
}

std::size_t LayersPanel::RowCount() const { return std::min(kMostRows, Session()->Doc().Layers().size()); }

const Layer& LayersPanel::LayerAt(std::size_t row) const {
  const auto& layers = Session()->Doc().Layers();
  return *layers[layers.size() - 1 - first_ - row];
}

void LayersPanel::PlaceStretch() {
  const std::size_t count = Session()->Doc().Layers().size();
  const std::size_t most = count - RowCount();
  const LayerID active = Session()->Layers().Active();
  const std::size_t place = count - 1 - Session()->Doc().IndexOfLayer(active);
  const bool isListed = place >= first_ && place - first_ < kMostRows;
  if (active != active_ && !isListed) first_ = place - std::min(place, kMostRows / 2);
  active_ = active;
  first_ = std::min(first_, most);
  above_.set_visible(first_ > 0);
  below_.set_visible(first_ < most);
}

bool LayersPanel::ShowsTheLayers() const {
  if (rows_.size() != RowCount()) return false;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (rows_[i].id != LayerAt(i).id) return false;
  }
  return true;
}

bool LayersPanel::Build() {
  rows_.clear();
  clicked_ = nullptr;
  const bool hadFocus = RemoveRows(list_);
  if (Session() == nullptr) return false;
  for (std::size_t i = 0; i < RowCount(); ++i) {
    rows_.push_back(MakeRow(LayerAt(i).id));
    list_.append(*rows_.back().content);
  }
  return hadFocus;
}

// The rows stay as long as the layers do: a name may be edited, and a click may be the first of two.
void LayersPanel::Refresh() {
  if (Session() != nullptr) PlaceStretch();
  const bool hadFocus = (Session() == nullptr || !ShowsTheLayers()) && Build();
  if (Session() == nullptr) return;
  Gtk::ListBoxRow* activeRow = nullptr;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const Row& row = rows_[i];
    const LayerSettings& settings = LayerAt(i).settings;
    row.visible->set_active(settings.visible);
    row.locked->set_active(settings.locked);
    row.locked->set_icon_name(settings.locked ? "changes-prevent-symbolic" : "changes-allow-symbolic");
    row.name->Show(settings.name);
    Gtk::ListBoxRow* const listed = list_.get_row_at_index(static_cast<int>(i));
    SetName(listed, settings.name);
    if (row.id == active_) activeRow = listed;
  }
  if (activeRow == nullptr) {
    list_.unselect_all();
    return;
  }
  list_.select_row(*activeRow);
  if (hadFocus) activeRow->grab_focus();
}

}  // namespace host
