// Drawing: what appears, and what stays as it was.
#include <cmath>

#include "AKPlatform/AKVectorContext.h"
#include "CoreGraphics/CGContext.h"
#include "host/model/DocumentObject.h"
#include "host/validator/Heap.h"
#include "host/validator/Picture.h"
#include "host/validator/States.h"

namespace host::validator {
namespace {

std::string Count(std::size_t pixels) { return std::to_string(pixels) + " pixels"; }

void Status(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    int status = 0;
    const Picture picture(cls, object, DrawJob(), &status);
    trial.Expect(status == 0, "status 0", StatusText(status));
  });
}

void Same(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    const Picture first(cls, object, DrawJob());
    const Picture second(cls, object, DrawJob());
    const std::size_t others = second.CountOthers(first);
    trial.Expect(others == 0, "the same picture as before", Count(others) + " differ");
  });
}

void ObjectKept(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    const State before = StateOf(cls, object);
    const Picture picture(cls, object, DrawJob());
    const State after = StateOf(cls, object);
    trial.Expect(before == after, "the object as it was: " + TextOfState(before), TextOfState(after));
  });
}

void ContextKept(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    const AGBitmap bitmap(kPictureSide, kPictureSide, AGBitmap::kFlagZeroFill);
    const DrawJob job;
    AGContext context = bitmap.GetContextOfBitmap();
    context.alpha = 0.75;
    context.colorFactor = 0.5;
    context.patternOrigin = {3, 4};
    context.transform = AGAffineTransformTranslation(5, 6);
    context.brush.SetStyleSolid(AGColor(1, 2, 3));
    context.pen.SetStyleSolid(AGColor(4, 5, 6), 7);
    context.SetClipRect({0, 0, 190, 190});
    cls.Draw(object, context, job.Event());
    const auto& t = context.transform;
    const bool isKept = context.alpha == 0.75 && context.colorFactor == 0.5 && context.antialias &&
                        context.patternOrigin.x == 3 && context.patternOrigin.y == 4 && t.a == 1 && t.b == 0 &&
                        t.c == 0 && t.d == 1 && t.tx == 5 && t.ty == 6 && context.brush.Color() == AGColor(1, 2, 3) &&
                        context.pen.Size() == 7 && context.pen.Brush().Color() == AGColor(4, 5, 6) && context.HasClip();
    trial.Expect(isKept, "the host's context as it was", "alpha, transform, brush, pen or clip of it was changed");
  });
}

// What is filled behind it covers everything, under the same matrix.
void PortKept(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    const AGBitmap bitmap(kPictureSide, kPictureSide, AGBitmap::kFlagZeroFill);
    AGContext context = bitmap.GetContextOfBitmap();
    CGContextRef port = context.NativePort();
    const CGAffineTransform before = CGContextGetCTM(port);
    cls.Draw(object, context, DrawJob().Event());
    const CGAffineTransform after = CGContextGetCTM(port);
    const bool isSame = before.a == after.a && before.b == after.b && before.c == after.c && before.d == after.d &&
                        before.tx == after.tx && before.ty == after.ty;
    trial.Expect(isSame, "the port's matrix as it was", "another one");
    CGContextSetRGBFillColor(port, 0, 1, 0, 1);
    CGContextFillRect(port, {{0, 0}, {kPictureSide, kPictureSide}});
    for (unsigned int y = 0; y < kPictureSide; y += 3) {
      for (unsigned int x = 0; x < kPictureSide; x += 3) {
        trial.Expect(bitmap.GetPixelColor(x, y) == AGColor(0, 255, 0), "the port fills all, as before",
                     "it is clipped, or paints in another way");
      }
    }
  });
}

void EventKept(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    const AGBitmap bitmap(kPictureSide, kPictureSide, AGBitmap::kFlagZeroFill);
    const DrawJob job;
    AKDrawEvent event = job.Event();
    event.angle = 0.25;
    cls.Draw(object, bitmap.GetContextOfBitmap(), event);
    const AGRect& b = event.bounds;
    const bool isKept = b.x0 == 60 && b.y0 == 80 && b.x1 == 140 && b.y1 == 120 && event.angle == 0.25 &&
                        event.flags == 0 && event.recommendedBrush == &job.brush && event.recommendedPen == &job.pen &&
                        job.brush.Color() == AGColor(230, 60, 30) && job.pen.Size() == 3 &&
                        job.pen.LineJoin() == DrawJob().pen.LineJoin();
    trial.Expect(isKept, "the event, its brush and its pen as they were", "one of them was changed");
  });
}

void ExpectWithin(Trial& trial, const ClassCalls& cls, const Instance& object, const DrawJob& job) {
  DocumentObject placed;
  placed.bounds = job.bounds;
  placed.angle = job.angle;
  placed.pen = job.pen;
  const AGRect box = PaintedBox(placed);
  const std::string outside = Picture(cls, object, job).PaintedOutside(box);
  trial.Expect(outside.empty(), "nothing is painted outside of the turned bounds and what the pen needs around them",
               "a painted pixel at " + outside);
}

void Within(Trial& trial) {
  ForEachClass(trial, {kAKMethodDraw}, [&](const ClassCalls& cls) {
    for (std::size_t step = 0; step < trial.Cases(30); ++step) {
      if (!trial.Wants(step)) continue;
      Dice dice = trial.DiceOf(step);
      DrawJob job;
      job.pen.SetSize(1 + static_cast<double>(dice.Below(4)));
      job.bounds = {dice.Between(40, 90), dice.Between(40, 90), dice.Between(110, 160), dice.Between(110, 160)};
      ExpectWithin(trial, cls, RandomObject(cls, &dice), job);
    }
  });
}

