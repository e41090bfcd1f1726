// Pointer and keyboard of the canvas.
#include <gdk/gdkkeysyms.h>
#include <glibmm/main.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/eventcontrollerscroll.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/gesturedrag.h>
#include <gtkmm/gesturezoom.h>

#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <utility>

#include "host/window/LastStyle.h"
#include "host/window/SlideStep.h"
#include "host/window/canvas/CanvasView.h"

namespace host {
namespace {

constexpr double kWheelZoom = 1.2;
constexpr double kWheelPixels = 48;
constexpr double kReach = 3;  // pixels: how far beside an object a double click still means it

// The toolkit's gestures compute in single precision: a pointer on a pixel comes out a little beside it. A part of 64
// is finer than what any pointer reports.
AGPoint Cleaned(double x, double y) {
  constexpr double kParts = 64;
  return {std::round(x * kParts) / kParts, std::round(y * kParts) / kParts};
}

bool Has(Gdk::ModifierType state, Gdk::ModifierType bit) { return (state & bit) == bit; }

PointerModifiers ModifiersOf(Gdk::ModifierType state) {
  return {Has(state, Gdk::ModifierType::SHIFT_MASK), Has(state, Gdk::ModifierType::CONTROL_MASK),
          Has(state, Gdk::ModifierType::ALT_MASK)};
}

}  // namespace

void CanvasView::AddPointer() {
  auto drag = Gtk::GestureDrag::create();
  drag->set_button(GDK_BUTTON_PRIMARY);
  Gtk::GestureDrag* const gesture = drag.get();
  drag->signal_drag_begin().connect([this, gesture](double x, double y) {
    grab_focus();
    panning_ = spaceHeld_;
    if (panning_) {
      panStart_ = {horizontal_->get_value(), vertical_->get_value()};
      return;
    }
    SlideStep::End();
    pressed_ = view_.ToMap(Cleaned(x, y));
    guides_.ChooseNone();
    if (const auto guide = GuideAt(Cleaned(x, y), ModifiersOf(gesture->get_current_event_state()))) {
      guides_.Press(*guide);
      return;
    }
    tool_.SetNewStyle(LastStyle());
    tool_.Press(Cleaned(x, y), ModifiersOf(gesture->get_current_event_state()));
    SlideStep::Drag([this] {
      if (const auto done = tool_.Finish(); !done) problem_.emit(done.Why());
      queue_draw();
    });
    queue_draw();
  });
  drag->signal_drag_update().connect([this, gesture](double dx, double dy) {
    double x = 0;
    double y = 0;
    if (panning_) {
      horizontal_->set_value(panStart_.x - dx);
      vertical_->set_value(panStart_.y - dy);
      return;
    }
    if (!gesture->get_start_point(x, y)) return;
    if (guides_.IsActive()) return DragRuler(Cleaned(x + dx, y + dy), gesture->get_current_event_state());
    DragTo(Cleaned(x + dx, y + dy), ModifiersOf(gesture->get_current_event_state()));
  });
  drag->signal_drag_end().connect([this, gesture](double dx, double dy) {
    double x = 0;
    double y = 0;
    if (!gesture->get_start_point(x, y)) return;
    if (guides_.IsActive()) return ReleaseRuler();
    SlideStep::Drag(nullptr);
    edgeTimer_.disconnect();
    const bool made = tool_.NewClass().has_value();
    const auto done = tool_.Release(Cleaned(x + dx, y + dy), ModifiersOf(gesture->get_current_event_state()));
    if (!done) problem_.emit(done.Why());
    if (made && !toolStays_) SetNewClass(std::nullopt, false);
    queue_draw();
  });
  // A menu that opens, or another window, takes the pointer away.
  drag->signal_cancel().connect([this](Gdk::EventSequence*) {
    SlideStep::End();
    ReleaseRuler();
  });
  add_controller(drag);

  auto click = Gtk::GestureClick::create();
  click->set_button(GDK_BUTTON_PRIMARY);
  click->signal_pressed().connect([this, gesture = click.get()](int count, double x, double y) {
    editsLabel_ = false;
    twice_ = {x, y};
    // With a key each click is one of its own, as those that go down a stack.
    const PointerModifiers held = ModifiersOf(gesture->get_current_event_state());
    if (count != 2 || panning_ || held.shift || held.control || held.alt) return;
    if (GuideAt(Cleaned(x, y), {})) {
      OpenGuideField();
    } else if (tool_.EnterAt(Cleaned(x, y))) {
      queue_draw();
    } else {
      editsLabel_ = TakesLabel(Cleaned(x, y));
    }
  });
  // At the release: what is pressed has the keys, and it may have been a drag.
  click->signal_released().connect([this](int, double x, double y) {
    const bool isThere = std::hypot(x - twice_.x, y - twice_.y) <= kReach;
    if (std::exchange(editsLabel_, false) && isThere) activate_action("win.edit-label");
  });
  add_controller(click);

  auto motion = Gtk::EventControllerMotion::create();
  Gtk::EventControllerMotion* const controller = motion.get();
  motion->signal_motion().connect([this, controller](double x, double y) {
    lastPointer_ = Cleaned(x, y);
    pointerInside_ = true;
    ShowPointer(lastPointer_, ModifiersOf(controller->get_current_event_state()));
    pointer_.emit(view_.ToMap(lastPointer_));
  });
  motion->signal_leave().connect([this] {
    pointerInside_ = false;
    queue_draw();
  });
  add_controller(motion);
}

// Whether a double click at a point means the label of what is there.
bool CanvasView::TakesLabel(const AGPoint& point) const {
  if (session_ == nullptr || tool_.NewClass()) return false;
  if (SelectionFrame::Of(*session_).HandleAt(point, view_) != Handle::kNone) return false;
  const ObjectID object = session_->Selection().ObjectAt(view_.ToMap(point), kReach / view_.Zoom());
  return object != kNoObjectID && session_->Selection().Contains(object);
}

// While the pointer stays at the view's edge or beyond it the view scrolls there, and the drag goes on.
void CanvasView::DragTo(const AGPoint& point, PointerModifiers modifiers) {
  constexpr unsigned int kTick = 25;  // milliseconds
  dragPoint_ = point;
  dragModifiers_ = modifiers;
  tool_.Motion(point, modifiers);
  queue_draw();
  const AGPoint speed = EdgeSpeed(point, Size());
  if (!tool_.IsDragging() || (speed.x == 0 && speed.y == 0)) {
    edgeTimer_.disconnect();
  } else if (!edgeTimer_.connected()) {
    edgeTimer_ = Glib::signal_timeout().connect([this] { return ScrollAtEdge(); }, kTick);
  }
}

bool CanvasView::ScrollAtEdge() {
  const AGPoint speed = EdgeSpeed(dragPoint_, Size());
  if (!tool_.IsDragging() || (speed.x == 0 && speed.y == 0)) return false;
  view_.Scroll(speed.x, speed.y);
  ViewChanged();
  tool_.Motion(dragPoint_, dragModifiers_);
  return true;
}

// The right button's menu, and that of the keyboard.
void CanvasView::AddMenu() {
  auto click = Gtk::GestureClick::create();
  click->set_button(GDK_BUTTON_SECONDARY);
  click->signal_pressed().connect([this](int, double x, double y) {
    if (session_ == nullptr) return;
    grab_focus();
    SlideStep::End();
    pressed_ = view_.ToMap(Cleaned(x, y));
    tool_.SelectForMenu(Cleaned(x, y));
    menu_.Open(Cleaned(x, y));
  });
  add_controller(click);
}

// The middle button moves the sheet, as the left one does while the space bar is held.
void CanvasView::AddPanning() {
  auto pan = Gtk::GestureDrag::create();
  pan->set_button(GDK_BUTTON_MIDDLE);
  pan->signal_drag_begin().connect([this](double, double) {
    panStart_ = {horizontal_->get_value(), vertical_->get_value()};
  });
  pan->signal_drag_update().connect([this](double dx, double dy) {
    horizontal_->set_value(panStart_.x - dx);
    vertical_->set_value(panStart_.y - dy);
  });
  add_controller(pan);
}

void CanvasView::AddScrolling() {
  auto scroll = Gtk::EventControllerScroll::create();
  scroll->set_flags(Gtk::EventControllerScroll::Flags::BOTH_AXES);
  Gtk::EventControllerScroll* const controller = scroll.get();
  scroll->signal_scroll().connect(
      [this, controller](double dx, double dy) {
        const PointerModifiers modifiers = ModifiersOf(controller->get_current_event_state());
        if (modifiers.control) {
          ZoomBy(std::pow(kWheelZoom, -dy));
          return true;
        }
        if (modifiers.shift && dx == 0) std::swap(dx, dy);
        view_.Scroll(dx * kWheelPixels, dy * kWheelPixels);
        ViewChanged();
        return true;
      },
      false);
  add_controller(scroll);

  auto pinch = Gtk::GestureZoom::create();
  pinch->signal_scale_changed().connect([this, last = 1.0](double scale) mutable {
    ZoomBy(scale / last);
    last = scale;
  });
  add_controller(pinch);
}

void CanvasView::AddKeys() {
  auto keys = Gtk::EventControllerKey::create();
  keys->signal_key_pressed().connect([this](guint key, guint, Gdk::ModifierType state) { return OnKey(key, state); },
                                     false);
  keys->signal_key_released().connect([this](guint key, guint, Gdk::ModifierType) {
    if (key == GDK_KEY_space) spaceHeld_ = false;
  });
  add_controller(keys);
}

bool CanvasView::OnKey(guint key, Gdk::ModifierType state) {
  if (session_ == nullptr) return false;
  const PointerModifiers modifiers = ModifiersOf(state);
  switch (key) {
    case GDK_KEY_Escape:
      OnEscape();
      return true;
    case GDK_KEY_Return:
    case GDK_KEY_KP_Enter:
      if (modifiers.alt) return false;
      SlideStep::End();
      modifiers.control ? TakeHandle(modifiers.shift) : OnEnter();
      return true;
    case GDK_KEY_Delete:
    case GDK_KEY_BackSpace:
      SlideStep::End();
      if (guides_.DeleteChosen()) return true;
      return activate_action("win.delete");
    case GDK_KEY_h:
    case GDK_KEY_H:
    case GDK_KEY_v:
    case GDK_KEY_V:
      if (modifiers.control || modifiers.alt) return false;
      return activate_action(key == GDK_KEY_h || key == GDK_KEY_H ? "win.flip-horizontally" : "win.flip-vertically");
    case GDK_KEY_space:
      spaceHeld_ = true;
      return true;
    case GDK_KEY_Menu:
    case GDK_KEY_F10:
      if (key == GDK_KEY_F10 && !modifiers.shift) return false;
      SlideStep::End();
      OpenMenuOfSelection();
      return true;
    default:
      return OnArrow(key, modifiers) || OnTab(key, modifiers) || OnToolKey(key, modifiers);
  }
}

// Arrow keys move by 1 unit, with shift by 10, with alt by a tenth: the handle that is taken, or with control the upper
// right corner, or what is selected, or the guide that is chosen, or the view.
bool CanvasView::OnArrow(guint key, PointerModifiers modifiers) {
  const double step = modifiers.shift ? 10 : modifiers.alt ? 0.1 : 1;
  switch (key) {
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
      Nudge({-step, 0}, modifiers.control);
      return true;
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
      Nudge({step, 0}, modifiers.control);
      return true;
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
      Nudge({0, step}, modifiers.control);
      return true;
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
      Nudge({0, -step}, modifiers.control);
      return true;
    default:
      return false;
  }
}

// To the next object, or, while a handle is taken, to the next handle.
bool CanvasView::OnTab(guint key, PointerModifiers modifiers) {
  const bool isPage = key == GDK_KEY_Page_Down || key == GDK_KEY_Page_Up;
  if (!isPage && key != GDK_KEY_Tab && key != GDK_KEY_ISO_Left_Tab) return false;
  if (modifiers.control || modifiers.alt) return false;
  if (!isPage && guides_.Chosen()) {
    SlideStep::End();
    ChooseGuide(modifiers.shift);
    return true;
  }
  if (session_->Doc().ObjectCount() == 0) return false;
  SlideStep::End();
  if (!isPage && TakenHandle() != Handle::kNone) {
    TakeHandle(modifiers.shift);
  } else {
    SelectNext(isPage ? key == GDK_KEY_Page_Up : modifiers.shift, isPage && modifiers.shift);
  }
  return true;
}

bool CanvasView::OnToolKey(guint key, PointerModifiers modifiers) {
  if (modifiers.control || modifiers.alt) return false;
  switch (key) {
    case GDK_KEY_r:
    case GDK_KEY_R:
      toolAsked_.emit(modifiers.shift);
      return true;
    case GDK_KEY_Insert:
    case GDK_KEY_KP_Insert:
      if (modifiers.shift) return false;
      SlideStep::End();
      if (!tool_.NewClass()) toolAsked_.emit(false);
      Place();
      return true;
    default:
      return false;
  }
}

void CanvasView::OnEscape() {
  if (guides_.Cancel()) {
    // The guide is where it was.
  } else if (tool_.Cancel()) {
    SlideStep::Drag(nullptr);
  } else if (tool_.NewClass()) {
    SetNewClass(std::nullopt, false);
  } else if (handleKeys_.LetGo()) {
    SlideStep::End();
    DescribeSoon();
  } else if (guides_.Chosen()) {
    SlideStep::End();
    guides_.ChooseNone();
    DescribeSoon();
  } else if (!session_->Selection().Leave()) {
    session_->Selection().SelectNone();
  }
  queue_draw();
}

// Makes an object with a tool, enters a group, takes the handles of anything else and lets go of them.
void CanvasView::OnEnter() {
  if (tool_.NewClass()) return Place();
  if (OpenGuideField()) return;
  if (session_->Selection().IsEmpty()) return;
  if (handleKeys_.LetGo()) {
    DescribeSoon();
    return queue_draw();
  }
  if (!session_->Selection().Enter(session_->Selection().IDs().back())) TakeHandle(false);
}

void CanvasView::Place() {
  tool_.SetNewStyle(LastStyle());
  if (const auto done = tool_.MakeInTheMiddle(); !done) problem_.emit(done.Why());
  if (!toolStays_) SetNewClass(std::nullopt, false);
  queue_draw();
}

Handle CanvasView::TakenHandle() const {
  return handleKeys_.HasTaken() ? handleKeys_.Taken(SelectionFrame::Of(*session_), view_) : Handle::kNone;
}

void CanvasView::TakeHandle(bool backwards) {
  handleKeys_.TakeNext(SelectionFrame::Of(*session_), view_, backwards);
  DescribeSoon();
  queue_draw();
}

void CanvasView::Nudge(const AGPoint& by, bool stretches) {
  if (NudgeGuide(by)) return;
  if (session_->Selection().IsEmpty()) {
    view_.Scroll(by.x * kWheelPixels, -by.y * kWheelPixels);
    ViewChanged();
    return;
  }
  const Handle taken = TakenHandle();
  const Handle handle = taken == Handle::kNone && stretches ? Handle::kUpperRight : taken;
  SlideStep::Continue(session_, handle == Handle::kNone ? "nudge" : "handle " + NameOf(handle));
  const auto done = handle == Handle::kNone ? session_->Objects().Move(session_->Selection().IDs(), by.x, by.y)
                                            : MoveHandle(session_, handle, by);
  if (!done) problem_.emit(done.Why());
}

// At the middle of what is selected, as far as that is in sight.
void CanvasView::OpenMenuOfSelection() {
  AGRect box;
  AGPoint place = Middle();
  if (session_->Selection().GetShownBox(&box)) place = view_.ToView(box.Center());
  menu_.Open({std::clamp(place.x, 0.0, Size().width), std::clamp(place.y, 0.0, Size().height)});
}

void CanvasView::SelectBelow() {
  const ObjectID object = tool_.HoverAt(view_.ToView(pressed_), {.alt = true}).object;
  if (object == kNoObjectID) return;
  session_->Selection().LeaveFor(object);
  session_->Selection().Select(session_->Selection().UnitOf(object));
  RevealObject(object);
}

// The keyboard's way through objects and groups: the next one in drawing order that can be selected.
void CanvasView::SelectNext(bool backwards, bool adds) {
  const Document& document = session_->Doc();
  const std::size_t count = document.ObjectCount();
  const ObjectIDs& selected = session_->Selection().IDs();
  const ObjectIDs current = selected.empty() ? ObjectIDs() : session_->Selection().UnitOf(selected.back());
  const std::unordered_set<ObjectID> passed(current.begin(), current.end());
  std::size_t number = selected.empty() ? (backwards ? 0 : count - 1) : document.NumberOf(selected.back());
  for (std::size_t tried = 0; tried < count; ++tried) {
    number = (number + (backwards ? count - 1 : 1)) % count;
    const ObjectID id = document.ObjectAt(number).id;
    if (!session_->Selection().IsEditable(id) || !session_->Selection().IsWithinEntered(*document.Find(id))) continue;
    if (adds ? session_->Selection().Contains(id) : passed.contains(id)) continue;
    const ObjectIDs unit = session_->Selection().UnitOf(id);
    adds ? session_->Selection().Add(unit) : session_->Selection().Select(unit);
    return RevealObject(id);
  }
}

}  // namespace host
