#include "host/window/panels/HistoryPanel.h"

#include <gtkmm/label.h>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/widgets/Focus.h"

namespace host {
namespace {

// Beyond this only the last steps are listed.
constexpr std::size_t kMostRows = 200;

}  // namespace

HistoryPanel::HistoryPanel() {
  list_.set_selection_mode(Gtk::SelectionMode::BROWSE);
  gtk_accessible_update_property(GTK_ACCESSIBLE(list_.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, Tr("History"), -1);
  list_.signal_row_activated().connect([this](Gtk::ListBoxRow* row) {
    if (Session() == nullptr) return;
    SlideStep::End();
    const std::size_t count = Session()->Steps().Known().Count();
    const std::size_t first = count > kMostRows ? count - kMostRows : 0;
    Session()->Steps().GoTo(first + static_cast<std::size_t>(row->get_index()));
  });
  auto* const scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
  scrolled->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  scrolled->set_min_content_height(110);
  scrolled->set_child(list_);
  append(*scrolled);
}

// Row 0 is the state before the first listed step.
void HistoryPanel::Refresh() {
  const bool hadFocus = RemoveRows(list_);
  if (Session() == nullptr) return;
  const History& steps = Session()->Steps().Known();
  const std::size_t first = steps.Count() > kMostRows ? steps.Count() - kMostRows : 0;
  for (std::size_t position = first; position <= steps.Count(); ++position) {
    auto* const label = Gtk::make_managed<Gtk::Label>(position == first ? Tr("Opened") : steps.NameAt(position - 1));
    label->set_xalign(0);
    if (position > steps.Position()) label->add_css_class("dim-label");
    list_.append(*label);
  }
  if (steps.Position() < first) return;
  Gtk::ListBoxRow* const row = list_.get_row_at_index(static_cast<int>(steps.Position() - first));
  list_.select_row(*row);
  if (hadFocus) row->grab_focus();
}

}  // namespace host
