// Guides on the canvas.
#include <gtkmm/snapshot.h>

#include <cmath>

#include "host/window/SlideStep.h"
#include "host/window/canvas/CanvasView.h"

namespace host {

void CanvasView::SetGuides(bool shown, bool locked) {
  guidesShown_ = shown;
  guidesLocked_ = locked;
  guides_.Cancel();
  guides_.ChooseNone();
  queue_draw();
}

// What lies on a guide goes before it, and so do handles: a guide is long enough to be taken elsewhere.
std::optional<Guide> CanvasView::GuideAt(const AGPoint& point, PointerModifiers modifiers) const {
  if (!guidesShown_ || guidesLocked_ || tool_.NewClass() || tool_.IsDragging()) return std::nullopt;
  const auto guide = guides_.GuideAt(point);
  if (!guide) return std::nullopt;
  const PointerTool::Hover hover = tool_.HoverAt(point, modifiers);
  return hover.object == kNoObjectID && hover.cursor == PointerTool::Cursor::kArrow ? guide : std::nullopt;
}

void CanvasView::PressRuler(int axis) {
  if (session_ == nullptr || !guidesShown_ || guidesLocked_) return;
  SlideStep::End();
  grab_focus();
  guides_.PressOnRuler(axis);
}

void CanvasView::DragRuler(const AGPoint& point, Gdk::ModifierType state) {
  if (!guides_.IsActive()) return;
  dragPoint_ = point;
  guides_.Motion(point, Size(), (state & Gdk::ModifierType::ALT_MASK) != Gdk::ModifierType{});
  queue_draw();
}

void CanvasView::ReleaseRuler() {
  if (!guides_.IsActive()) return;
  SlideStep::End();
  if (const auto done = guides_.Release(); !done) problem_.emit(done.Why());
  if (guides_.Chosen()) session_->Selection().SelectNone();
  queue_draw();
}

void CanvasView::OnSelectionChanged() {
  if (!session_->Selection().IsEmpty()) guides_.ChooseNone();
  queue_draw();
}

// A line a guide, one pixel of the view wide.
void CanvasView::AppendGuides(Gtk::Snapshot& snapshot) {
  if (!guidesShown_) return;
  const AGSize size = Size();
  const GdkRGBA plain{0.05F, 0.6F, 0.75F, 0.85F};
  const GdkRGBA chosen{0.9F, 0.25F, 0.45F, 1};
  const auto append = [&](const Guide& guide, const GdkRGBA& color) {
    const AGPoint at = view_.ToView({guide.place, guide.place});
    graphene_rect_t line;
    if (guide.axis == 0) {
      graphene_rect_init(&line, static_cast<float>(std::floor(at.x)), 0, 1, static_cast<float>(size.height));
    } else {
      graphene_rect_init(&line, 0, static_cast<float>(std::floor(at.y)), static_cast<float>(size.width), 1);
    }
    gtk_snapshot_append_color(snapshot.gobj(), &color, &line);
  };
  for (int axis = 0; axis < 2; ++axis) {
    for (const double place : session_->Doc().Aids().Guides(axis)) {
      const Guide guide{axis, place};
      if (guides_.Origin() != guide) append(guide, guides_.Chosen() == guide ? chosen : plain);
    }
  }
  if (guides_.Dragged()) append(*guides_.Dragged(), chosen);
}

}  // namespace host
