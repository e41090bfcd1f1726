// Drawing contexts of the native layer: a target, a graphics state, and a current path.
//
// Units are those of the target (pixels of a bitmap); y points up, with the origin at the left bottom corner of the
// target. A new context has the identity matrix, no clip, alpha 1, antialiasing on, opaque black paint, line width 1,
// butt caps, mitre joins and a mitre limit of 10. Null contexts are ignored everywhere.
//
// Where memory lacks, the operation draws nothing, and that is said on standard error, once a process. Nothing is drawn
// under a state of which a part was lost, such as a clip, nor until the restore that belongs to a save that failed;
// what is restored is whole again.
#pragma once

#include <stddef.h>

#include "CoreGraphics/CGAffineTransform.h"
#include "CoreGraphics/CGBase.h"
#include "CoreGraphics/CGColorSpace.h"
#include "CoreGraphics/CGImage.h"
#include "CoreGraphics/CGPath.h"
#include "CoreGraphics/CGPattern.h"
#include "CoreGraphics/CGShading.h"

struct CGContext;
typedef struct CGContext* CGContextRef;

/// How CGContextDrawPath paints the current path.
enum CGPathDrawingMode {
  kCGPathFill = 0,    ///< inside by the non-zero winding rule
  kCGPathEOFill = 1,  ///< inside by the even-odd rule
  kCGPathStroke = 2,
};

enum CGLineCap { kCGLineCapButt = 0, kCGLineCapRound = 1, kCGLineCapSquare = 2 };
enum CGLineJoin { kCGLineJoinMiter = 0, kCGLineJoinRound = 1, kCGLineJoinBevel = 2 };

/// How what is drawn is mixed with what is there; only images are.
enum CGBlendMode { kCGBlendModeNormal = 0, kCGBlendModeSoftLight = 8, kCGBlendModeHardLight = 9 };

enum CGInterpolationQuality { kCGInterpolationDefault = 0, kCGInterpolationLow = 2, kCGInterpolationHigh = 3 };

/// What drawing text does with its outlines: fill, stroke, both or neither, and add them to the text clip. The union of
/// the outlines in that clip narrows what is painted afterwards other than text; text goes on beside text.
enum CGTextDrawingMode {
  kCGTextFill = 0,
  kCGTextStroke = 1,
  kCGTextFillStroke = 2,
  kCGTextInvisible = 3,
  kCGTextFillClip = 4,
  kCGTextStrokeClip = 5,
  kCGTextFillStrokeClip = 6,
  kCGTextClip = 7,
};

CG_EXTERN CGContextRef CGContextRetain(CGContextRef context);
CG_EXTERN void CGContextRelease(CGContextRef context);

/// States nest; a restore without a save is ignored. The current path is no part of the state.
CG_EXTERN void CGContextSaveGState(CGContextRef context);
CG_EXTERN void CGContextRestoreGState(CGContextRef context);

/// Applies `transform` inside the current matrix: it acts on coordinates first. A matrix that cannot be inverted or
/// is not finite makes every operation paint nothing until the state is restored.
CG_EXTERN void CGContextConcatCTM(CGContextRef context, CGAffineTransform transform);
/// The current matrix, from user space to the target's y-up space.
CG_EXTERN CGAffineTransform CGContextGetCTM(CGContextRef context);

CG_EXTERN void CGContextSetShouldAntialias(CGContextRef context, bool antialias);
/// Multiplies the paint of every operation by `alpha`, 0 to 1.
CG_EXTERN void CGContextSetAlpha(CGContextRef context, CGFloat alpha);
/// Components 0 to 1, not premultiplied.
CG_EXTERN void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
CG_EXTERN void CGContextSetRGBStrokeColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue,
                                          CGFloat alpha);
/// A pattern takes the place of the fill or stroke colour until a colour is set again; the colour space has to be set
/// to a pattern space first. `components` is one number, the pattern's opacity.
CG_EXTERN void CGContextSetFillColorSpace(CGContextRef context, CGColorSpaceRef space);
CG_EXTERN void CGContextSetFillPattern(CGContextRef context, CGPatternRef pattern, const CGFloat* components);
CG_EXTERN void CGContextSetStrokeColorSpace(CGContextRef context, CGColorSpaceRef space);
CG_EXTERN void CGContextSetStrokePattern(CGContextRef context, CGPatternRef pattern, const CGFloat* components);
/// Where in base space the origin of a cell lies.
CG_EXTERN void CGContextSetPatternPhase(CGContextRef context, CGSize phase);

CG_EXTERN void CGContextSetBlendMode(CGContextRef context, enum CGBlendMode mode);
CG_EXTERN void CGContextSetInterpolationQuality(CGContextRef context, enum CGInterpolationQuality quality);

/// In user space units at the time of the stroke, matrix included.
CG_EXTERN void CGContextSetLineWidth(CGContextRef context, CGFloat width);
CG_EXTERN void CGContextSetLineCap(CGContextRef context, enum CGLineCap cap);
CG_EXTERN void CGContextSetLineJoin(CGContextRef context, enum CGLineJoin join);

/// From the space of text, where a baseline starts at the origin, to user space. No part of the state.
CG_EXTERN void CGContextSetTextMatrix(CGContextRef context, CGAffineTransform matrix);
/// The translation of the text matrix.
CG_EXTERN void CGContextSetTextPosition(CGContextRef context, CGFloat x, CGFloat y);
CG_EXTERN CGPoint CGContextGetTextPosition(CGContextRef context);
CG_EXTERN void CGContextSetTextDrawingMode(CGContextRef context, enum CGTextDrawingMode mode);
/// Smoothing along the stripes of a display's pixels, if both allowed and wanted, which they are at first. Bitmaps have
/// no stripes: there it makes the edges of text soft, as antialiasing does, and without it they are hard.
CG_EXTERN void CGContextSetAllowsFontSmoothing(CGContextRef context, bool allows);
CG_EXTERN void CGContextSetShouldSmoothFonts(CGContextRef context, bool should);

/// The current path. Points go through the matrix when they are added.
CG_EXTERN void CGContextBeginPath(CGContextRef context);
CG_EXTERN void CGContextAddPath(CGContextRef context, CGPathRef path);
/// Narrows the clip to the inside (non-zero winding rule) of the current path, which is then empty.
CG_EXTERN void CGContextClip(CGContextRef context);
/// Paints the current path, which is then empty.
CG_EXTERN void CGContextDrawPath(CGContextRef context, enum CGPathDrawingMode mode);
/// Fills a rectangle with the fill colour; the current path is then empty.
CG_EXTERN void CGContextFillRect(CGContextRef context, CGRect rect);
/// Paints the shading, which lies in user space, over all that the clip lets through.
CG_EXTERN void CGContextDrawShading(CGContextRef context, CGShadingRef shading);
/// Sets a rectangle to transparent black, whatever the alpha.
CG_EXTERN void CGContextClearRect(CGContextRef context, CGRect rect);
/// Draws the image, its first row on top, into a rectangle of user space. Where cairo is drawn with, that is everywhere
/// but on bitmaps, a side above 32767 is too large for it: a page can't be finished then, elsewhere nothing is drawn.
CG_EXTERN void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image);
