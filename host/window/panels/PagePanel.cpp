#include "host/window/panels/PagePanel.h"

#include <gtkmm/stringlist.h>

#include <algorithm>
#include <cmath>

#include "host/model/Paper.h"
#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/panels/BrushEditor.h"

namespace host {
namespace {

constexpr double kLargest = 100000;  // map units
constexpr double kAlmost = 0.01;     // what a size in the file may differ from that of a paper

bool AreClose(const AGSize& a, const AGSize& b) {
  return std::fabs(a.width - b.width) < kAlmost && std::fabs(a.height - b.height) < kAlmost;
}

// Behind the entry for sizes without a name.
guint EntryOf(const AGSize& size) {
  const auto found = std::ranges::find_if(
      kPapers, [&](const Paper& paper) { return AreClose(paper.size, Oriented(size, Orientation::kPortrait)); });
  return found == std::end(kPapers) ? 0 : static_cast<guint>(found - std::begin(kPapers)) + 1;
}

}  // namespace

PagePanel::PagePanel()
    : width_(1, kLargest, 10, 2, Tr("Page Width")),
      height_(1, kLargest, 10, 2, Tr("Page Height")),
      gridStep_(PageAids::kLeastGrid, PageAids::kMostGrid, 1, 2, Tr("Grid Step")),
      fit_(Tr("Fit to Drawing")) {
  std::vector<Glib::ustring> names{Tr("Custom")};
  for (const Paper& paper : kPapers) names.emplace_back(paper.name);
  paper_.set_model(Gtk::StringList::create(names));
  orientation_.set_model(Gtk::StringList::create({Tr("Portrait"), Tr("Landscape")}));
  grid_.Row(0, Tr("Paper"), paper_);
  grid_.Row(1, Tr("Orientation"), orientation_);
  grid_.Row(2, Tr("Width"), width_);
  grid_.Row(3, Tr("Height"), height_);
  grid_.Row(4, Tr("Background"), background_);
  std::vector<Glib::ustring> units;
  for (const LengthUnit unit : kLengthUnits) units.emplace_back(NameOf(unit));
  unit_.set_model(Gtk::StringList::create(units));
  grid_.Row(5, Tr("Unit"), unit_);
  grid_.Row(6, Tr("Grid Step"), gridStep_);
  grid_.attach(fit_, 1, 7);
  append(grid_);
  for (NumberField* field : {&width_, &height_, &gridStep_}) field->SetMeasure(Measure::kLength);
  width_.SignalChosen().connect([this](double width) { SetSize({width, height_.get_value()}, "page width"); });
  height_.SignalChosen().connect([this](double height) { SetSize({width_.get_value(), height}, "page height"); });
  paper_.property_selected().signal_changed().connect([this] { ChoosePaper(); });
  unit_.property_selected().signal_changed().connect([this] { ChooseUnit(); });
  gridStep_.SignalChosen().connect([this](double step) { SetGridStep(step); });
  orientation_.property_selected().signal_changed().connect([this] { ChooseOrientation(); });
  background_.signal_color_set().connect([this] {
    if (Session() == nullptr) return;
    SlideStep::End();
    Session()->SetBackground(FromRGBA(background_.get_rgba()));
  });
  fit_.signal_clicked().connect([this] {
    if (Session() == nullptr) return;
    SlideStep::End();
    Report(Session()->FitPage());
  });
}

void PagePanel::SetSize(const AGSize& size, const char* burst) {
  if (Session() == nullptr || IsRefreshing()) return;
  if (burst == nullptr) {
    SlideStep::End();
  } else {
    SlideStep::Continue(Session(), burst);
  }
  Report(Session()->SetPage(size));
}

void PagePanel::ChoosePaper() {
  const guint entry = paper_.get_selected();
  if (Session() == nullptr || entry == 0 || entry > std::size(kPapers)) return;
  const AGSize old = Session()->Doc().Page();
  const bool isWide = old.width > old.height;
  SetSize(Oriented(kPapers[entry - 1].size, isWide ? Orientation::kLandscape : Orientation::kPortrait), nullptr);
}

void PagePanel::ChooseOrientation() {
  if (Session() == nullptr) return;
  SetSize(Oriented(Session()->Doc().Page(),
                   orientation_.get_selected() == 0 ? Orientation::kPortrait : Orientation::kLandscape),
          nullptr);
}

void PagePanel::ChooseUnit() {
  const guint index = unit_.get_selected();
  if (Session() == nullptr || IsRefreshing() || index >= std::size(kLengthUnits)) return;
  SlideStep::End();
  PageAids aids = Session()->Doc().Aids();
  aids.unit = kLengthUnits[index];
  Report(Session()->SetAids(std::move(aids), Tr("Change Unit")));
}

void PagePanel::SetGridStep(double step) {
  if (Session() == nullptr || IsRefreshing()) return;
  SlideStep::Continue(Session(), "grid step");
  PageAids aids = Session()->Doc().Aids();
  aids.gridStep = step;
  Report(Session()->SetAids(std::move(aids), Tr("Change Grid")));
}

void PagePanel::Refresh() {
  grid_.set_sensitive(Session() != nullptr);
  if (Session() == nullptr) return;
  const AGSize& page = Session()->Doc().Page();
  const PageAids& aids = Session()->Doc().Aids();
  for (NumberField* field : {&width_, &height_, &gridStep_}) field->SetUnit(aids.unit);
  unit_.set_selected(static_cast<guint>(aids.unit));
  gridStep_.Show(aids.gridStep);
  paper_.set_selected(EntryOf(page));
  orientation_.set_selected(page.width > page.height ? 1 : 0);
  width_.Show(page.width);
  height_.Show(page.height);
  background_.set_rgba(ToRGBA(Session()->Doc().Background()));
}

}  // namespace host
