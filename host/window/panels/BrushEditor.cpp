#include "host/window/panels/BrushEditor.h"

#include <gtkmm/stringlist.h>

#include <cmath>
#include <numbers>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/widgets/Focus.h"

namespace host {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

// Each field has the row of its number.
int RowOf(BrushField field) { return static_cast<int>(field); }

std::vector<Glib::ustring> StyleNames(bool forFills) {
  std::vector<Glib::ustring> names{Tr("None"), Tr("Solid"), Tr("Pattern")};
  if (forFills) {
    names.emplace_back(Tr("Linear Gradient"));
    names.emplace_back(Tr("Radial Gradient"));
  }
  return names;
}

unsigned char Channel(double component) { return static_cast<unsigned char>(std::lround(component * 255)); }

}  // namespace

Gdk::RGBA ToRGBA(AGColor color) {
  Gdk::RGBA rgba;
  rgba.set_rgba(color.Red() / 255.0F, color.Green() / 255.0F, color.Blue() / 255.0F, color.Alpha() / 255.0F);
  return rgba;
}

AGColor FromRGBA(const Gdk::RGBA& color) {
  return {Channel(color.get_red()), Channel(color.get_green()), Channel(color.get_blue()), Channel(color.get_alpha())};
}

BrushEditor::BrushEditor(bool forFills)
    : forFills_(forFills),
      pattern_(1, AGBrush::kPatternCount, 1, 0, Tr("Pattern")),
      angle_(0, 360, 1, 1, Tr("Gradient Angle")),
      centerX_(0, 1, 0.01, 2, Tr("Center X")),
      centerY_(0, 1, 0.01, 2, Tr("Center Y")) {
  style_.set_model(Gtk::StringList::create(StyleNames(forFills)));
  fillMode_.set_model(Gtk::StringList::create({Tr("Even-Odd"), Tr("Winding")}));
  color_.set_use_alpha(true);
  color2_.set_use_alpha(true);
  blend_.set_range(0, 1);
  blend_.set_increments(0.01, 0.1);
  blend_.set_draw_value(false);
  SlideStep::Follow(blend_);
  Row(RowOf(BrushField::kStyle), Tr("Style"), style_);
  Row(RowOf(BrushField::kColor), Tr("Color"), color_);
  Row(RowOf(BrushField::kColor2), Tr("Color 2"), color2_);
  Row(RowOf(BrushField::kPattern), Tr("Pattern"), pattern_);
  Row(RowOf(BrushField::kBlend), Tr("Blend"), blend_);
  Row(RowOf(BrushField::kAngle), Tr("Angle (°)"), angle_);
  Row(RowOf(BrushField::kCenterX), Tr("Center X"), centerX_);
  Row(RowOf(BrushField::kCenterY), Tr("Center Y"), centerY_);
  Row(RowOf(BrushField::kFillMode), Tr("Filling"), fillMode_);

  style_.property_selected().signal_changed().connect([this] { Tell(BrushField::kStyle, ""); });
  fillMode_.property_selected().signal_changed().connect([this] { Tell(BrushField::kFillMode, ""); });
  color_.signal_color_set().connect([this] { Tell(BrushField::kColor, ""); });
  color2_.signal_color_set().connect([this] { Tell(BrushField::kColor2, ""); });
  blend_.signal_value_changed().connect([this] { Tell(BrushField::kBlend, "blend"); });
  pattern_.SignalChosen().connect([this](double) { Tell(BrushField::kPattern, "pattern"); });
  angle_.SetMeasure(Measure::kAngle);
  angle_.SignalChosen().connect([this](double) { Tell(BrushField::kAngle, "gradient angle"); });
  centerX_.SignalChosen().connect([this](double) { Tell(BrushField::kCenterX, "center x"); });
  centerY_.SignalChosen().connect([this](double) { Tell(BrushField::kCenterY, "center y"); });
  UseWheelWithFocusAlone(&blend_);
  ShowWhatCounts();
}

void BrushEditor::Show(const AGBrush& brush, const BrushFields& differs) {
  showing_ = true;
  brush_ = brush;
  differs_ = differs;
  ShowChoice(&style_, brush.Style(), differs[RowOf(BrushField::kStyle)]);
  color_.set_rgba(ToRGBA(brush.Color()));
  color2_.set_rgba(ToRGBA(brush.Color2()));
  ShowNumber(BrushField::kPattern, &pattern_, brush.PatternIndex());
  blend_.set_value(brush.GradientBlend());
  ShowNumber(BrushField::kAngle, &angle_, brush.GradientAngle() / kDegree);
  ShowNumber(BrushField::kCenterX, &centerX_, brush.GradientCenterX());
  ShowNumber(BrushField::kCenterY, &centerY_, brush.GradientCenterY());
  ShowChoice(&fillMode_, brush.FillMode(), differs[RowOf(BrushField::kFillMode)]);
  ShowWhatCounts();
  showing_ = false;
}

void BrushEditor::ShowNumber(BrushField field, NumberField* control, double value) {
  if (differs_[RowOf(field)]) return control->ShowMixed();
  control->Show(value);
}

// What the controls show; only the field that was touched counts.
AGBrush BrushEditor::Entered() const {
  AGBrush brush(static_cast<AGBrushStyle>(style_.get_selected()), FromRGBA(color_.get_rgba()),
                FromRGBA(color2_.get_rgba()));
  brush.SetPatternIndex(static_cast<unsigned int>(pattern_.get_value_as_int()));
  brush.SetGradientBlend(blend_.get_value());
  brush.SetGradientAngle(angle_.get_value() * kDegree);
  brush.SetGradientCenterX(centerX_.get_value());
  brush.SetGradientCenterY(centerY_.get_value());
  brush.SetFillMode(static_cast<AGBrushFillMode>(fillMode_.get_selected()));
  return brush;
}

void BrushEditor::Tell(BrushField field, const std::string& burst) {
  if (showing_) return;
  TakeField(field, Entered(), &brush_);
  differs_.reset(RowOf(field));
  ShowWhatCounts();
  changed_.emit(field, brush_, burst);
}

void BrushEditor::ShowWhatCounts() {
  const unsigned int style = style_.get_selected();
  const bool known = !differs_[RowOf(BrushField::kStyle)];
  const bool inks = style != kAGBrushStyleNone;
  const bool shown[] = {true,
                        inks,
                        known && style > kAGBrushStyleSolid,
                        known && style == kAGBrushStylePattern,
                        known && style > kAGBrushStylePattern,
                        known && style == kAGBrushStyleLinearGradient,
                        known && style == kAGBrushStyleRadialGradient,
                        known && style == kAGBrushStyleRadialGradient,
                        forFills_ && inks};
  for (int row = 0; row < static_cast<int>(std::size(shown)); ++row) {
    ShowPart(*get_child_at(0, row), shown[row]);
    ShowPart(*get_child_at(1, row), shown[row]);
    ShowMixed(row, differs_[row]);
  }
}

}  // namespace host
