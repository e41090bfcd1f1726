#include "host/session/SessionArrangement.h"

#include <algorithm>
#include <map>

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
  ObjectID id;

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

}  // namespace

// The objects keep their order among each other. Steps forward stop below the object that stopped before, so that a
// group at the end stays as it is.
Result<> SessionArrangement::ChangeOrder(const ObjectIDs& ids, OrderChange change) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  ObjectIDs sorted = InDrawingOrder(document_, ids);
  const bool forward = change == OrderChange::kToFront || change == OrderChange::kForward;
  const bool whole = change == OrderChange::kToFront || change == OrderChange::kToBack;
  if (forward) std::reverse(sorted.begin(), sorted.end());
  EditStep step(steps_, OrderName(change));
  std::map<LayerID, std::size_t> taken;  // places at the end of each layer that are settled
  for (const ObjectID id : sorted) {
    const ObjectPlace place = document_.PlaceOf(id);
    std::size_t& settled = taken[place.layer];
    const std::size_t last = forward ? document_.FindLayer(place.layer)->objects.Count() - 1 - settled : settled;
    if (whole || place.index == last) ++settled;
    const std::size_t next = forward ? place.index + 1 : place.index - 1;
    if (place.index != last) steps_.Move(id, {place.layer, whole ? last : next});
  }
  return step.End();
}

Result<> SessionArrangement::Align(const ObjectIDs& ids, Alignment alignment, AlignTo to) {
  const auto found = Changeable(document_, ids);
  if (!found) return found.Why();
  const ObjectIDs& changeable = *found;
  AGRect target{0, 0, document_.Page().width, document_.Page().height};
  if (to == AlignTo::kObjects) selection_.GetBox(changeable, &target);
  EditStep step(steps_, Tr("Align"));
  for (const ObjectID id : changeable) {
    const AGPoint offset = AlignOffset(TurnedBox(document_.Find(id)->Placement()), target, alignment);
    if (const auto done = objects_.Move({id}, offset.x, offset.y); !done) return done.Why();
  }
  return step.End();
}

Result<> SessionArrangement::Distribute(const ObjectIDs& ids, Axis axis) {
  const auto found = Changeable(document_, ids);
  if (!found) return found.Why();
  const ObjectIDs& changeable = *found;
  if (changeable.size() < 3) {
    return Problem(N_("at least three objects are needed to be distributed"));
  }
  const bool across = axis == Axis::kHorizontal;
  std::vector<Span> spans;
  double filled = 0;
  for (const ObjectID id : changeable) {
    const AGRect box = TurnedBox(document_.Find(id)->Placement());
    spans.push_back(across ? Span{box.x0, box.x1, id} : Span{box.y0, box.y1, id});
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
    if (const auto done = objects_.Move({span.id}, across ? offset : 0, across ? 0 : offset); !done) return done.Why();
  }
  return step.End();
}

}  // namespace host
