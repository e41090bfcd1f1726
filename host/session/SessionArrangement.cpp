#include "host/session/SessionArrangement.h"

#include <algorithm>
#include <map>

#include "host/model/Units.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

AGPoint AlignOffset(const AGRect& box, const AGRect& target, Alignment alignment) {
  switch (alignment) {
    case Alignment::kLeft:
      return {target.x0 - box.x0, 0};
    case Alignment::kCenter:
      return {target.Center().x - box.Center().x, 0};
    case Alignment::kRight:
      return {target.x1 - box.x1, 0};
    case Alignment::kTop:
      return {0, target.y1 - box.y1};
    case Alignment::kMiddle:
      return {0, target.Center().y - box.Center().y};
    case Alignment::kBottom:
      return {0, target.y0 - box.y0};
  }
  return {0, 0};
}

struct Span {
  double start, end;
  const ObjectIDs* objects;

  double Middle() const { return (start + end) / 2; }
};

const char* OrderName(OrderChange change) {
  switch (change) {
    case OrderChange::kToFront:
      return Tr("Bring to Front");
    case OrderChange::kToBack:
      return Tr("Send to Back");
    case OrderChange::kForward:
      return Tr("Bring Forward");
    case OrderChange::kBackward:
      return Tr("Send Backward");
  }
  return "";
}

// The one that an object is in; the last when it is in none.
const ObjectIDs& PartWith(const std::vector<ObjectIDs>& parts, ObjectID key) {
  for (const ObjectIDs& part : parts) {
    if (std::ranges::find(part, key) != part.end()) return part;
  }
  return parts.back();
}

// Indexes in a layer, `end` behind the last one.
struct Ends {
  std::size_t begin, end;
};

// Where a unit is.
struct Stretch {
  const Layer* layer;
  Ends ends;
};

Stretch StretchOf(const Document& document, const Unit& unit) {
  return {document.LayerOf(unit.objects[0]),
          {document.PlaceOf(unit.objects.front()).index, document.PlaceOf(unit.objects.back()).index + 1}};
}

// The stretch within which a unit can go: the group around it, or the layer.
Ends EndsAround(const Document& document, const Unit& unit, const Stretch& stretch) {
  const GroupID around = GroupAround(document, unit);
  if (around == kNoGroupID) return {0, stretch.layer->objects.Count()};
  Ends ends = stretch.ends;
  for (const ObjectID id : document.Groups().Members(around)) {
    const std::size_t index = document.PlaceOf(id).index;
    ends = {std::min(ends.begin, index), std::max(ends.end, index + 1)};
  }
  return ends;
}

// The index beyond the next object or group in front or behind, which is there.
std::size_t PassNeighbour(const Stretch& stretch, std::size_t depth, bool forward) {
  const ObjectOrder& order = stretch.layer->objects;
  const auto groupAt = [&](std::size_t index) { return order.At(index)->marks.GroupAt(depth); };
  std::size_t index = forward ? stretch.ends.end : stretch.ends.begin - 1;
  const GroupID group = groupAt(index);
  if (forward) {
    for (++index; group != kNoGroupID && index < order.Count() && groupAt(index) == group;) ++index;
  } else {
    while (group != kNoGroupID && index > 0 && groupAt(index - 1) == group) --index;
  }
  return index;
}

}  // namespace

// The units keep their order among each other. Steps forward stop below the unit that stopped before, so that some at
// the end stay as they are.
Result<> SessionArrangement::ChangeOrder(const ObjectIDs& ids, OrderChange change) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  std::vector<Unit> units = UnitsOf(document_, ids, selection_.Entered());
  const bool forward = change == OrderChange::kToFront || change == OrderChange::kForward;
  const bool whole = change == OrderChange::kToFront || change == OrderChange::kToBack;
  if (forward) std::reverse(units.begin(), units.end());
  EditStep step(steps_, OrderName(change));
  std::map<std::pair<LayerID, GroupID>, std::size_t>
      taken;  // places at the end of each group or layer that are settled
  for (const Unit& unit : units) {
    const Stretch stretch = StretchOf(document_, unit);
    std::size_t& settled = taken[{stretch.layer->id, GroupAround(document_, unit)}];
    const Ends around = EndsAround(document_, unit, stretch);
    const std::size_t last = forward ? around.end - settled : around.begin + settled;
    const std::size_t reached = forward ? stretch.ends.end : stretch.ends.begin;
    const std::size_t next = reached == last || whole ? last : PassNeighbour(stretch, unit.depth, forward);
    if (whole || reached == last) settled += unit.objects.size();
    if (next != reached) MoveUnit(unit, stretch.layer->id, next, forward);
  }
  return step.End();
}

