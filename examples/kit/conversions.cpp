// Numbers, times, colours and geometry as text, and text that stays the same in every country.
#include <cstdio>

#include "kit/text/AKTextConversions.h"
#include "kit/text/AKTextLocale.h"

int main() {
  double seconds = 0;
  AGRect rect;
  AGColor color;
  const bool isTime = strGetasTimeHMS("1:02:05", &seconds, 0);
  std::printf("%d %g\n", isTime, seconds);  // prints: 1 3725
  strGetasAGRect("(0;0;40;30)", &rect, kAGNullRect);
  std::printf("%g x %g\n", rect.Width(), rect.Height());  // prints: 40 x 30
  // What does not match gives the default, and says so.
  const bool isColor = strGetasAGColorHex("orange", &color, kAGColorRed);
  std::printf("%d %d\n", isColor, color == kAGColorRed);  // prints: 0 1

  char text[64];
  std::printf("%s\n", strSetasAGColor(text, kAGColorBlue, true));  // prints: (000;000;255;255)
  std::printf("%s\n", strSetasMemory(text, 1500));                 // prints: 1.5 KB
  std::printf("%s\n", strSetasTimeHMS(text, 75.5, 1, false));      // prints: 0:01:15.5
  {
    // What is stored has a dot, wherever the user lives.
    const AKScopedPrintfFloatSepAsDot dots;
    std::printf("%s\n", strSetasAGPoint(text, {0.5, -2}, 2));  // prints: (0.50;-2.00)
  }

  AKString name("Layer 09");
  AKStringSuffixNumberAdd(&name, 1, 1, true);
  std::printf("%s\n", name.CStr());  // prints: Layer 10
}
