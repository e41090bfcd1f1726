#include "host/window/panels/BrushEditor.h"

#include <gtkmm/stringlist.h>

#include <cmath>
#include <numbers>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"

namespace host {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

// The rows of the grid.
enum Row : int { kStyle, kColor, kColor2, kPattern, kBlend, kAngle, kCenterX, kCenterY, kFillMode };

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
  Row(kStyle, Tr("Style"), style_);
  Row(kColor, Tr("Color"), color_);
  Row(kColor2, Tr("Color 2"), color2_);
  Row(kPattern, Tr("Pattern"), pattern_);
  Row(kBlend, Tr("Blend"), blend_);
  Row(kAngle, Tr("Angle (°)"), angle_);
  Row(kCenterX, Tr("Center X"), centerX_);
  Row(kCenterY, Tr("Center Y"), centerY_);
  Row(kFillMode, Tr("Filling"), fillMode_);

  style_.property_selected().signal_changed().connect([this] { Changed(""); });
  fillMode_.property_selected().signal_changed().connect([this] { Changed(""); });
  color_.signal_color_set().connect([this] { Changed(""); });
  color2_.signal_color_set().connect([this] { Changed(""); });
  blend_.signal_value_changed().connect([this] { Changed("blend"); });
  pattern_.SignalChosen().connect([this](double) { Changed("pattern"); });
  angle_.SignalChosen().connect([this](double) { Changed("gradient angle"); });
  centerX_.SignalChosen().connect([this](double) { Changed("center x"); });
  centerY_.SignalChosen().connect([this](double) { Changed("center y"); });
  UseWheelWithFocusAlone(&blend_);
  ShowWhatCounts();
}

void BrushEditor::Show(const AGBrush& brush) {
  showing_ = true;
  brush_ = brush;
  style_.set_selected(brush.Style());
  color_.set_rgba(ToRGBA(brush.Color()));
  color2_.set_rgba(ToRGBA(brush.Color2()));
  pattern_.Show(brush.PatternIndex());
  blend_.set_value(brush.GradientBlend());
  angle_.Show(brush.GradientAngle() / kDegree);
  centerX_.Show(brush.GradientCenterX());
  centerY_.Show(brush.GradientCenterY());
  fillMode_.set_selected(brush.FillMode());
  ShowWhatCounts();
  showing_ = false;
}

// A colour that was never chosen is transparent, and a style with it would show nothing.
void BrushEditor::Take(AGBrush* brush) const {
  AGColor color = FromRGBA(color_.get_rgba());
  AGColor color2 = FromRGBA(color2_.get_rgba());
  const unsigned int style = style_.get_selected();
  if (style != brush->Style()) {
    if (style != kAGBrushStyleNone && color.Alpha() == 0) color = kAGColorBlack;
    if (style > kAGBrushStyleSolid && color2.Alpha() == 0) color2 = kAGColorWhite;
    brush->SetStyle(static_cast<AGBrushStyle>(style));
  }
  brush->SetColor(color);
  brush->SetColor2(color2);
  brush->SetPatternIndex(static_cast<unsigned int>(pattern_.get_value_as_int()));
  brush->SetGradientBlend(blend_.get_value());
  brush->SetGradientAngle(angle_.get_value() * kDegree);
  brush->SetGradientCenterX(centerX_.get_value());
  brush->SetGradientCenterY(centerY_.get_value());
  brush->SetFillMode(static_cast<AGBrushFillMode>(fillMode_.get_selected()));
}

void BrushEditor::Changed(const std::string& burst) {
  if (showing_) return;
  AGBrush brush(brush_);
  Take(&brush);
  brush_ = brush;
  ShowWhatCounts();
  changed_.emit(brush, burst);
}

void BrushEditor::ShowWhatCounts() {
  const unsigned int style = style_.get_selected();
  const bool shown[] = {true,
                        style != kAGBrushStyleNone,
                        style > kAGBrushStyleSolid,
                        style == kAGBrushStylePattern,
                        style > kAGBrushStylePattern,
                        style == kAGBrushStyleLinearGradient,
                        style == kAGBrushStyleRadialGradient,
                        style == kAGBrushStyleRadialGradient,
                        forFills_ && style != kAGBrushStyleNone};
  for (int row = kStyle; row <= kFillMode; ++row) {
    get_child_at(0, row)->set_visible(shown[row]);
    get_child_at(1, row)->set_visible(shown[row]);
  }
}

}  // namespace host
