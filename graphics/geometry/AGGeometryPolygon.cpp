// Polygons: a point's side, and whether two of them meet.
//
// Two polygons are compared through a tree of boxes over each one's edges. Edges that follow one another lie close
// together, so a tree over their order needs no sorting; pairs of boxes that are apart are never opened.
#include <algorithm>
#include <limits>
#include <vector>

#include "graphics/geometry/AGGeometry.h"

namespace AGGeometry {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr unsigned int kLeafEdges = 4;

// The edges of a closed polygon, edge i from point i to its successor, under a binary tree of boxes. Node 1 is the
// root, 2i and 2i+1 are the children of i, and the leaves hold kLeafEdges edges each.
class EdgeTree {
 public:
  EdgeTree(const AGPoint* points, unsigned int count) : points_(points), count_(count) {
    while (leaves_ < (count + kLeafEdges - 1) / kLeafEdges) leaves_ *= 2;
    boxes_.resize(2 * static_cast<std::size_t>(leaves_), {kInfinity, kInfinity, -kInfinity, -kInfinity});
    for (unsigned int i = 0; i < count; ++i) {
      AGRect& box = boxes_[leaves_ + i / kLeafEdges];
      Widen(&box, Start(i));
      Widen(&box, End(i));
    }
    for (unsigned int node = leaves_ - 1; node > 0; --node) {
      const AGRect &a = boxes_[2 * node], &b = boxes_[2 * node + 1];
      boxes_[node] = {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
    }
  }

  const AGPoint& Start(unsigned int edge) const { return points_[edge]; }
  const AGPoint& End(unsigned int edge) const { return points_[edge + 1 == count_ ? 0 : edge + 1]; }
  bool IsLeaf(unsigned int node) const { return node >= leaves_; }
  const AGRect& Box(unsigned int node) const { return boxes_[node]; }
  unsigned int FirstEdge(unsigned int leaf) const { return std::min((leaf - leaves_) * kLeafEdges, count_); }

 private:
  static void Widen(AGRect* box, const AGPoint& p) {
    box->x0 = std::min(box->x0, p.x);
    box->y0 = std::min(box->y0, p.y);
    box->x1 = std::max(box->x1, p.x);
    box->y1 = std::max(box->y1, p.y);
  }

  const AGPoint* points_;
  unsigned int count_;
  unsigned int leaves_ = 1;
  std::vector<AGRect> boxes_;
};

bool Touch(const AGRect& a, const AGRect& b) { return a.x0 <= b.x1 && b.x0 <= a.x1 && a.y0 <= b.y1 && b.y0 <= a.y1; }

bool LeavesMeet(const EdgeTree& tree1, unsigned int leaf1, const EdgeTree& tree2, unsigned int leaf2) {
  const unsigned int end1 = tree1.FirstEdge(leaf1 + 1), end2 = tree2.FirstEdge(leaf2 + 1);
  for (unsigned int i = tree1.FirstEdge(leaf1); i < end1; ++i) {
    for (unsigned int j = tree2.FirstEdge(leaf2); j < end2; ++j) {
      if (GetIntersectionOfSegments(tree1.Start(i), tree1.End(i), tree2.Start(j), tree2.End(j), nullptr)) return true;
    }
  }
  return false;
}

bool EdgesMeet(const EdgeTree& tree1, unsigned int node1, const EdgeTree& tree2, unsigned int node2) {
  const AGRect &box1 = tree1.Box(node1), &box2 = tree2.Box(node2);
  if (!Touch(box1, box2)) return false;
  const bool leaf1 = tree1.IsLeaf(node1), leaf2 = tree2.IsLeaf(node2);
  if (leaf1 && leaf2) return LeavesMeet(tree1, node1, tree2, node2);
  const bool larger1 = box1.Width() + box1.Height() >= box2.Width() + box2.Height();
  if (leaf2 || (!leaf1 && larger1)) {
    return EdgesMeet(tree1, 2 * node1, tree2, node2) || EdgesMeet(tree1, 2 * node1 + 1, tree2, node2);
  }
  return EdgesMeet(tree1, node1, tree2, 2 * node2) || EdgesMeet(tree1, node1, tree2, 2 * node2 + 1);
}

}  // namespace

bool IsPointInsidePolygon(const AGPoint* points, unsigned int count, const AGPoint& p) {
  if (points == nullptr || count < 3) return false;
  if (points[count - 1] == points[0]) --count;
  bool inside = false;
  AGPoint previous = points[count - 1];
  for (unsigned int i = 0; i < count; ++i) {
    const AGPoint current = points[i];
    const double dy = current.y - previous.y;
    const double ry = p.y - previous.y;
    const double cross = (current.x - previous.x) * ry - (p.x - previous.x) * dy;
    if ((ry >= 0 && dy > ry && cross > 0) || (ry < 0 && ry >= dy && cross < 0)) inside = !inside;
    previous = current;
  }
  return inside;
}

bool IsPointInsidePolygon(const AGPointArray& points, const AGPoint& p) {
  return IsPointInsidePolygon(points.Data(), points.Count(), p);
}

bool IsPolygonSect(const AGPoint* points1, unsigned int count1, const AGPoint* points2, unsigned int count2) {
  if (points1 == nullptr || points2 == nullptr || count1 < 3 || count2 < 3) return false;
  if (EdgesMeet(EdgeTree(points1, count1), 1, EdgeTree(points2, count2), 1)) return true;
  return IsPointInsidePolygon(points1, count1, points2[0]) || IsPointInsidePolygon(points2, count2, points1[0]);
}

bool IsPolygonSect(const AGPointArray& polygon1, const AGPointArray& polygon2) {
  return IsPolygonSect(polygon1.Data(), polygon1.Count(), polygon2.Data(), polygon2.Count());
}

}  // namespace AGGeometry
