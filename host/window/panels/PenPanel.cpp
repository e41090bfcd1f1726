#include "host/window/panels/PenPanel.h"

#include <gtkmm/stringlist.h>

#include <algorithm>
#include <numbers>

#include "host/text/Localisation.h"
#include "host/window/LastStyle.h"
#include "host/window/SlideStep.h"
#include "host/window/panels/Section.h"
#include "host/window/widgets/Focus.h"

namespace host {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kWidest = 96;
constexpr auto kStyle = static_cast<std::size_t>(BrushField::kStyle);

/// Dashes that the panel offers; others are shown as they are.
struct DashChoice {
  Text name;
  std::vector<double> dashes;
};

const std::vector<DashChoice>& DashChoices() {
  static const std::vector<DashChoice> choices = {{N_("Without Gaps"), {}},
                                                  {N_("Dashed"), {4, 3}},
                                                  {N_("Short Dashes"), {2, 2}},
                                                  {N_("Dotted"), {0, 2}},
                                                  {N_("Dash and Dot"), {5, 2, 1, 2}}};
  return choices;
}

constexpr int kDashRow = 6;  // behind all fields of a pen

// Each field has the row of its number.
constexpr int RowOf(PenField field) { return static_cast<int>(field); }

}  // namespace

PenPanel::PenPanel()
    : size_(0, kWidest, 0.5, 2, Tr("Pen Width")),
      ratio_(0, 1, 0.05, 2, Tr("Nib Ratio")),
      angle_(0, 180, 1, 1, Tr("Nib Angle")),
      section_(NewSection(N_("Caps, Joins, Nib"))) {
  append(brush_);
  sizeMode_.set_model(Gtk::StringList::create({Tr("Absolute"), Tr("Relative")}));
  cap_.set_model(Gtk::StringList::create({Tr("Butt"), Tr("Square"), Tr("Round")}));
  join_.set_model(Gtk::StringList::create({Tr("Miter"), Tr("Bevel"), Tr("Round")}));
  grid_.Row(RowOf(PenField::kSize), Tr("Width"), size_);
  grid_.Row(RowOf(PenField::kSizeMode), Tr("Measure"), sizeMode_);
  details_.Row(RowOf(PenField::kCap), Tr("Caps"), cap_);
  details_.Row(RowOf(PenField::kJoin), Tr("Joins"), join_);
  details_.Row(RowOf(PenField::kRatio), Tr("Nib Ratio"), ratio_);
  details_.Row(RowOf(PenField::kAngle), Tr("Nib Angle"), angle_);
  std::vector<Glib::ustring> names;
  for (const DashChoice& choice : DashChoices()) names.emplace_back(Tr(choice.name));
  dashes_.set_model(Gtk::StringList::create(names));
  grid_.Row(kDashRow, Tr("Dashes"), dashes_);
  dashes_.property_selected().signal_changed().connect([this] { ChooseDashes(); });
  append(grid_);
  section_->set_child(details_);
  append(*section_);
  brush_.SignalChanged().connect([this](BrushField field, const AGBrush& brush, const std::string& burst) {
    if (Session() == nullptr) return;
    BeginStep(burst);
    Report(Session()->Objects().SetPenBrushField(Session()->Selection().IDs(), field, brush));
    NoteStyle(*Session());
  });
  size_.SignalChosen().connect([this](double) { Changed(PenField::kSize, "width"); });
  ratio_.SignalChosen().connect([this](double) { Changed(PenField::kRatio, "ratio"); });
  size_.SetMeasure(Measure::kLength);
  angle_.SetMeasure(Measure::kAngle);
  angle_.SignalChosen().connect([this](double) { Changed(PenField::kAngle, "angle"); });
  const std::pair<Gtk::DropDown*, PenField> choices[] = {
      {&sizeMode_, PenField::kSizeMode}, {&cap_, PenField::kCap}, {&join_, PenField::kJoin}};
  for (const auto& [choice, field] : choices) {
    choice->property_selected().signal_changed().connect([this, field = field] { Changed(field, ""); });
  }
}

