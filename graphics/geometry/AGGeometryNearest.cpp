// The nearest of many points or segments. Without a map a block of segments is first judged by the box of its points,
// which costs little more than reading them; only a block that could hold a nearer segment is looked at one by one.
#include <algorithm>
#include <cmath>
#include <limits>

#include "graphics/geometry/AGGeometry.h"

namespace AGGeometry {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Nearest {
  double distance2 = kInfinity;
  unsigned int index = kNoIndex;

  void Offer(double candidate, unsigned int at) {
    if (candidate < distance2) {
      distance2 = candidate;
      index = at;
    }
  }
};

double Report(const Nearest& nearest, double maxDistance, unsigned int* index, double* distance) {
  double result = std::sqrt(nearest.distance2);
  unsigned int found = nearest.index;
  if (found == kNoIndex || (maxDistance > 0 && result > maxDistance)) {
    found = kNoIndex;
    result = kAKHugeFloat64;
  }
  if (index) *index = found;
  if (distance) *distance = result;
  return result;
}

// The squared distance from p to the box of count points.
double DistanceToBox2(const AGPoint* points, unsigned int count, const AGPoint& p) {
  AGRect box = {kInfinity, kInfinity, -kInfinity, -kInfinity};
  for (unsigned int i = 0; i < count; ++i) {  // the comparisons are those of the machine's minimum and maximum
    box.x0 = points[i].x < box.x0 ? points[i].x : box.x0;
    box.y0 = points[i].y < box.y0 ? points[i].y : box.y0;
    box.x1 = points[i].x > box.x1 ? points[i].x : box.x1;
    box.y1 = points[i].y > box.y1 ? points[i].y : box.y1;
  }
  const double dx = std::max({box.x0 - p.x, p.x - box.x1, 0.0});
  const double dy = std::max({box.y0 - p.y, p.y - box.y1, 0.0});
  return dx * dx + dy * dy;
}

void SearchSegments(const AGPoint* points, unsigned int count, const AGPoint& p, Nearest* nearest) {
  constexpr unsigned int kBlock = 128;
  for (unsigned int first = 0; first + 1 < count; first += kBlock) {
    const unsigned int segments = std::min(kBlock, count - 1 - first);
    if (DistanceToBox2(points + first, segments + 1, p) > nearest->distance2) continue;
    for (unsigned int i = first; i < first + segments; ++i) {
      nearest->Offer(GetDistanceToSegment2(p, points[i], points[i + 1]), i);
    }
  }
}

void SearchMappedSegments(const AGPoint* points, unsigned int count, const AGPoint& p, const AGAffineTransform& t,
                          Nearest* nearest) {
  AGPoint from = t.Apply(points[0]);
  for (unsigned int i = 1; i < count; ++i) {
    const AGPoint to = t.Apply(points[i]);
    nearest->Offer(GetDistanceToSegment2(p, from, to), i - 1);
    from = to;
  }
}

}  // namespace

double FindNearestPoint(const AGPoint* points, unsigned int count, const AGPoint& p, double maxDistance,
                        const AGAffineTransform* t, unsigned int* index, double* distance) {
  Nearest nearest;
  if (points == nullptr) count = 0;
  const AGAffineTransform map = t ? *t : kAGAffineTransformIdentity;
  const AGPoint target = map.Apply(p);
  for (unsigned int i = 0; i < count; ++i) {
    const AGPoint offset = map.Apply(points[i]) - target;
    nearest.Offer(offset.x * offset.x + offset.y * offset.y, i);
  }
  return Report(nearest, maxDistance, index, distance);
}

double FindNearestPoint(const AGPointArray& points, const AGPoint& p, double maxDistance, const AGAffineTransform* t,
                        unsigned int* index, double* distance) {
  return FindNearestPoint(points.Data(), points.Count(), p, maxDistance, t, index, distance);
}

double FindNearestSegment(const AGPoint* points, unsigned int count, bool closed, const AGPoint& p, double maxDistance,
                          const AGAffineTransform* t, unsigned int* index, double* distance) {
  Nearest nearest;
  if (points != nullptr && count > 1) {
    const AGAffineTransform map = t ? *t : kAGAffineTransformIdentity;
    const AGPoint target = map.Apply(p);
    if (map.IsIdentity()) {
      SearchSegments(points, count, target, &nearest);
    } else {
      SearchMappedSegments(points, count, target, map, &nearest);
    }
    if (closed) {
      nearest.Offer(GetDistanceToSegment2(target, map.Apply(points[count - 1]), map.Apply(points[0])), count - 1);
    }
  }
  return Report(nearest, maxDistance, index, distance);
}

double FindNearestSegment(const AGPointArray& points, bool closed, const AGPoint& p, double maxDistance,
                          const AGAffineTransform* t, unsigned int* index, double* distance) {
  return FindNearestSegment(points.Data(), points.Count(), closed, p, maxDistance, t, index, distance);
}

}  // namespace AGGeometry
