#include "host/view/PointerTool.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <utility>

#include "host/text/Localisation.h"
#include "kit/geometry/AGAffineTransform.h"

namespace host {
namespace {

constexpr double kUnsteady = 3;      // pixels of the view that are no drag yet
constexpr double kHitTolerance = 3;  // pixels of the view beside an outline
constexpr double kSnapReach = 6;     // pixels of the view
constexpr double kNewSide = 100;     // map units of an object that was made by a click
constexpr double kNewAside = 10;     // map units between what is made at the same place by a key
constexpr double kLeastSide = 1;     // map units: a stretch goes no further
constexpr double kTurnStep = std::numbers::pi / 12;

// One side of a frame moved to `value`, or both about the centre; never thinner than kLeastSide.
void MoveSide(int side, double value, bool aboutCenter, double* low, double* high) {
  if (side == 0) return;
  const double center = (*low + *high) / 2;
  if (side > 0) {
    *high = std::max(value, (aboutCenter ? center + kLeastSide / 2 : *low + kLeastSide));
    if (aboutCenter) *low = 2 * center - *high;
  } else {
    *low = std::min(value, (aboutCenter ? center - kLeastSide / 2 : *high - kLeastSide));
    if (aboutCenter) *high = 2 * center - *low;
  }
}

// `low` and `high` get the extent `size`, kept at the side that does not move.
void SetExtent(int side, double size, bool aboutCenter, double* low, double* high) {
  if (side == 0 || aboutCenter) {
    const double center = (*low + *high) / 2;
    *low = center - size / 2;
    *high = center + size / 2;
  } else if (side > 0) {
    *high = *low + size;
  } else {
    *low = *high - size;
  }
}

AGRect KeepProportions(const AGRect& from, AGRect box, HandleSides sides, bool aboutCenter) {
  const double width = from.x1 - from.x0;
  const double height = from.y1 - from.y0;
  if (!(width > 0) || !(height > 0)) return box;
  const double byWidth = sides.x == 0 ? 0 : (box.x1 - box.x0) / width;
  const double byHeight = sides.y == 0 ? 0 : (box.y1 - box.y0) / height;
  const double factor = std::max(byWidth, byHeight);
  SetExtent(sides.x, width * factor, aboutCenter, &box.x0, &box.x1);
  SetExtent(sides.y, height * factor, aboutCenter, &box.y0, &box.y1);
  return box;
}

}  // namespace

PointerTool::PointerTool(DocumentSession* session, const ViewTransform* view) : view_(view) { SetSession(session); }

PointerTool::~PointerTool() { SetSession(nullptr); }

void PointerTool::SetSession(DocumentSession* session) {
  Cancel();
  if (session_ != nullptr) session_->RemoveObserver(this);
  session_ = session;
  if (session_ != nullptr) session_->AddObserver(this);
}

void PointerTool::SetNewClass(std::optional<AKClassID> classID) {
  Cancel();
  newClass_ = classID;
}

void PointerTool::Press(const AGPoint& point, PointerModifiers modifiers) {
  if (session_ == nullptr || mode_ != Mode::kIdle) return;
  start_ = lastPoint_ = point;
  startMap_ = lastMap_ = view_->ToMap(point);
  lastModifiers_ = modifiers;
  moved_ = false;
  done_ = {};
  if (newClass_) {
    mode_ = Mode::kMake;
    return;
  }
  frame_ = SelectionFrame::Of(*session_);
  handle_ = frame_.HandleAt(point, *view_);
  if (handle_ == Handle::kNone) {
    working_ = true;
    if (!modifiers.alt || !StartBelow(modifiers)) StartOn(ObjectAt(point), modifiers);
    working_ = false;
  } else if (handle_ == Handle::kRotate) {
    mode_ = Mode::kTurn;
  } else if (PropertyOfHandle(handle_) != nullptr) {
    mode_ = Mode::kProperty;
  } else if (handle_ == Handle::kGradient) {
    mode_ = Mode::kGradient;
  } else {
    mode_ = Mode::kStretch;
  }
}

ObjectID PointerTool::ObjectAt(const AGPoint& point) const {
  return session_->Selection().ObjectAt(view_->ToMap(point), kHitTolerance / view_->Zoom());
}

ObjectID PointerTool::ObjectBelow(const AGPoint& point, bool* fromSelected) const {
  return session_->Selection().ObjectBelow(view_->ToMap(point), kHitTolerance / view_->Zoom(), fromSelected);
}

// With alt on something that is selected, perhaps below others: a drag moves it, a click takes the one below.
bool PointerTool::StartBelow(PointerModifiers modifiers) {
  bool fromSelected = false;
  const ObjectID below = ObjectBelow(start_, &fromSelected);
  if (!fromSelected) return false;
  mode_ = Mode::kMove;
  (modifiers.shift ? toToggle_ : toSelectAlone_) = below;
  return true;
}

void PointerTool::SelectForMenu(const AGPoint& point) {
  if (session_ == nullptr || mode_ != Mode::kIdle) return;
  const ObjectID object = ObjectAt(point);
  if (object == kNoObjectID) {
    session_->Selection().SelectNone();
  } else if (!session_->Selection().Contains(object)) {
    SelectUnit(object);
  }
}

void PointerTool::SelectUnit(ObjectID object) {
  session_->Selection().LeaveFor(object);
  session_->Selection().Select(session_->Selection().UnitOf(object));
}

bool PointerTool::EnterAt(const AGPoint& point) {
  if (session_ == nullptr || newClass_) return false;
  Cancel();
  const ObjectID object = ObjectAt(point);
  return object != kNoObjectID && session_->Selection().Enter(object);
}

// A press on one of several selected objects may begin to move them all, so that what a click does waits for the
// release.
void PointerTool::StartOn(ObjectID object, PointerModifiers modifiers) {
  if (object == kNoObjectID) {
    mode_ = Mode::kBand;
    return;
  }
  mode_ = Mode::kMove;
  copies_ = modifiers.control;
  const bool selected = session_->Selection().Contains(object);
  if (modifiers.shift) {
    if (selected) {
      toToggle_ = object;
    } else {
      session_->Selection().Add(session_->Selection().UnitOf(object));
    }
  } else if (selected) {
    toSelectAlone_ = object;
  } else {
    SelectUnit(object);
  }
  frame_ = SelectionFrame::Of(*session_);
}

void PointerTool::Motion(const AGPoint& point, PointerModifiers modifiers) {
  if (disturbed_) LetGo();
  if (mode_ == Mode::kIdle) return;
  lastPoint_ = point;
  lastMap_ = view_->ToMap(point);
  lastModifiers_ = modifiers;
  if (!moved_) {
    if (std::hypot(point.x - start_.x, point.y - start_.y) < kUnsteady) return;
    moved_ = true;
    if (snap_.HasTargets() && mode_ != Mode::kBand) targets_ = SnapTargets(*session_, view_->Shown(size_), snap_);
    if (HoldsObjects()) Begin();
  }
  snapLines_.clear();
  if (mode_ == Mode::kMake && SnapsToTargets(modifiers)) snapLines_ = targets_.LinesOf(NewBounds(false, modifiers));
  if (!HoldsObjects()) return;
  working_ = true;
  Drag(point, modifiers);
  working_ = false;
}

void PointerTool::Begin() {
  const SessionSelection& selection = session_->Selection();
  isLater_ =
      selection.Count() > kMostChangedLive && (mode_ == Mode::kMove || mode_ == Mode::kStretch || mode_ == Mode::kTurn);
  selection.GetShownBox(&box_);
  copied_ = selection.IDs();
  if (HasStep()) session_->Steps().Begin("");
}

// Back to waiting for a press; what was done stays.
void PointerTool::LetGo() {
  if (HasStep()) session_->Steps().End();
  if (isLater_) session_->Selection().SetShift(std::nullopt);
  frameToCome_.reset();
  snapLines_.clear();
  mode_ = Mode::kIdle;
  moved_ = disturbed_ = isLater_ = copies_ = false;
  toToggle_ = toSelectAlone_ = kNoObjectID;
}

void PointerTool::Drag(const AGPoint& point, PointerModifiers modifiers) {
  if (HasStep()) session_->Steps().Rewind();
  done_ = {};
  switch (mode_) {
    case Mode::kMove:
      return Move(lastMap_, modifiers);
    case Mode::kStretch:
      return Stretch(lastMap_, modifiers);
    case Mode::kTurn:
      return Turn(lastMap_, modifiers);
    case Mode::kGradient:
      return DragGradient(point);
    default:
      return DragProperty(point);
  }
}

// The lower left corner of the box lies on the grid.
void PointerTool::Move(const AGPoint& map, PointerModifiers modifiers) {
  double dx = map.x - startMap_.x;
  double dy = map.y - startMap_.y;
  if (modifiers.shift) (std::fabs(dx) < std::fabs(dy) ? dx : dy) = 0;
  const AGRect free{box_.x0 + dx, box_.y0 + dy, box_.x1 + dx, box_.y1 + dy};
  const auto snapped = [&](int axis, double by, double low) {
    if (by == 0) return by;
    const auto fit = SnapsToTargets(modifiers) ? targets_.FitBox(axis, free, kSnapReach / view_->Zoom()) : std::nullopt;
    return fit ? by + *fit : Snapped(low + by, modifiers) - low;
  };
  dx = snapped(0, dx, box_.x0);
  dy = snapped(1, dy, box_.y0);
  if (SnapsToTargets(modifiers)) {
    snapLines_ = targets_.LinesOf({box_.x0 + dx, box_.y0 + dy, box_.x1 + dx, box_.y1 + dy});
  }
  if (isLater_) return session_->Selection().SetShift(AGPoint{dx, dy});
  done_ = copies_ ? MoveCopies(dx, dy) : session_->Objects().Move(session_->Selection().IDs(), dx, dy);
}

// The copies go with each rewind, and are made anew.
Result<> PointerTool::MoveCopies(double dx, double dy) {
  const auto done = session_->Clipboard().Duplicate(copied_, 0, 0);
  return done ? session_->Objects().Move(session_->Selection().IDs(), dx, dy) : done;
}

// Of several objects, which follow their frame.
void PointerTool::ChangeFrame(const ObjectPlacement& to) {
  const ObjectPlacement& from = frame_.Placement();
  const ObjectIDs& ids = session_->Selection().IDs();
  done_ = mode_ == Mode::kTurn ? session_->Objects().Rotate(ids, to.angle - from.angle, from.bounds.Center())
                               : session_->Objects().Resize(ids, from.bounds, to.bounds);
}

void PointerTool::FollowFrame(const ObjectPlacement& to) {
  if (isLater_) {
    frameToCome_ = to;
  } else {
    ChangeFrame(to);
  }
}

// Shown shifted until the document has it so: nobody sees the objects go back.
void PointerTool::DoLater() {
  if (!isLater_) return;
  working_ = true;
  if (frameToCome_) {
    ChangeFrame(*frameToCome_);
  } else if (const std::optional<AGPoint> by = session_->Selection().Shift()) {
    done_ = copies_ ? MoveCopies(by->x, by->y) : session_->Objects().Move(session_->Selection().IDs(), by->x, by->y);
  }
  working_ = false;
}

void PointerTool::Stretch(const AGPoint& map, PointerModifiers modifiers) {
  const HandleSides sides = SidesOf(handle_);
  const ObjectPlacement& placement = frame_.Placement();
  const AGPoint center = placement.bounds.Center();
  const bool upright = placement.angle == 0;
  AGPoint place = upright ? FitEdges(map, Snapped(map, modifiers), sides, modifiers) : map;
  // In the frame's own directions.
  const AGPoint turned = AGAffineTransformRotation(-placement.angle).Apply(place - center);
  place = {center.x + turned.x, center.y + turned.y};
  AGRect box = placement.bounds;
  MoveSide(sides.x, place.x, modifiers.control, &box.x0, &box.x1);
  MoveSide(sides.y, place.y, modifiers.control, &box.y0, &box.y1);
  if (modifiers.shift) box = KeepProportions(placement.bounds, box, sides, modifiers.control);
  if (upright && SnapsToTargets(modifiers)) snapLines_ = targets_.LinesOf(box);
  if (!frame_.IsSingle()) return FollowFrame({box, placement.angle});
  done_ = session_->Objects().SetPlacement(session_->Selection().IDs()[0], Stretched(placement, box));
}

void PointerTool::Turn(const AGPoint& map, PointerModifiers modifiers) {
  const AGPoint center = frame_.Placement().bounds.Center();
  double angle = std::atan2(map.y - center.y, map.x - center.x) - std::numbers::pi / 2;
  if (modifiers.shift) angle = std::floor(angle / kTurnStep + 0.5) * kTurnStep;
  if (frame_.IsSingle()) {
    done_ = session_->Objects().SetAngle(session_->Selection().IDs(), angle);
  } else {
    turned_ = angle;
    FollowFrame({frame_.Placement().bounds, angle});
  }
}

void PointerTool::DragProperty(const AGPoint& point) {
  const PropertyHandle& property = *PropertyOfHandle(handle_);
  const std::string value = NumberText(frame_.ValueAt(property, point, *view_));
  done_ = session_->Objects().SetProperties(session_->Selection().IDs(), {{std::string(property.property), value}});
}

void PointerTool::DragGradient(const AGPoint& point) {
  done_ = session_->Objects().SetBrush(session_->Selection().IDs(), frame_.GradientAt(point, *view_));
}

Result<> PointerTool::Release(const AGPoint& point, PointerModifiers modifiers) {
  Motion(point, modifiers);
  if (mode_ == Mode::kIdle) return {};
  DoLater();
  const Mode mode = mode_;
  const bool clicked = !moved_;
  const ObjectID toToggle = toToggle_;
  const ObjectID toSelectAlone = toSelectAlone_;
  LetGo();
  if (mode == Mode::kMake) {
    FinishMaking(clicked, modifiers);
  } else if (mode == Mode::kBand) {
    FinishBand(clicked, modifiers);
  } else if (clicked && toToggle != kNoObjectID) {
    session_->Selection().Toggle(session_->Selection().UnitOf(toToggle));
  } else if (clicked && toSelectAlone != kNoObjectID) {
    SelectUnit(toSelectAlone);
  }
  return std::exchange(done_, {});
}

// Where the very same one is already it steps aside, so that it is seen.
Result<> PointerTool::MakeInTheMiddle() {
  if (session_ == nullptr || !newClass_ || mode_ != Mode::kIdle) return {};
  const AGPoint middle = view_->ToMap({size_.width / 2, size_.height / 2});
  const AGPoint low = Snapped({std::round(middle.x - kNewSide / 2), std::round(middle.y - kNewSide / 2)}, {});
  AGRect bounds{low.x, low.y, low.x + kNewSide, low.y + kNewSide};
  const auto isTaken = [&] {
    const ObjectIDs within = session_->Selection().ObjectsIn(bounds, host::Band::kWithin);
    return std::any_of(within.begin(), within.end(),
                       [&](ObjectID id) { return session_->Doc().Find(id)->bounds == bounds; });
  };
  while (isTaken()) {
    bounds = {bounds.x0 + kNewAside, bounds.y0 - kNewAside, bounds.x1 + kNewAside, bounds.y1 - kNewAside};
  }
  Make(bounds);
  return std::exchange(done_, {});
}

bool PointerTool::Cancel() {
  if (mode_ == Mode::kIdle) return false;
  if (HasStep() && !disturbed_) {
    session_->Steps().Rewind();
    if (copies_) session_->Selection().Select(copied_);
  }
  LetGo();
  return true;
}

void PointerTool::FinishBand(bool clicked, PointerModifiers modifiers) {
  const AGRect band{std::min(startMap_.x, lastMap_.x), std::min(startMap_.y, lastMap_.y),
                    std::max(startMap_.x, lastMap_.x), std::max(startMap_.y, lastMap_.y)};
  const ObjectIDs taken = clicked ? ObjectIDs() : session_->Selection().InBand(band, Band::kTouched);
  while (clicked && !modifiers.shift && session_->Selection().Leave()) {
  }
  if (modifiers.shift) {
    session_->Selection().Add(taken);
  } else {
    session_->Selection().Select(taken);
  }
}

AGRect PointerTool::NewBounds(bool clicked, PointerModifiers modifiers) const {
  const AGPoint from = Snapped(startMap_, modifiers);
  if (clicked) return {from.x, from.y - kNewSide, from.x + kNewSide, from.y};
  AGPoint to = FitEdges(lastMap_, Snapped(lastMap_, modifiers), {1, 1}, modifiers);
  if (modifiers.shift) {
    const double side = std::max(std::fabs(to.x - from.x), std::fabs(to.y - from.y));
    to = {from.x + std::copysign(side, to.x - from.x), from.y + std::copysign(side, to.y - from.y)};
  }
  return {std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x), std::max(from.y, to.y)};
}

