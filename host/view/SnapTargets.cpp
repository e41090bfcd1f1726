#include "host/view/SnapTargets.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr double kSame = 1e-6;  // map units

// Takes a way when it is shorter than the one that there is.
void Offer(double way, double reach, std::optional<double>* best) {
  if (std::fabs(way) <= reach && (!*best || std::fabs(way) < std::fabs(**best))) *best = way;
}

void OfferNearest(const std::vector<double>& sorted, double place, double reach, std::optional<double>* best) {
  const auto above = std::lower_bound(sorted.begin(), sorted.end(), place);
  if (above != sorted.end()) Offer(*above - place, reach, best);
  if (above != sorted.begin()) Offer(*std::prev(above) - place, reach, best);
}

bool IsSame(double a, double b) { return std::fabs(a - b) < kSame; }

AGPoint At(int axis, double along, double across) {
  return axis == 0 ? AGPoint{along, across} : AGPoint{across, along};
}

}  // namespace

SnapTargets::Span SnapTargets::SpanOf(const AGRect& box, int axis) {
  return axis == 0 ? Span{box.x0, box.x1} : Span{box.y0, box.y1};
}

SnapTargets::SnapTargets(const DocumentSession& session, const AGRect& area, const SnapRules& rules) {
  if (rules.objects) AddObjects(session, area);
  for (int axis = 0; axis < 2; ++axis) {
    if (rules.guides) guides_[axis] = session.Doc().Aids().Guides(axis);
    for (std::vector<double>* places : {&edges_[axis], &middles_[axis]}) {
      places->insert(places->end(), guides_[axis].begin(), guides_[axis].end());
      std::sort(places->begin(), places->end());
    }
  }
}

void SnapTargets::AddObjects(const DocumentSession& session, const AGRect& area) {
  for (const Layer* layer : session.Doc().Layers()) {
    if (!layer->settings.visible) continue;
    layer->objects.ForEachIn(area, [&](const DocumentObject& object) {
      if (boxes_.size() > kMostTargets || object.marks.hidden || session.Selection().Contains(object.id)) return;
      boxes_.push_back(TurnedBox(object.Placement()));
    });
  }
  if (boxes_.size() > kMostTargets) boxes_.clear();
  boxes_.push_back({0, 0, session.Doc().Page().width, session.Doc().Page().height});
  for (int axis = 0; axis < 2; ++axis) {
    for (const AGRect& box : boxes_) {
      const Span span = SpanOf(box, axis);
      edges_[axis].insert(edges_[axis].end(), {span.low, span.high});
      middles_[axis].push_back(span.Middle());
    }
  }
}

std::optional<double> SnapTargets::FitEdge(int axis, double place, double reach) const {
  std::optional<double> best;
  OfferNearest(edges_[axis], place, reach, &best);
  OfferNearest(middles_[axis], place, reach, &best);
  return best;
}

std::optional<double> SnapTargets::FitBox(int axis, const AGRect& box, double reach) const {
  const Span span = SpanOf(box, axis);
  std::optional<double> best;
  OfferNearest(edges_[axis], span.low, reach, &best);
  OfferNearest(edges_[axis], span.high, reach, &best);
  OfferNearest(middles_[axis], span.Middle(), reach, &best);
  if (const auto gap = FitGap(axis, box, reach)) Offer(*gap, reach, &best);
  return best;
}

SnapTargets::Beside SnapTargets::BesideOf(int axis, const AGRect& box) const {
  const Span own = SpanOf(box, axis);
  const Span across = SpanOf(box, 1 - axis);
  Beside beside;
  for (std::size_t i = 0; i + 1 < boxes_.size(); ++i) {  // without the page
    const Span other = SpanOf(boxes_[i], 1 - axis);
    if (other.high < across.low || across.high < other.low) continue;
    const Span span = SpanOf(boxes_[i], axis);
    if (span.Middle() < own.Middle()) {
      beside.lower.push_back(span);
    } else {
      beside.upper.push_back(span);
    }
  }
  std::ranges::sort(beside.lower, [](const Span& a, const Span& b) { return a.high > b.high; });
  std::ranges::sort(beside.upper, [](const Span& a, const Span& b) { return a.low < b.low; });
  return beside;
}

// In the middle between two, or as far from one as that is from the next.
std::optional<double> SnapTargets::FitGap(int axis, const AGRect& box, double reach) const {
  const Span own = SpanOf(box, axis);
  const auto [lower, upper] = BesideOf(axis, box);
  std::optional<double> best;
  if (!lower.empty() && !upper.empty()) {
    Offer((lower[0].high + upper[0].low - own.low - own.high) / 2, reach, &best);
  }
  if (lower.size() > 1 && lower[0].low > lower[1].high) {
    Offer(lower[0].high + (lower[0].low - lower[1].high) - own.low, reach, &best);
  }
  if (upper.size() > 1 && upper[1].low > upper[0].high) {
    Offer(upper[0].low - (upper[1].low - upper[0].high) - own.high, reach, &best);
  }
  return best;
}

std::vector<SnapLine> SnapTargets::LinesOf(const AGRect& box) const {
  std::vector<SnapLine> lines;
  for (int axis = 0; axis < 2; ++axis) {
    AddLines(axis, box, &lines);
    AddGapLines(axis, box, &lines);
  }
  return lines;
}

// One for each of low edge, middle and high edge, as long as all that lies at it.
void SnapTargets::AddLines(int axis, const AGRect& box, std::vector<SnapLine>* lines) const {
  const Span own = SpanOf(box, axis);
  for (const bool isMiddle : {false, true}) {
    for (const double place : isMiddle ? std::vector{own.Middle()} : std::vector{own.low, own.high}) {
      Span reached = SpanOf(box, 1 - axis);
      bool any = std::ranges::any_of(guides_[axis], [place](double guide) { return IsSame(guide, place); });
      for (const AGRect& target : boxes_) {
        const Span span = SpanOf(target, axis);
        if (isMiddle ? !IsSame(span.Middle(), place) : !IsSame(span.low, place) && !IsSame(span.high, place)) continue;
        const Span across = SpanOf(target, 1 - axis);
        reached = {std::min(reached.low, across.low), std::max(reached.high, across.high)};
        any = true;
      }
      if (any) lines->push_back({At(axis, place, reached.low), At(axis, place, reached.high)});
    }
  }
}

void SnapTargets::AddGapLines(int axis, const AGRect& box, std::vector<SnapLine>* lines) const {
  const Span own = SpanOf(box, axis);
  const double middle = SpanOf(box, 1 - axis).Middle();
  const auto [lower, upper] = BesideOf(axis, box);
  const auto add = [&](const Span& one, const Span& other) {
    if (one.high - one.low <= kSame || !IsSame(one.high - one.low, other.high - other.low)) return;
    for (const Span& gap : {one, other}) lines->push_back({At(axis, gap.low, middle), At(axis, gap.high, middle)});
  };
  if (!lower.empty() && !upper.empty()) add({lower[0].high, own.low}, {own.high, upper[0].low});
  if (lower.size() > 1) add({lower[1].high, lower[0].low}, {lower[0].high, own.low});
  if (upper.size() > 1) add({upper[0].high, upper[1].low}, {own.high, upper[0].low});
}

}  // namespace host
