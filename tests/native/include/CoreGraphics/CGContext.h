#pragma once
#include <CoreGraphics/CGAffineTransform.h>
#include <CoreGraphics/CGColor.h>
#include <CoreGraphics/CGColorSpace.h>
#include <CoreGraphics/CGImage.h>
#include <CoreGraphics/CGPath.h>
#include <CoreGraphics/CGPattern.h>
#include <CoreGraphics/CGShading.h>
enum CGPathDrawingMode : int32_t { kCGPathFill, kCGPathEOFill, kCGPathStroke };
enum CGLineCap : int32_t { kCGLineCapButt, kCGLineCapRound, kCGLineCapSquare };
enum CGLineJoin : int32_t { kCGLineJoinMiter, kCGLineJoinRound, kCGLineJoinBevel };
enum CGBlendMode : int32_t { kCGBlendModeNormal, kCGBlendModeSoftLight = 8, kCGBlendModeHardLight };
enum CGInterpolationQuality : int32_t { kCGInterpolationDefault, kCGInterpolationLow = 2, kCGInterpolationHigh };
enum CGTextDrawingMode : int32_t {
  kCGTextFill,
  kCGTextStroke,
  kCGTextFillStroke,
  kCGTextInvisible,
  kCGTextFillClip,
  kCGTextStrokeClip,
  kCGTextFillStrokeClip,
  kCGTextClip
};
CG_EXTERN CGContextRef CGContextRetain(CGContextRef c);
CG_EXTERN void CGContextRelease(CGContextRef c);
CG_EXTERN void CGContextSaveGState(CGContextRef c);
CG_EXTERN void CGContextRestoreGState(CGContextRef c);
CG_EXTERN void CGContextConcatCTM(CGContextRef c, CGAffineTransform transform);
CG_EXTERN CGAffineTransform CGContextGetCTM(CGContextRef c);
CG_EXTERN void CGContextSetShouldAntialias(CGContextRef c, bool shouldAntialias);
CG_EXTERN void CGContextSetAlpha(CGContextRef c, CGFloat alpha);
CG_EXTERN void CGContextSetRGBFillColor(CGContextRef c, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
CG_EXTERN void CGContextSetRGBStrokeColor(CGContextRef c, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
CG_EXTERN void CGContextSetFillColorSpace(CGContextRef c, CGColorSpaceRef space);
CG_EXTERN void CGContextSetFillPattern(CGContextRef c, CGPatternRef pattern, const CGFloat* components);
CG_EXTERN void CGContextSetStrokeColorSpace(CGContextRef c, CGColorSpaceRef space);
CG_EXTERN void CGContextSetStrokePattern(CGContextRef c, CGPatternRef pattern, const CGFloat* components);
CG_EXTERN void CGContextSetPatternPhase(CGContextRef c, CGSize phase);
CG_EXTERN void CGContextSetBlendMode(CGContextRef c, CGBlendMode mode);
CG_EXTERN void CGContextSetInterpolationQuality(CGContextRef c, CGInterpolationQuality quality);
CG_EXTERN void CGContextSetLineWidth(CGContextRef c, CGFloat width);
CG_EXTERN void CGContextSetLineCap(CGContextRef c, CGLineCap cap);
CG_EXTERN void CGContextSetLineJoin(CGContextRef c, CGLineJoin join);
CG_EXTERN void CGContextSetTextMatrix(CGContextRef c, CGAffineTransform t);
CG_EXTERN void CGContextSetTextPosition(CGContextRef c, CGFloat x, CGFloat y);
CG_EXTERN void CGContextSetTextDrawingMode(CGContextRef c, CGTextDrawingMode mode);
CG_EXTERN void CGContextSetAllowsFontSmoothing(CGContextRef c, bool allowsFontSmoothing);
CG_EXTERN void CGContextSetShouldSmoothFonts(CGContextRef c, bool shouldSmoothFonts);
CG_EXTERN void CGContextBeginPath(CGContextRef c);
CG_EXTERN void CGContextAddPath(CGContextRef c, CGPathRef path);
CG_EXTERN void CGContextClip(CGContextRef c);
CG_EXTERN void CGContextDrawPath(CGContextRef c, CGPathDrawingMode mode);
CG_EXTERN void CGContextFillRect(CGContextRef c, CGRect rect);
CG_EXTERN void CGContextClearRect(CGContextRef c, CGRect rect);
CG_EXTERN void CGContextDrawShading(CGContextRef c, CGShadingRef shading);
CG_EXTERN void CGContextDrawImage(CGContextRef c, CGRect rect, CGImageRef image);