void PointerTool::FinishMaking(bool clicked, PointerModifiers modifiers) { Make(NewBounds(clicked, modifiers)); }

void PointerTool::Make(const AGRect& bounds) {
  if (!(bounds.x1 > bounds.x0) || !(bounds.y1 > bounds.y0)) return;
  EditStep step(session_->Steps(), "");
  const auto added = session_->Objects().Add(*newClass_, "-default", {bounds, 0});
  if (added && newStyle_) done_ = session_->Objects().SetStyle({*added}, *newStyle_);
  if (added) {
    step.End();
  } else {
    done_ = added.Why();
  }
}

std::optional<AGRect> PointerTool::Band() const {
  if (!moved_ || (mode_ != Mode::kBand && mode_ != Mode::kMake)) return std::nullopt;
  if (mode_ == Mode::kMake) return NewBounds(false, lastModifiers_);
  return AGRect{std::min(startMap_.x, lastMap_.x), std::min(startMap_.y, lastMap_.y), std::max(startMap_.x, lastMap_.x),
                std::max(startMap_.y, lastMap_.y)};
}

PointerTool::Cursor PointerTool::CursorOf(Handle handle, double angle) const {
  if (handle == Handle::kRotate) return Cursor::kRotate;
  if (PropertyOfHandle(handle) != nullptr || handle == Handle::kGradient) return Cursor::kInner;
  // The nearest of the four directions of arrow, on the screen, where y points down.
  const HandleSides sides = SidesOf(handle);
  const double direction = std::atan2(sides.y, sides.x) + angle;
  constexpr Cursor kCursors[] = {Cursor::kEastWest, Cursor::kRising, Cursor::kNorthSouth, Cursor::kFalling};
  const long eighth = std::lround(direction / (std::numbers::pi / 4));
  return kCursors[static_cast<std::size_t>((eighth % 4 + 4) % 4)];
}

