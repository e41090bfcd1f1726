#include "host/window/panels/PenPanel.h"

#include <gtkmm/stringlist.h>

#include <numbers>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"

namespace host {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kWidest = 96;

}  // namespace

PenPanel::PenPanel()
    : size_(0, kWidest, 0.5, 2, Tr("Pen Width")),
      ratio_(0, 1, 0.05, 2, Tr("Nib Ratio")),
      angle_(0, 180, 1, 1, Tr("Nib Angle")) {
  append(brush_);
  sizeMode_.set_model(Gtk::StringList::create({Tr("Absolute"), Tr("Relative")}));
  cap_.set_model(Gtk::StringList::create({Tr("Butt"), Tr("Square"), Tr("Round")}));
  join_.set_model(Gtk::StringList::create({Tr("Miter"), Tr("Bevel"), Tr("Round")}));
  grid_.Row(0, Tr("Width"), size_);
  grid_.Row(1, Tr("Measure"), sizeMode_);
  grid_.Row(2, Tr("Caps"), cap_);
  grid_.Row(3, Tr("Joins"), join_);
  grid_.Row(4, Tr("Nib Ratio"), ratio_);
  grid_.Row(5, Tr("Nib Angle"), angle_);
  append(grid_);
  brush_.SignalChanged().connect([this](const AGBrush& brush, const std::string& burst) {
    pen_.SetBrush(brush);
    Changed(burst);
  });
  size_.SignalChosen().connect([this](double) { Changed("width"); });
  ratio_.SignalChosen().connect([this](double) { Changed("ratio"); });
  angle_.SignalChosen().connect([this](double) { Changed("angle"); });
  for (Gtk::DropDown* choice : {&sizeMode_, &cap_, &join_}) {
    choice->property_selected().signal_changed().connect([this] { Changed(""); });
  }
}

void PenPanel::Changed(const std::string& burst) {
  if (IsRefreshing() || Session() == nullptr || Session()->Selection().IsEmpty()) return;
  pen_.SetSize(size_.get_value());
  pen_.SetSizeMode(static_cast<AGPenSizeMode>(sizeMode_.get_selected()));
  pen_.SetLineCap(static_cast<AGPenLineCap>(cap_.get_selected()));
  pen_.SetLineJoin(static_cast<AGPenLineJoin>(join_.get_selected()));
  pen_.SetRatio(ratio_.get_value());
  pen_.SetAngle(angle_.get_value() * kDegree);
  if (burst.empty()) {
    SlideStep::End();
  } else {
    SlideStep::Continue(Session(), "pen " + burst);
  }
  Report(Session()->Objects().SetPen(Session()->Selection().IDs(), pen_));
}

void PenPanel::Refresh() {
  const bool any = Session() != nullptr && !Session()->Selection().IsEmpty();
  set_sensitive(any);
  if (!any) return;
  pen_ = Session()->Doc().Find(Session()->Selection().IDs()[0])->pen;
  brush_.Show(pen_.Brush());
  size_.Show(pen_.Size());
  sizeMode_.set_selected(pen_.SizeMode());
  cap_.set_selected(pen_.LineCap());
  join_.set_selected(pen_.LineJoin());
  ratio_.Show(pen_.Ratio());
  angle_.Show(pen_.Angle() / kDegree);
}

}  // namespace host
