#include "host/window/panels/InspectorPanel.h"

#include <glibmm/main.h>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/widgets/Focus.h"

namespace host {
namespace {

constexpr unsigned int kIdlePeriod = 100;  // milliseconds

}  // namespace

InspectorPanel::InspectorPanel() {
  add_css_class("inspector");  // panels are described with a margin of their own
  none_.set_xalign(0);
  none_.set_wrap(true);
  none_.add_css_class("dim-label");
  append(none_);
}

Result<> InspectorPanel::Open() {
  if (Session() == nullptr || Session()->Selection().IsEmpty()) return Problem(N_("Nothing is selected"));
  return inspector_.Open(Session(), Session()->Selection().IDs());
}

void InspectorPanel::Refresh() {
  const Result<> opened = Open();
  const bool open = static_cast<bool>(opened);
  if (widget_ != nullptr) widget_->set_visible(open);
  none_.set_visible(!open);
  none_.set_text(open ? "" : opened.Why().Translated());
  if (!open) {
    idling_.disconnect();
    return;
  }
  Tell(inspector_.Fill());
  if (widget_ == nullptr || &widget_->Panel() != &inspector_.Panel()) Build();
  ShowControls();
  UpdateIdling();
}

void InspectorPanel::Build() {
  if (widget_ != nullptr) {
    TakeFocusFrom(*widget_);
    remove(*widget_);
  }
  widget_ = std::make_unique<PanelWidget>(
      inspector_.Panel(),
      [this](unsigned int controlID, const ControlWidget::SetValue& set, bool more) { Changed(controlID, set, more); });
  append(*widget_);
}

void InspectorPanel::ShowControls() {
  widget_->ShowControls([this](unsigned int controlID) { return inspector_.IsMixed(controlID); });
}

void InspectorPanel::Changed(unsigned int controlID, const ControlWidget::SetValue& set, bool more) {
  if (IsRefreshing() || Session() == nullptr || Session()->Selection().IsEmpty()) return;
  if (more) {
    SlideStep::Continue(Session(), "control " + std::to_string(controlID));
  } else {
    SlideStep::End();
  }
  std::string actionName;
  const auto done = inspector_.Change(controlID, set, &actionName);
  ShowControls();
  Tell(done);
}

// What the object refused stands above its panel until the panel is shown anew.
void InspectorPanel::Tell(const Result<>& done) {
  if (done) return;
  none_.set_text(done.Why().Translated());
  none_.set_visible(true);
}

// A panel may ask to be told now and then that nothing happens; while a step is open something does.
void InspectorPanel::UpdateIdling() {
  const bool wanted = inspector_.Wrapper().IsIdling();
  if (wanted == idling_.connected()) return;
  idling_.disconnect();
  if (!wanted) return;
  idling_ = Glib::signal_timeout().connect(
      [this] {
        if (Session() == nullptr || Session()->Steps().IsOpen()) return true;
        std::string actionName;
        const auto done = inspector_.Send(HostPanel::kEventIdle, 0, &actionName);
        ShowControls();
        Tell(done);
        return true;
      },
      kIdlePeriod);
}

}  // namespace host
