#include "host/window/panels/BrushPanel.h"

#include "host/window/LastStyle.h"
#include "host/window/SlideStep.h"

namespace host {

BrushPanel::BrushPanel() {
  append(editor_);
  editor_.SignalChanged().connect([this](BrushField field, const AGBrush& brush, const std::string& burst) {
    if (Session() == nullptr) return;
    if (burst.empty()) {
      SlideStep::End();
    } else {
      SlideStep::Continue(Session(), "brush " + burst);
    }
    Report(Session()->Objects().SetBrushField(Session()->Selection().IDs(), field, brush));
    NoteStyle(*Session());
  });
}

void BrushPanel::Refresh() {
  const auto style = Session() == nullptr ? std::nullopt : StyleOf(Session()->Doc(), Session()->Selection().IDs());
  ShowOrHide(style.has_value());
  if (style) editor_.Show(style->brush, style->brushDiffers);
}

}  // namespace host
