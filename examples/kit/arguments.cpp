// Argument texts, as akmInitWithArgs gets them, and class identifiers.
#include <cstdio>

#include "kit/text/AKArgs.h"
#include "kit/text/AKClassID.h"
#include "kit/text/AKTextConversions.h"

int main() {
  const AKArgs args("-points:7 -title:\"two words\" -closed", true);
  double points = 0;
  strGetasFloat64(args.GetParam("-points:").CStr(), &points, 5);
  std::printf("%g, %s\n", points, args.GetParam("-title:").CStr());      // prints: 7, two words
  std::printf("%d %d\n", args.IsParam("-closed"), args.IsParam("-x:"));  // prints: 1 0

  // What is missing is the empty text, so that a reader leaves its output at the default.
  strGetasFloat64(args.GetParam("-inner:").CStr(), &points, 0.4);
  std::printf("%g\n", points);  // prints: 0.4

  // An identifier keeps the first 7 characters.
  const AKClassID id("exStarOfMine");
  std::printf("%s %d\n", id.chars, id == kAKNullClassID);  // prints: exStarO 0
}
