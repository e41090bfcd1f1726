#include "host/window/panels/BrushPanel.h"

#include "host/window/SlideStep.h"

namespace host {

BrushPanel::BrushPanel() {
  append(editor_);
  editor_.SignalChanged().connect([this](const AGBrush& brush, const std::string& burst) {
    if (Session() == nullptr) return;
    if (burst.empty()) {
      SlideStep::End();
    } else {
      SlideStep::Continue(Session(), "brush " + burst);
    }
    Report(Session()->Objects().SetBrush(Session()->Selection().IDs(), brush));
  });
}

void BrushPanel::Refresh() {
  const bool any = Session() != nullptr && !Session()->Selection().IsEmpty();
  editor_.set_sensitive(any);
  if (any) editor_.Show(Session()->Doc().Find(Session()->Selection().IDs()[0])->brush);
}

}  // namespace host