// A long box upright and on its side: what ignores the angle paints outside of the turned one.
void Turned(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    for (const double angle : {1.5707963267948966, -1.5707963267948966, 0.7, 3.0, 10.0}) {
      DrawJob job;
      job.pen.SetSize(1);
      job.bounds = {30, 95, 170, 105};
      job.angle = angle;
      ExpectWithin(trial, cls, object, job);
    }
  });
}

void Invisible(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    DrawJob job;
    job.brush.SetStyleNone();
    job.pen.SetStyleNone();
    const std::size_t painted = Picture(cls, object, job).Painted();
    trial.Expect(painted == 0, "nothing is painted without brush and pen", Count(painted));
  });
}

void Alpha(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    DrawJob job;
    job.alpha = 0;
    const std::size_t painted = Picture(cls, object, job).Painted();
    trial.Expect(painted == 0, "nothing is painted with the context's alpha 0", Count(painted));
  });
}

void Factor(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    DrawJob job;
    job.colorFactor = 0;
    const Picture picture(cls, object, job);
    for (unsigned int y = 0; y < kPictureSide; ++y) {
      for (unsigned int x = 0; x < kPictureSide; ++x) {
        const AGColor color = picture.At(x, y);
        trial.Expect(color.Red() <= 2 && color.Green() <= 2 && color.Blue() <= 2,
                     "black alone with the context's colour factor 0",
                     "a colour at (" + std::to_string(x) + ", " + std::to_string(y) + ")");
      }
    }
  });
}

void Transform(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    DrawJob moved;
    moved.transform = AGAffineTransformTranslation(24, -40);
    const Picture there(cls, object, moved);
    const std::size_t others = there.CountOthers(Picture(cls, object, DrawJob()), 24, -40);
    trial.Expect(others * 100 <= there.Painted(), "the picture moves with the context's transform",
                 Count(others) + " of " + Count(there.Painted()) + " are other ones");
  });
}

void Clip(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    DrawJob job;
    job.clip = {0, 0, 90, 200};
    const std::string outside = Picture(cls, object, job).PaintedOutside({0, 0, 90, 200});
    trial.Expect(outside.empty(), "nothing is painted outside of the context's clip", "a painted pixel at " + outside);
  });
}

void WithoutStyle(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    DrawJob job;
    job.hasStyle = false;
    int status = 0;
    const Picture picture(cls, object, job, &status);
    trial.Expect(status == 0, "status 0 with an event that recommends no brush and no pen", StatusText(status));
  });
}

void ByteOrders(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    DrawJob job;
    job.bitmapFlags = AGBitmap::kFlagZeroFill | AGBitmap::kFlagLittleEndian;
    const std::size_t others = Picture(cls, object, job).CountOthers(Picture(cls, object, DrawJob()));
    trial.Expect(others == 0, "the same picture in either order of a pixel's bytes", Count(others) + " differ");
  });
}

bool Drop(void*, const void*, std::size_t) { return true; }

void Pages(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    for (const auto create : {&CGVectorContextCreatePDF, &CGVectorContextCreateSVG}) {
      CGContextRef page = create(kPictureSide, kPictureSide, &Drop, nullptr);
      const int status = cls.Draw(object, AGContext(page, {kPictureSide, kPictureSide}), DrawJob().Event());
      trial.Expect(status == 0, "status 0 on a page of PDF or SVG", StatusText(status));
      CGVectorContextFinish(page);
      CGContextRelease(page);
    }
  });
}

void LeavesHeap(Trial& trial) {
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    constexpr int kTimes = 600;
    HeapWatch heap(trial);
    for (int i = 0; i < kTimes; ++i) {
      const Picture picture(cls, object, DrawJob());
      heap.Note(i, kTimes);
    }
    heap.ExpectFlat("drawing an object");
  });
}

}  // namespace

std::vector<Check> DrawingChecks() {
  return {
      {"draw-status", "An object draws and returns 0.", 1, &Status},
      {"draw-same", "An object draws the same every time, or hosts show parts of two pictures.", 1, &Same},
      {"draw-object-kept", "Drawing changes nothing of the object: nobody edited it.", 1, &ObjectKept},
      {"draw-context-kept", "The host's context stays as it is, for the next object.", 1, &ContextKept},
      {"draw-port-kept", "The port's matrix and clip stay as they are, for the next object.", 2, &PortKept},
      {"draw-event-kept", "The event, its brush and its pen are read only.", 1, &EventKept},
      {"draw-within",
       "An object paints within its bounds and what the pen needs around them: hosts draw no more again.", 2, &Within},
      {"draw-turned", "The bounds are turned by the event's angle about their centre.", 2, &Turned},
      {"draw-invisible", "Without brush and pen nothing is painted.", 1, &Invisible},
      {"draw-alpha", "With the context's alpha 0 nothing is painted.", 1, &Alpha},
      {"draw-colour-factor", "The context's colour factor counts, by which hosts shade.", 2, &Factor},
      {"draw-transform", "The context's transform counts, by which hosts scroll and zoom.", 1, &Transform},
      {"draw-clip", "The context's clip counts, outside of which others have painted.", 1, &Clip},
      {"draw-no-style", "An event may recommend no brush and no pen: those of the context count.", 1, &WithoutStyle},
      {"draw-byte-orders", "Bitmaps of both orders of bytes show the same.", 2, &ByteOrders},
      {"draw-pages", "An object draws on pages too, which have no pixels.", 2, &Pages},
      {"draw-heap", "Drawing leaves no memory taken.", 3, &LeavesHeap},
  };
}

}  // namespace host::validator