PointerTool::Hover PointerTool::HoverAt(const AGPoint& point, PointerModifiers modifiers) const {
  if (session_ == nullptr) return {};
  if (newClass_) return {Cursor::kCross};
  const SelectionFrame frame = SelectionFrame::Of(*session_);
  const Handle handle = mode_ == Mode::kIdle ? frame.HandleAt(point, *view_) : handle_;
  if (handle != Handle::kNone) return {CursorOf(handle, frame.Placement().angle)};
  if (mode_ != Mode::kIdle) return {mode_ == Mode::kMove ? Cursor::kMove : Cursor::kArrow};
  bool fromSelected = false;
  const ObjectID object = modifiers.alt ? ObjectBelow(point, &fromSelected) : ObjectAt(point);
  return {object == kNoObjectID ? Cursor::kArrow : Cursor::kMove, object};
}

// The sides that move go to other objects where those are near, and otherwise to `place`.
AGPoint PointerTool::FitEdges(const AGPoint& map, const AGPoint& place, HandleSides sides,
                              PointerModifiers modifiers) const {
  AGPoint fitted = place;
  if (!SnapsToTargets(modifiers)) return fitted;
  const double reach = kSnapReach / view_->Zoom();
  if (const auto fit = sides.x == 0 ? std::nullopt : targets_.FitEdge(0, map.x, reach)) fitted.x = map.x + *fit;
  if (const auto fit = sides.y == 0 ? std::nullopt : targets_.FitEdge(1, map.y, reach)) fitted.y = map.y + *fit;
  return fitted;
}

