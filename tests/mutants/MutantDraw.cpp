// How it draws: as many bars as it counts.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include "CoreGraphics/CGBitmapContext.h"
#include "CoreGraphics/CGContext.h"
#include "Mutant.h"

namespace {

// The faults that are no part of the picture.
void Misbehave(const AGContext& context, const AKDrawEvent& event) {
  using namespace std::chrono_literals;
  const double width = event.bounds.x1 - event.bounds.x0;
  if (Has("leaks-drawing")) Leak(32);
  if (Has("prints")) std::puts("drawn");
  if (Has("draws-slowly")) std::this_thread::sleep_for(150ms);
  if (Has("other-thread")) std::thread([] { NKLocaleGetString("Mutant"); }).join();
  if (Has("changes-context")) const_cast<AGContext&>(context).alpha = 0.5;
  if (Has("scales-port")) CGContextConcatCTM(context.NativePort(), {0.5, 0, 0, 0.5, 0, 0});
  if (Has("changes-event")) const_cast<AKDrawEvent&>(event).bounds.x0 += 1;
  if (Has("changes-pen") && event.recommendedPen != nullptr) const_cast<AGPen*>(event.recommendedPen)->SetSize(1);
  if (Has("needs-style")) CrashIf(event.recommendedBrush->Style() > 99);
  if (Has("dies-of-width")) CrashIf(width < 0);
  if (Has("dies-of-nan")) CrashIf(std::isnan(width));
  if (Has("dies-of-angle")) CrashIf(!(std::fabs(event.angle) < 1e6));
  if (Has("dies-of-gradient")) CrashIf(event.recommendedBrush != nullptr && event.recommendedBrush->Style() >= 3);
  if (Has("divides")) {
    volatile int whole = static_cast<int>(width);
    whole = 100 / whole;
  }
  if (Has("a-byte-a-unit") && width > 0 && std::isfinite(width)) {
    const std::vector<char> row(static_cast<std::size_t>(std::fmin(width, 1e18)));
  }
  if (Has("keeps-record")) CrashIf(gKeptRecord->displayScale > 1e6);
}

void TouchPixels(const AGContext& context) {
  auto* bytes = static_cast<unsigned char*>(CGBitmapContextGetData(context.NativePort()));
  if (bytes == nullptr && !Has("needs-pixels")) return;
  for (int i = 0; i < 400; ++i) bytes[i] = i % 4 == 0 || i % 4 == 1 ? 255 : 0;  // a red line, it thinks
}

}  // namespace

AGRect Mutant::FaultyBounds(const AKDrawEvent& event) const {
  static int times = 0;
  AGRect bounds = event.bounds;
  if (Has("jitters") && ++times % 2 == 0) bounds.x0 += 5;
  if (Has("paints-outside")) bounds.x1 += 60;
  if (Has("shared-by-copies")) bounds.x1 -= static_cast<double>(mutantUnique);
  return bounds;
}

void Mutant::PrepareFaulty(AGContext* copy, const AGContext& context, const AKDrawEvent& event) const {
  Misbehave(context, event);
  if (Has("always-paints") && !copy->WouldFillOrStroke()) copy->brush.SetStyleSolid(AGColor(9, 9, 9));
  if (Has("opaque")) copy->alpha = 1;
  if (Has("true-colours")) copy->colorFactor = 1;
  if (Has("own-transform")) copy->transform = kAGAffineTransformIdentity;
  if (Has("own-clip")) copy->ResetClip();
  if (Has("pixels") || Has("needs-pixels")) TouchPixels(context);
}

int Mutant::akmDraw(const AGContext& context, const AKDrawEvent& event) const {
  static int lastCount = 1;
  AGContext copy(context);
  event.SetupContextWithRecommendedBrushAndPen(&copy);
  PrepareFaulty(&copy, context, event);
  if (Has("ends-shared")) CrashIf(!IsResourceThere());
  if (Has("drawing-edits")) const_cast<Mutant*>(this)->alpha_ *= 0.9;
  setsSinceDrawn_ = 0;
  if (!copy.WouldFillOrStroke()) return 0;
  const AGRect bounds = FaultyBounds(event);
  const int count = Has("draws-last") ? lastCount : count_;
  lastCount = count_;
  const double step = (bounds.x1 - bounds.x0) / (2 * count - 1);
  AGPath path;
  for (int i = 0; i < count; ++i) {
    const double x = bounds.x0 + 2 * i * step;
    path.AddRect({x, bounds.y0, x + step, bounds.y1}, false);
  }
  const double angle = Has("ignores-angle") ? 0 : event.angle;
  copy.DrawPath(path, AGAffineTransformRotation(angle, event.bounds.Center()));
  return Has("no-success") ? -1 : 0;
}
