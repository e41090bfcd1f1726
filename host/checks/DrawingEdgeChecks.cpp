// Drawing into boxes that users seldom make, and files may hold.
#include <limits>

#include "host/validator/Picture.h"
#include "host/validator/States.h"

namespace host::validator {
namespace {

using Limits = std::numeric_limits<double>;

constexpr double kNaN = Limits::quiet_NaN();
constexpr double kInfinity = Limits::infinity();

template <std::size_t count>
void DrawInto(Trial& trial, const AGRect (&boxes)[count]) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    for (std::size_t step = 0; step < count; ++step) {
      if (!trial.Wants(step)) continue;
      for (const double angle : {0.0, 0.5}) {
        DrawJob job;
        job.bounds = boxes[step];
        job.angle = angle;
        const Picture picture(cls, object, job);
      }
    }
  });
}

void Empty(Trial& trial) {
  static constexpr AGRect kBoxes[] = {{100, 100, 100, 100},
                                      {50, 100, 150, 100},
                                      {100, 50, 100, 150},
                                      {0, 0, 0, 0},
                                      {100, 100, 100 + 1e-12, 100 + 1e-12},
                                      {0, 0, 1e-300, 1e-300}};
  DrawInto(trial, kBoxes);
}

void Inverted(Trial& trial) {
  static constexpr AGRect kBoxes[] = {{140, 80, 60, 120}, {60, 120, 140, 80}, {140, 120, 60, 80}};
  DrawInto(trial, kBoxes);
}

void Huge(Trial& trial) {
  static constexpr AGRect kBoxes[] = {{-1e6, -1e6, 1e6, 1e6},
                                      {0, 0, 1e9, 10},
                                      {-1e12, 0, 1e12, 100},
                                      {-1e30, -1e30, 1e30, 1e30},
                                      {-1e308, -1e308, 1e308, 1e308}};
  DrawInto(trial, kBoxes);
}

void NoNumbers(Trial& trial) {
  static constexpr AGRect kBoxes[] = {{kNaN, 0, 100, 100},
                                      {0, 0, kNaN, kNaN},
                                      {kNaN, kNaN, kNaN, kNaN},
                                      {-kInfinity, 0, kInfinity, 100},
                                      {kInfinity, kInfinity, kInfinity, kInfinity}};
  DrawInto(trial, kBoxes);
}

void Angles(Trial& trial) {
  static constexpr double kAngles[] = {kNaN, kInfinity, -kInfinity, 1e308, -1e17, 1e-308, 1000};
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    for (std::size_t step = 0; step < std::size(kAngles); ++step) {
      if (!trial.Wants(step)) continue;
      DrawJob job;
      job.angle = kAngles[step];
      const Picture picture(cls, object, job);
    }
  });
}

void Styles(Trial& trial) {
  ForEachClass(trial, {kAKMethodDraw}, [&](const ClassCalls& cls) {
    for (std::size_t step = 0; step < trial.Cases(100); ++step) {
      if (!trial.Wants(step)) continue;
      Dice dice = trial.DiceOf(step);
      const AGColor one(static_cast<unsigned char>(dice.Below(256)), 40, 90,
                        static_cast<unsigned char>(dice.Below(256)));
      const AGColor other(10, static_cast<unsigned char>(dice.Below(256)), 200);
      DrawJob job;
      job.brush = AGBrush(static_cast<AGBrushStyle>(dice.Below(5)), one, other);
      job.pen = AGPen(static_cast<AGBrushStyle>(dice.Below(5)), other, one, dice.Between(0, 20),
                      static_cast<AGPenSizeMode>(dice.Below(2)));
      job.pen.SetLineJoin(static_cast<AGPenLineJoin>(dice.Below(3)));
      job.pen.SetLineCap(static_cast<AGPenLineCap>(dice.Below(3)));
      job.bounds = {dice.Between(-50, 100), dice.Between(-50, 100), dice.Between(100, 250), dice.Between(100, 250)};
      job.angle = dice.Between(-4, 4);
      int status = 0;
      const Picture picture(cls, RandomObject(cls, &dice), job, &status);
      trial.Expect(status == 0, "status 0 with each brush and pen", StatusText(status));
    }
  });
}

}  // namespace

std::vector<Check> DrawingEdgeChecks() {
  return {
      {"draw-empty-bounds", "Bounds without width or height are borne: a click makes them.", 2, &Empty},
      {"draw-inverted-bounds", "Bounds whose ends are exchanged are borne.", 2, &Inverted},
      {"draw-huge-bounds", "Bounds of any size are borne, in the same time.", 2, &Huge},
      {"draw-no-numbers", "Bounds that are infinite or no numbers are borne.", 2, &NoNumbers},
      {"draw-odd-angles", "Each angle is borne.", 2, &Angles},
      {"draw-styles", "Each brush and pen is drawn with, in each state of an object.", 3, &Styles},
  };
}

}  // namespace host::validator