std::string PointerTool::DragText() const {
  AGRect box;
  if (!IsDragging()) return {};
  const LengthUnit unit = session_->Doc().Aids().unit;
  const auto sizeText = [unit](const AGRect& of) {
    return LengthText(of.Width(), unit) + " × " + LengthText(of.Height(), unit);
  };
  if (const auto band = Band(); band && mode_ == Mode::kMake) return sizeText(*band);
  if (mode_ == Mode::kMove && session_->Selection().GetShownBox(&box)) {
    return LengthText(box.x0, unit) + ", " + LengthText(box.y0, unit);
  }
  if (mode_ != Mode::kStretch && mode_ != Mode::kTurn) return {};
  const SelectionFrame frame = SelectionFrame::Of(*session_);
  const ObjectPlacement now = frameToCome_.value_or(frame.Placement());
  if (mode_ == Mode::kStretch) return sizeText(now.bounds);
  constexpr double kDegree = std::numbers::pi / 180;
  char text[32];
  std::snprintf(text, sizeof(text), "%.1f°", std::remainder((frame_.IsSingle() ? now.angle : turned_) / kDegree, 360));
  return text;
}

double PointerTool::Snapped(double value, PointerModifiers modifiers) const {
  if (!(snap_.spacing > 0) || modifiers.alt) return value;
  return std::floor(value / snap_.spacing + 0.5) * snap_.spacing;
}

AGPoint PointerTool::Snapped(const AGPoint& map, PointerModifiers modifiers) const {
  return {Snapped(map.x, modifiers), Snapped(map.y, modifiers)};
}

}  // namespace host