void PenPanel::BeginStep(const std::string& burst) {
  if (burst.empty()) {
    SlideStep::End();
  } else {
    SlideStep::Continue(Session(), "pen " + burst);
  }
}

// What the controls show; only the field that was touched counts.
AGPen PenPanel::Entered() const {
  AGPen pen;
  pen.SetSize(size_.get_value());
  pen.SetSizeMode(static_cast<AGPenSizeMode>(sizeMode_.get_selected()));
  pen.SetLineCap(static_cast<AGPenLineCap>(cap_.get_selected()));
  pen.SetLineJoin(static_cast<AGPenLineJoin>(join_.get_selected()));
  pen.SetRatio(ratio_.get_value());
  pen.SetAngle(angle_.get_value() * kDegree);
  return pen;
}

void PenPanel::Changed(PenField field, const std::string& burst) {
  if (IsRefreshing() || Session() == nullptr || Session()->Selection().IsEmpty()) return;
  BeginStep(burst);
  Report(Session()->Objects().SetPenField(Session()->Selection().IDs(), field, Entered()));
  NoteStyle(*Session());
}

void PenPanel::ChooseDashes() {
  const guint index = dashes_.get_selected();
  if (IsRefreshing() || Session() == nullptr || index >= DashChoices().size()) return;
  BeginStep("");
  Report(Session()->Looks().SetDashes(Session()->Selection().IDs(), DashChoices()[index].dashes));
  NoteStyle(*Session());
}

// Those that are none of the choices show as those that differ do.
void PenPanel::ShowDashes() {
  const ObjectIDs& ids = Session()->Selection().IDs();
  const auto dashesOf = [this](ObjectID id) -> const std::vector<double>& {
    return Session()->Doc().Find(id)->marks.look.dashes;
  };
  const std::vector<double>& first = dashesOf(ids[0]);
  const auto choice = std::ranges::find(DashChoices(), first, &DashChoice::dashes);
  const bool isSame = std::ranges::all_of(ids, [&](ObjectID id) { return dashesOf(id) == first; });
  ShowChoice(&dashes_, static_cast<unsigned int>(choice - DashChoices().begin()),
             !isSame || choice == DashChoices().end());
  grid_.ShowMixed(kDashRow, !isSame);
}

void PenPanel::ShowNumber(PenField field, NumberField* control, double value, const PenFields& differs) {
  if (differs[RowOf(field)]) return control->ShowMixed();
  control->Show(value);
}

void PenPanel::Refresh() {
  const auto style = Session() == nullptr ? std::nullopt : StyleOf(Session()->Doc(), Session()->Selection().IDs());
  ShowOrHide(style.has_value());
  if (!style) return;
  size_.SetUnit(Session()->Doc().Aids().unit);
  const AGPen& pen = style->pen;
  const PenFields& differs = style->penDiffers;
  brush_.Show(pen.Brush(), style->penBrushDiffers);
  ShowNumber(PenField::kSize, &size_, pen.Size(), differs);
  ShowChoice(&sizeMode_, pen.SizeMode(), differs[RowOf(PenField::kSizeMode)]);
  ShowChoice(&cap_, pen.LineCap(), differs[RowOf(PenField::kCap)]);
  ShowChoice(&join_, pen.LineJoin(), differs[RowOf(PenField::kJoin)]);
  ShowNumber(PenField::kRatio, &ratio_, pen.Ratio(), differs);
  ShowNumber(PenField::kAngle, &angle_, pen.Angle() / kDegree, differs);
  ShowDashes();
  for (std::size_t row = 0; row < differs.size(); ++row) {
    (static_cast<int>(row) < RowOf(PenField::kCap) ? grid_ : details_).ShowMixed(static_cast<int>(row), differs[row]);
  }
  const bool draws = pen.Brush().Style() != kAGBrushStyleNone || style->penBrushDiffers[kStyle];
  ShowPart(grid_, draws);
  ShowPart(*section_, draws);
}

}  // namespace host
