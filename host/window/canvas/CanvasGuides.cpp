// Guides on the canvas.
#include <gtkmm/snapshot.h>

#include <algorithm>
#include <cmath>

#include "host/window/SlideStep.h"
#include "host/window/canvas/CanvasView.h"

namespace host {

void CanvasView::SetGuides(bool shown, bool locked) {
  if (shown == guidesShown_ && locked == guidesLocked_) return;
  guidesShown_ = shown;
  guidesLocked_ = locked;
  guides_.Cancel();
  guides_.ChooseNone();
  DescribeSoon();
  queue_draw();
}

// What lies on a guide goes before it, and so do handles: a guide is long enough to be taken elsewhere.
std::optional<Guide> CanvasView::GuideAt(const AGPoint& point, PointerModifiers modifiers) const {
  if (!CanEditGuides() || tool_.NewClass() || tool_.IsDragging()) return std::nullopt;
  const auto guide = guides_.GuideAt(point);
  if (!guide) return std::nullopt;
  const PointerTool::Hover hover = tool_.HoverAt(point, modifiers);
  return hover.object == kNoObjectID && hover.cursor == PointerTool::Cursor::kArrow ? guide : std::nullopt;
}

void CanvasView::PressRuler(int axis) {
  if (!CanEditGuides()) return;
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
  GuideChosen();
}

// What the arrow keys and Delete act on is either a guide or objects.
void CanvasView::GuideChosen() {
  if (guides_.Chosen()) session_->Selection().SelectNone();
  DescribeSoon();
  queue_draw();
}

void CanvasView::OnAidsChanged() {
  DescribeSoon();
  queue_draw();
}

void CanvasView::AddGuide(int axis) {
  if (!CanEditGuides()) return;
  AGRect box;
  AGPoint place = MiddlePlace();
  place = {std::round(place.x), std::round(place.y)};
  if (session_->Selection().GetShownBox(&box)) place = box.Center();
  grab_focus();
  if (const auto done = guides_.Add({axis, axis == 0 ? place.x : place.y}); !done) problem_.emit(done.Why());
  GuideChosen();
}

void CanvasView::ChooseGuide(bool backwards) {
  if (!CanEditGuides() || !guides_.ChooseNext(backwards)) return;
  grab_focus();
  GuideChosen();
  const Guide guide = *guides_.Chosen();
  AGPoint place = MiddlePlace();
  (guide.axis == 0 ? place.x : place.y) = guide.place;
  if (view_.Reveal({place.x, place.y, place.x, place.y}, Size(), 1)) ViewChanged();
}

// True when a guide has the arrow keys; those along it do nothing.
bool CanvasView::NudgeGuide(const AGPoint& by) {
  const auto guide = guides_.Chosen();
  if (!guide) return false;
  const double step = guide->axis == 0 ? by.x : by.y;
  if (step != 0) MoveGuide(guide->place + step);
  return true;
}

void CanvasView::MoveGuide(double place) {
  SlideStep::Continue(session_, "guide");
  if (const auto done = guides_.MoveChosen(place); !done) problem_.emit(done.Why());
}

// Where the guide crosses the middle of the view, as far as that is in sight.
bool CanvasView::OpenGuideField() {
  const auto guide = guides_.Chosen();
  if (!guide) return false;
  AGPoint at = view_.ToView({guide->place, guide->place});
  (guide->axis == 0 ? at.y : at.x) = guide->axis == 0 ? Middle().y : Middle().x;
  at = {std::clamp(at.x, 0.0, Size().width), std::clamp(at.y, 0.0, Size().height)};
  guideField_.Open(at, NameOf(*guide), guide->place, session_->Doc().Aids().unit);
  return true;
}

// A line a guide, one pixel of the view wide.
void CanvasView::AppendGuides(Gtk::Snapshot& snapshot) {
  if (!guidesShown_) return;
  const AGSize size = Size();
  const GdkRGBA plain{0.05F, 0.6F, 0.75F, 0.85F};
  const GdkRGBA red{0.9F, 0.25F, 0.45F, 1};
  const auto chosen = guides_.Chosen();
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
      if (guides_.Origin() != guide) append(guide, chosen == guide ? red : plain);
    }
  }
  if (guides_.Dragged()) append(*guides_.Dragged(), red);
}

}  // namespace host
