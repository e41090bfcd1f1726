// What a box that is dragged fits to: the edges and middles of other objects and of the page, gaps as wide as those
// between others, and guides.
//
// Targets are taken once, when a drag begins; a motion then costs a search in sorted numbers, and a look through the
// boxes beside the dragged one.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "host/session/DocumentSession.h"

namespace host {

/// A line to be shown, map units: along an edge or a middle, or across a gap that is as wide as another.
struct SnapLine {
  AGPoint from;
  AGPoint to;

  bool operator==(const SnapLine&) const = default;
};

/// What places snap to: multiples of a spacing, 0 for none; other objects in sight and guides, which go before it.
struct SnapRules {
  double spacing = 0;
  bool objects = false;
  bool guides = false;

  bool HasTargets() const { return objects || guides; }
};

class SnapTargets {
 public:
  /// More objects than this in sight are no targets: one would fit anywhere.
  static constexpr std::size_t kMostTargets = 10000;

  SnapTargets() = default;
  /// As the rules have it the guides, and the page and the objects within an area that are not selected, hidden or in
  /// hidden layers.
  SnapTargets(const DocumentSession& session, const AGRect& area, const SnapRules& rules);

  /// How far a box is to be moved along x (0) or y (1) so that it fits, at most `reach`; none when nothing is so near.
  std::optional<double> FitBox(int axis, const AGRect& box, double reach) const;
  /// The same for one edge, which goes to edges and middles.
  std::optional<double> FitEdge(int axis, double place, double reach) const;
  /// The lines along x and y at which a box fits now.
  std::vector<SnapLine> LinesOf(const AGRect& box) const;

 private:
  struct Span {
    double low, high;
    double Middle() const { return (low + high) / 2; }
  };
  static Span SpanOf(const AGRect& box, int axis);
  /// The boxes beside one along an axis, those behind and those before it, the nearest first.
  struct Beside {
    std::vector<Span> lower, upper;
  };
  Beside BesideOf(int axis, const AGRect& box) const;
  std::optional<double> FitGap(int axis, const AGRect& box, double reach) const;
  void AddLines(int axis, const AGRect& box, std::vector<SnapLine>* lines) const;
  void AddGapLines(int axis, const AGRect& box, std::vector<SnapLine>* lines) const;

  void AddObjects(const DocumentSession& session, const AGRect& area);

  std::vector<AGRect> boxes_;  // that of the page last
  std::array<std::vector<double>, 2> guides_;
  std::array<std::vector<double>, 2> edges_;
  std::array<std::vector<double>, 2> middles_;
};

}  // namespace host
