#include "host/window/panels/ControlWidget.h"

#include <gdkmm/pixbuf.h>
#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/colorbutton.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/scale.h>
#include <gtkmm/stringlist.h>

#include <algorithm>

#include "host/text/DisplayText.h"
#include "host/window/SlideStep.h"
#include "host/window/panels/BrushEditor.h"
#include "host/window/widgets/NumberField.h"
#include "host/window/widgets/TextField.h"

namespace host {
namespace {

constexpr double kUnbounded = 1e9;

void GetRange(const HostControl& control, double* least, double* most) {
  *least = -kUnbounded;
  *most = kUnbounded;
  if (control.GetProperty(kAKGUIPropertyHasRange) == 0) return;
  control.GetRange(least, most);
  if (*least > *most) std::swap(*least, *most);
}

class LabelWidget final : public ControlWidget {
 public:
  LabelWidget(const HostControl& control, Changed changed) : ControlWidget(control, std::move(changed)) {
    label_.set_xalign(0);
    label_.set_ellipsize(Pango::EllipsizeMode::END);
  }
  Gtk::Widget& Widget() override { return label_; }

 private:
  void ShowValue(const HostControl& control, bool) override {
    label_.set_text(DisplayText(control.GetTitle()));
    label_.set_tooltip_text(label_.get_text());
  }
  Gtk::Label label_;
};

double Least(const HostControl& control) {
  double least = 0;
  double most = 0;
  GetRange(control, &least, &most);
  return least;
}

double Most(const HostControl& control) {
  double least = 0;
  double most = 0;
  GetRange(control, &least, &most);
  return most;
}

class NumberWidget final : public ControlWidget {
 public:
  NumberWidget(const HostControl& control, Changed changed)
      : ControlWidget(control, std::move(changed)),
        field_(Least(control), Most(control), control.Step(), std::clamp(control.GetValuePrecision(), 0, 9), "") {
    field_.HideButtons();  // panels are described without room for them
    field_.set_width_chars(4);
    field_.set_max_width_chars(4);
    field_.SignalChosen().connect([this](double value) {
      Tell([value](AKGUIDesc& panel, unsigned int id) { panel.SetValueAsFloat64(id, value); }, true);
    });
  }
  Gtk::Widget& Widget() override { return field_; }

 private:
  void ShowValue(const HostControl& control, bool mixed) override {
    // A control becomes one of a time when it is set as one, which may be after it was made.
    if (control.ShowsTime() && !showsTime_) ShowTimes(control.GetValuePrecision());
    if (mixed) return field_.ShowMixed();
    field_.Show(control.GetValueAsFloat64());
  }

  void ShowTimes(int precision) {
    showsTime_ = true;
    field_.SetForm([precision](double seconds) { return HostControl::TimeText(seconds, precision); },
                   [](const std::string& text, double* seconds) { return HostControl::ReadTime(text, seconds); });
  }

  NumberField field_;
  bool showsTime_ = false;
};

class SliderWidget final : public ControlWidget {
 public:
  SliderWidget(const HostControl& control, Changed changed) : ControlWidget(control, std::move(changed)) {
    const double least = Least(control);
    const double most = Most(control);
    scale_.set_range(least, most > least ? most : least + 1);
    scale_.set_increments((most - least) / 100, (most - least) / 10);
    scale_.set_draw_value(false);
    UseWheelWithFocusAlone(&scale_);
    SlideStep::Follow(scale_);
    scale_.signal_value_changed().connect([this] {
      const double value = scale_.get_value();
      Tell([value](AKGUIDesc& panel, unsigned int id) { panel.SetValueAsFloat64(id, value); }, true);
    });
  }
  Gtk::Widget& Widget() override { return scale_; }

 private:
  void ShowValue(const HostControl& control, bool) override { scale_.set_value(control.GetValueAsFloat64()); }
  Gtk::Scale scale_{Gtk::Orientation::HORIZONTAL};
};

class CheckWidget final : public ControlWidget {
 public:
  CheckWidget(const HostControl& control, Changed changed) : ControlWidget(control, std::move(changed)) {
    check_.signal_toggled().connect([this] {
      const bool on = check_.get_active();
      Tell([on](AKGUIDesc& panel, unsigned int id) { panel.SetValueAsBool(id, on); }, false);
    });
  }
  Gtk::Widget& Widget() override { return check_; }

