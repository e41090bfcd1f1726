#include "host/window/panels/HistoryPanel.h"

#include <gtkmm/adjustment.h>
#include <gtkmm/label.h>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/widgets/Focus.h"
#include "host/window/widgets/Tip.h"

namespace host {
namespace {

// Beyond this only the last steps are listed.
constexpr std::size_t kMostRows = 200;
constexpr int kLeastHeight = 60;

}  // namespace

HistoryPanel::HistoryPanel() {
  list_.set_selection_mode(Gtk::SelectionMode::BROWSE);
  GiveName(&list_, Tr("History"));
  list_.signal_row_activated().connect([this](Gtk::ListBoxRow* row) {
    if (Session() == nullptr) return;
    SlideStep::End();
    const std::size_t count = Session()->Steps().Known().Count();
    const std::size_t first = count > kMostRows ? count - kMostRows : 0;
    Session()->Steps().GoTo(first + static_cast<std::size_t>(row->get_index()));
  });
  scrolled_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  scrolled_.set_focusable(false);
  scrolled_.set_min_content_height(kLeastHeight);
  scrolled_.set_child(list_);
  scrolled_.get_vadjustment()->signal_changed().connect([this] { ScrollToRow(); });
  append(scrolled_);
}

// Rows are as high as each other. The list's height is known when it is placed, which tells of that.
void HistoryPanel::ScrollToRow() {
  const auto place = scrolled_.get_vadjustment();
  const Gtk::ListBoxRow* const row = list_.get_selected_row();
  if (row == nullptr || rows_ == 0) return;
  const double height = place->get_upper() / static_cast<double>(rows_);
  place->clamp_page(row->get_index() * height, (row->get_index() + 1) * height);
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
    SetName(list_.get_row_at_index(static_cast<int>(position - first)), label->get_text());
  }
  rows_ = steps.Count() - first + 1;
  if (steps.Position() < first) return;
  Gtk::ListBoxRow* const row = list_.get_row_at_index(static_cast<int>(steps.Position() - first));
  list_.select_row(*row);
  ScrollToRow();
  if (hadFocus) row->grab_focus();
}

}  // namespace host
