#include "AKPlatform/AKPathCopy.h"

CGPathRef CGPathCreateCopyAndTransform(CGPathRef path, const CGAffineTransform* m) {
  return CGPathCreateCopyByTransformingPath(path, m);
}