 private:
  void ShowValue(const HostControl& control, bool mixed) override {
    check_.set_label(DisplayText(control.GetTitle()));
    check_.set_inconsistent(mixed);
    check_.set_active(control.GetValueAsBool());
  }
  Gtk::CheckButton check_;
};

class PopUpWidget final : public ControlWidget {
 public:
  PopUpWidget(const HostControl& control, Changed changed) : ControlWidget(control, std::move(changed)) {
    menu_.property_selected().signal_changed().connect([this] {
      const unsigned int index = menu_.get_selected();
      Tell([index](AKGUIDesc& panel, unsigned int id) { panel.SetMenuIndex(id, index); }, false);
    });
  }
  Gtk::Widget& Widget() override { return menu_; }

 private:
  void ShowValue(const HostControl& control, bool mixed) override {
    std::vector<Glib::ustring> items;
    for (unsigned int i = 0; i < control.GetMenuItemCount(); ++i) {
      items.emplace_back(DisplayText(control.GetMenuItemAtIndex(i)));
    }
    if (!(items == items_)) menu_.set_model(Gtk::StringList::create(items));
    items_ = items;
    menu_.set_selected(mixed || control.GetMenuIndex() >= items.size() ? GTK_INVALID_LIST_POSITION
                                                                       : control.GetMenuIndex());
  }
  Gtk::DropDown menu_;
  std::vector<Glib::ustring> items_;
};

class ButtonWidget final : public ControlWidget {
 public:
  ButtonWidget(const HostControl& control, Changed changed) : ControlWidget(control, std::move(changed)) {
    button_.signal_clicked().connect([this] { Tell([](AKGUIDesc&, unsigned int) {}, false); });
  }
  Gtk::Widget& Widget() override { return button_; }

 private:
  void ShowValue(const HostControl& control, bool) override {
    if (control.GetXPMIcon() == nullptr) {
      button_.set_label(DisplayText(control.GetTitle()));
      return;
    }
    const auto picture = Gdk::Pixbuf::create_from_xpm_data(control.GetXPMIcon());
    auto* const image = Gtk::make_managed<Gtk::Image>(picture);
    button_.set_child(*image);
    button_.set_tooltip_text(DisplayText(control.GetTitle()));
  }
  Gtk::Button button_;
};

class ColorWidget final : public ControlWidget {
 public:
  ColorWidget(const HostControl& control, Changed changed) : ControlWidget(control, std::move(changed)) {
    button_.set_use_alpha(true);
    button_.signal_color_set().connect([this] {
      const AGColor color = FromRGBA(button_.get_rgba());
      Tell([color](AKGUIDesc& panel, unsigned int id) { panel.SetValueAsAGColor(id, color); }, false);
    });
  }
  Gtk::Widget& Widget() override { return button_; }

 private:
  void ShowValue(const HostControl& control, bool) override { button_.set_rgba(ToRGBA(control.GetValueAsAGColor())); }
  Gtk::ColorButton button_;
};

class TextWidget final : public ControlWidget {
 public:
  TextWidget(const HostControl& control, Changed changed) : ControlWidget(control, std::move(changed)) {
    field_.SignalChosen().connect([this](const Glib::ustring& entered) {
      const AKString text = TextForBundles(entered.raw());
      Tell([text](AKGUIDesc& panel, unsigned int id) { panel.SetValueAsString(id, text); }, false);
    });
  }
  Gtk::Widget& Widget() override { return field_; }

 private:
  void ShowValue(const HostControl& control, bool mixed) override {
    field_.Show(mixed ? std::string() : DisplayText(control.GetValueAsString()));
  }
  TextField field_;
};

}  // namespace

std::unique_ptr<ControlWidget> ControlWidget::Make(const HostControl& control, Changed changed) {
  switch (control.Type()) {
    case ControlType::kEditNum:
      return std::make_unique<NumberWidget>(control, std::move(changed));
    case ControlType::kSlider:
      return std::make_unique<SliderWidget>(control, std::move(changed));
    case ControlType::kCheckBox:
      return std::make_unique<CheckWidget>(control, std::move(changed));
    case ControlType::kPopUp:
      return std::make_unique<PopUpWidget>(control, std::move(changed));
    case ControlType::kButton:
      return std::make_unique<ButtonWidget>(control, std::move(changed));
    case ControlType::kColor:
      return std::make_unique<ColorWidget>(control, std::move(changed));
    case ControlType::kEditText:
      return std::make_unique<TextWidget>(control, std::move(changed));
    default:
      return std::make_unique<LabelWidget>(control, std::move(changed));
  }
}

void ControlWidget::Show(const HostControl& control, bool mixed) {
  showing_ = true;
  Widget().set_visible(control.IsVisible());
  Widget().set_sensitive(control.IsEnabled());
  if (!control.Tip().IsEmpty()) Widget().set_tooltip_text(DisplayText(control.Tip()));
  if (!IsHeld(Widget())) ShowValue(control, mixed);
  showing_ = false;
}

}  // namespace host
