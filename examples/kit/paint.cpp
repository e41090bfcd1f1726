// Brushes and pens: small values that are copied, written to records, and read from properties.
#include <cstdio>

#include "graphics/paint/AGBrushAndPen.h"
#include "kit/streams/AKFile.h"
#include "kit/values/AKValueHelpers.h"

int main() {
  AGBrush brush;
  std::printf("%d\n", brush.Appears());  // prints: 0
  brush.SetStyleLinearGradient(kAGColorRed, kAGColorYellow, 0.5, 0.25);
  std::printf("%d %d\n", brush.Appears(), brush.Style() == kAGBrushStyleLinearGradient);  // prints: 1 1

  // Setters clamp; the angle goes into a whole turn.
  brush.SetPatternIndex(99);
  brush.SetGradientBlend(-1);
  std::printf("%u %g\n", brush.PatternIndex(), brush.GradientBlend());  // prints: 53 0

  // Stops of one's own: the colour goes there and back.
  ATBrushCustomGradient<double> wave;
  const double factors[] = {0, 1, 0};
  const double positions[] = {0, 0.5, 1};
  wave.SetFactors(factors, positions, 3);
  brush.SetStyleLinearGradient(kAGColorRed, kAGColorYellow, wave, 0);
  std::printf("%u stops\n", brush.CustomGradient()->FactorCount());  // prints: 3 stops

  AGPen pen(kAGBrushStyleSolid, kAGColorBlue, kAGNullColor, 2.5, kAGPenSizeModeAbsolute);
  pen.SetLineJoin(kAGPenLineJoinRound);
  AGPenCustomArrow arrow;
  arrow.SetEndArrow(3, 0.5);
  pen.SetCustomArrow(arrow);
  std::printf("%d %d\n", pen.CustomArrow()->HasBegArrow(), pen.CustomArrow()->HasEndArrow());  // prints: 0 1

  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  pen.WriteToFile(file);
  file.SetPos(0);
  AGPen back;
  const int status = back.ReadFromFile(file);
  std::printf("%d, %g\n", status, back.Size());  // prints: 0, 2.5

  AKValue value;
  brush.WriteToValue(&value);
  std::printf("%s\n", value.GetasAKDictionary()->GetValue("Style").GetasAKString()->CStr());  // prints: LinearGradient
}
