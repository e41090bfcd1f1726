#include "host/session/SessionMarks.h"

#include <algorithm>

#include "host/model/Units.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

template <typename Test>
ObjectIDs ObjectsThat(const Document& document, Test test) {
  ObjectIDs found;
  for (const Layer* layer : document.Layers()) {
    if (!layer->IsEditable()) continue;
    layer->objects.ForEach([&](const DocumentObject& object) {
      if (test(object.marks)) found.push_back(object.id);
    });
  }
  return found;
}

// So many groups all units are in together.
std::size_t SharedDepth(const Document& document, const std::vector<Unit>& units) {
  const std::vector<GroupID>& path = document.Find(units[0].objects[0])->marks.groups;
  std::size_t depth = units[0].depth;
  for (const Unit& unit : units) {
    const std::vector<GroupID>& other = document.Find(unit.objects[0])->marks.groups;
    depth = std::min(depth, unit.depth);
    const auto end = path.begin() + static_cast<std::ptrdiff_t>(depth);
    depth = static_cast<std::size_t>(std::mismatch(path.begin(), end, other.begin(), other.end()).first - path.begin());
  }
  return depth;
}

}  // namespace

void SessionMarks::SetMarks(ObjectID id, ObjectMarks marks) {
  steps_.Step().BeforeMarks(document_, id);
  document_.SetMarks(id, std::move(marks));
}

template <typename Mark>
Result<> SessionMarks::MarkEach(const ObjectIDs& ids, const char* name, Mark mark) {
  if (const auto done = CheckOpenLayers(document_, ids); !done) return done.Why();
  EditStep step(steps_, name);
  for (const ObjectID id : ids) {
    ObjectMarks marks = document_.Find(id)->marks;
    mark(&marks);
    SetMarks(id, std::move(marks));
  }
  return step.End();
}

Result<> SessionMarks::SetHidden(const ObjectIDs& ids, bool hidden) {
  return MarkEach(ids, hidden ? Tr("Hide") : Tr("Show"), [hidden](ObjectMarks* marks) { marks->hidden = hidden; });
}

Result<> SessionMarks::SetLocked(const ObjectIDs& ids, bool locked) {
  return MarkEach(ids, locked ? Tr("Lock") : Tr("Unlock"), [locked](ObjectMarks* marks) { marks->locked = locked; });
}

ObjectIDs SessionMarks::Hidden() const {
  return ObjectsThat(document_, [](const ObjectMarks& marks) { return marks.hidden; });
}

ObjectIDs SessionMarks::Locked() const {
  return ObjectsThat(document_, [](const ObjectMarks& marks) { return marks.locked; });
}

// Each directly behind the next one; the last one stays, or comes before what its own group around it holds further.
void SessionMarks::Gather(const ObjectIDs& ordered, std::size_t depth) {
  const ObjectID front = ordered.back();
  const LayerID layer = document_.LayerOf(front)->id;
  std::size_t place = document_.PlaceOf(front).index;
  const ObjectOrder& order = document_.FindLayer(layer)->objects;
  const GroupID around = document_.Find(front)->marks.GroupAt(depth);
  while (around != kNoGroupID && place + 1 < order.Count() && order.At(place + 1)->marks.GroupAt(depth) == around) {
    ++place;
  }
  for (auto id = ordered.rbegin(); id != ordered.rend(); ++id) {
    const ObjectPlace old = document_.PlaceOf(*id);
    const bool comesFromBehind = old.layer == layer && old.index <= place;
    if (!comesFromBehind) ++place;
    if (old != ObjectPlace{layer, place}) steps_.Move(*id, {layer, place});
    --place;
  }
}

Result<> SessionMarks::Group(const ObjectIDs& ids) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  const std::vector<Unit> units = UnitsOf(document_, ids, selection_.Entered());
  if (units.size() < 2) return Problem(N_("a group needs at least two objects"));
  const std::size_t depth = SharedDepth(document_, units);
  const GroupID group = document_.NewGroup();
  EditStep step(steps_, Tr("Group"));
  ObjectIDs ordered;
  for (const Unit& unit : units) ordered.insert(ordered.end(), unit.objects.begin(), unit.objects.end());
  Gather(ordered, depth);
  for (const Unit& unit : units) {
    for (const ObjectID id : unit.objects) {
      ObjectMarks marks = document_.Find(id)->marks;
      const auto at = [&marks](std::size_t index) { return marks.groups.begin() + static_cast<std::ptrdiff_t>(index); };
      marks.groups.erase(at(depth), at(unit.depth));
      marks.groups.insert(at(depth), group);
      if (marks.groups.size() > kMostGroups) {
        return Problem(N_("groups can't lie more than %s deep in each other"), {std::to_string(kMostGroups)});
      }
      SetMarks(id, std::move(marks));
    }
  }
  step.End();
  selection_.Select(ordered);
  return {};
}

Result<> SessionMarks::Ungroup(const ObjectIDs& ids) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  EditStep step(steps_, Tr("Ungroup"));
  bool any = false;
  for (const Unit& unit : UnitsOf(document_, ids, selection_.Entered())) {
    if (document_.Find(unit.objects[0])->marks.groups.size() == unit.depth) continue;
    any = true;
    for (const ObjectID id : unit.objects) {
      ObjectMarks marks = document_.Find(id)->marks;
      marks.groups.erase(marks.groups.begin() + static_cast<std::ptrdiff_t>(unit.depth));
      SetMarks(id, std::move(marks));
    }
  }
  if (!any) return Problem(N_("there is no group among the objects"));
  return step.End();
}

}  // namespace host
