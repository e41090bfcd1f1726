#include "platform/paths/PathDashes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace platform {
namespace {

constexpr double kMostDashes = 50000;

CGPoint Between(const CGPoint& a, const CGPoint& b, double t) { return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t}; }

// A cubic curve, which a line is too.
struct Piece {
  std::array<CGPoint, 4> p;
  bool isLine;

  static Piece Line(const CGPoint& from, const CGPoint& to) {
    return {{from, Between(from, to, 1.0 / 3), Between(from, to, 2.0 / 3), to}, true};
  }
  static Piece Quad(const CGPoint& from, const CGPoint& control, const CGPoint& to) {
    return {{from, Between(from, control, 2.0 / 3), Between(to, control, 2.0 / 3), to}, false};
  }
  // The two parts at t.
  void Split(double t, Piece* first, Piece* second) const {
    const CGPoint a = Between(p[0], p[1], t);
    const CGPoint b = Between(p[1], p[2], t);
    const CGPoint c = Between(p[2], p[3], t);
    const CGPoint ab = Between(a, b, t);
    const CGPoint bc = Between(b, c, t);
    const CGPoint middle = Between(ab, bc, t);
    *first = {{p[0], a, ab, middle}, isLine};
    *second = {{middle, bc, c, p[3]}, isLine};
  }
  CGPoint At(double t) const {
    Piece first;
    Piece second;
    Split(t, &first, &second);
    return second.p[0];
  }
};

// Lengths along a piece by chords.
class Measured {
 public:
  explicit Measured(const Piece& piece) : steps_(piece.isLine ? 1 : kSteps) {
    CGPoint last = piece.p[0];
    for (std::size_t i = 1; i <= steps_; ++i) {
      const CGPoint next = i == steps_ ? piece.p[3] : piece.At(static_cast<double>(i) / static_cast<double>(steps_));
      reached_[i] = reached_[i - 1] + std::hypot(next.x - last.x, next.y - last.y);
      last = next;
    }
  }
  double Length() const { return reached_[steps_]; }
  // The parameter at a length below that of all.
  double ParameterAt(double length) const {
    const auto* const next = std::upper_bound(reached_.data() + 1, reached_.data() + steps_, length);
    const double chord = next[0] - next[-1];
    const double part = chord > 0 ? (length - next[-1]) / chord : 0;
    return (static_cast<double>(next - reached_.data() - 1) + part) / static_cast<double>(steps_);
  }

 private:
  static constexpr std::size_t kSteps = 32;
  std::size_t steps_;
  std::array<double, kSteps + 1> reached_{};
};

class Dasher {
 public:
  Dasher(const std::vector<double>& lengths, CGPath* out)
      : lengths_(lengths), out_(out), room_(kMostDashes * std::accumulate(lengths.begin(), lengths.end(), 0.0) / 2) {}

  void Begin() {
    index_ = 0;
    left_ = lengths_[0];
    isDrawing_ = false;
  }
  // False when there would be too many dashes.
  bool Add(Piece piece) {
    const Measured measured(piece);
    const double length = measured.Length();
    room_ -= length;
    if (!(room_ >= 0)) return false;
    double done = 0;
    double from = 0;  // as a parameter of the whole
    while (left_ < length - done) {
      done += left_;
      const double to = std::max(measured.ParameterAt(done), from);
      Piece first;
      Piece rest;
      piece.Split(from < 1 ? (to - from) / (1 - from) : 1, &first, &rest);
      Put(first);
      piece = rest;
      from = to;
      index_ = (index_ + 1) % lengths_.size();
      left_ = lengths_[index_];
      isDrawing_ = false;
    }
    left_ -= length - done;
    Put(piece);
    return true;
  }

 private:
  void Put(const Piece& piece) {
    if (index_ % 2 != 0) return;
    if (!isDrawing_) CGPathMoveToPoint(out_, nullptr, piece.p[0].x, piece.p[0].y);
    isDrawing_ = true;
    const auto& p = piece.p;
    if (piece.isLine) {
      CGPathAddLineToPoint(out_, nullptr, p[3].x, p[3].y);
    } else {
      CGPathAddCurveToPoint(out_, nullptr, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y);
    }
  }

  const std::vector<double>& lengths_;
  CGPath* out_;
  double room_;  ///< how much longer the path may be
  std::size_t index_ = 0;
  double left_ = 0;  ///< of the stroke or gap
  bool isDrawing_ = false;
};

}  // namespace

bool AddDashes(const CGPath& path, const std::vector<double>& lengths, CGPath* out) {
  Dasher dasher(lengths, out);
  CGPoint start{0, 0};
  CGPoint last{0, 0};
  bool isSound = true;
  std::size_t point = 0;
  dasher.Begin();
  for (std::size_t i = 0; i < path.verbs.Count() && isSound; ++i) {
    const CGPath::Verb verb = path.verbs.Data()[i];
    const auto next = [&](std::size_t index) { return path.points.Data()[point + index]; };
    switch (verb) {
      case kCGPathElementMoveToPoint:
        start = next(0);
        dasher.Begin();
        break;
      case kCGPathElementAddLineToPoint:
        isSound = dasher.Add(Piece::Line(last, next(0)));
        break;
      case kCGPathElementAddQuadCurveToPoint:
        isSound = dasher.Add(Piece::Quad(last, next(0), next(1)));
        break;
      case kCGPathElementAddCurveToPoint:
        isSound = dasher.Add({{last, next(0), next(1), next(2)}, false});
        break;
      default:
        isSound = dasher.Add(Piece::Line(last, start));
        dasher.Begin();
        break;
    }
    point += CGPath::PointCount(verb);
    last = CGPath::PointCount(verb) == 0 ? start : path.points.Data()[point - 1];
  }
  return isSound;
}

}  // namespace platform