// To before the object at the index, or behind all before it.
void SessionArrangement::MoveUnit(const Unit& unit, LayerID layer, std::size_t index, bool forward) {
  ObjectIDs ordered = unit.objects;
  if (!forward) std::reverse(ordered.begin(), ordered.end());
  for (const ObjectID id : ordered) steps_.Move(id, {layer, forward ? index - 1 : index});
}

// Of one object in its own directions.
AGRect SessionArrangement::BoxOf(const ObjectIDs& part) const {
  AGRect box;
  if (part.size() == 1) return document_.Find(part[0])->bounds;
  selection_.GetBox(part, &box);
  return box;
}

Result<> SessionArrangement::Align(const ObjectIDs& ids, Alignment alignment, AlignTo to, ObjectID key) {
  const auto found = Changeable(document_, ids);
  if (!found) return found.Why();
  const std::vector<ObjectIDs> parts = PartsOf(document_, *found, selection_.Entered());
  AGRect target{0, 0, document_.Page().width, document_.Page().height};
  if (to == AlignTo::kObjects) selection_.GetBox(*found, &target);
  if (to == AlignTo::kKey) selection_.GetBox(PartWith(parts, key == kNoObjectID ? found->back() : key), &target);
  EditStep step(steps_, Tr("Align"));
  for (const ObjectIDs& part : parts) {
    AGRect box;
    selection_.GetBox(part, &box);
    const AGPoint offset = AlignOffset(box, target, alignment);
    if (const auto done = objects_.Shift(part, offset.x, offset.y); !done) return done.Why();
  }
  return step.End();
}

Result<> SessionArrangement::Match(const ObjectIDs& ids, Sides sides, ObjectID key) {
  const auto found = Changeable(document_, ids);
  if (!found) return found.Why();
  const std::vector<ObjectIDs> parts = PartsOf(document_, *found, selection_.Entered());
  if (parts.size() < 2) return Problem(N_("at least two objects are needed, one with the size for the others"));
  const ObjectIDs& model = PartWith(parts, key == kNoObjectID ? found->back() : key);
  const AGRect wanted = BoxOf(model);
  EditStep step(steps_, Tr("Match Size"));
  for (const ObjectIDs& part : parts) {
    if (&part == &model) continue;
    const AGRect box = BoxOf(part);
    const AGPoint middle = box.Center();
    const double w = (sides == Sides::kHeight ? box : wanted).Width() / 2;
    const double h = (sides == Sides::kWidth ? box : wanted).Height() / 2;
    const AGRect to{middle.x - w, middle.y - h, middle.x + w, middle.y + h};
    const auto done = part.size() == 1 ? objects_.Place(part[0], {to, document_.Find(part[0])->angle})
                                       : objects_.Stretched(part, box, to);
    if (!done) return done.Why();
  }
  return step.End();
}

Result<> SessionArrangement::Distribute(const ObjectIDs& ids, Axis axis) {
  const auto found = Changeable(document_, ids);
  if (!found) return found.Why();
  const std::vector<ObjectIDs> parts = PartsOf(document_, *found, selection_.Entered());
  if (parts.size() < 3) {
    return Problem(N_("at least three objects are needed to be distributed"));
  }
  const bool across = axis == Axis::kHorizontal;
  std::vector<Span> spans;
  double filled = 0;
  for (const ObjectIDs& part : parts) {
    AGRect box;
    selection_.GetBox(part, &box);
    spans.push_back(across ? Span{box.x0, box.x1, &part} : Span{box.y0, box.y1, &part});
    filled += spans.back().end - spans.back().start;
  }
  std::stable_sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) { return a.Middle() < b.Middle(); });
  const double gap = (spans.back().end - spans.front().start - filled) / static_cast<double>(spans.size() - 1);
  EditStep step(steps_, Tr("Distribute"));
  double next = spans.front().start;
  for (const Span& span : spans) {
    const double offset = next - span.start;
    next += span.end - span.start + gap;
    const bool fixed = &span == &spans.front() || &span == &spans.back();
    if (fixed) continue;
    if (const auto done = objects_.Shift(*span.objects, across ? offset : 0, across ? 0 : offset); !done)
      return done.Why();
  }
  return step.End();
}

}  // namespace host
