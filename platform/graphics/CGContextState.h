// What a drawing context is made of. Private to the native layer.
//
// Three spaces are involved. User space is what the caller draws in; the matrix (CTM) maps it to base space, which is
// the target's with y up; the target's `baseToDevice` maps that to cairo's device space, which has y down. The current
// path and the clips are kept in device space, where cairo gets them under the identity matrix; only a stroke sets the
// matrix, since the nib is shaped by it.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "CoreGraphics/CGBitmapContext.h"
#include "CoreGraphics/CGContext.h"
#include "platform/clips/ClipChain.h"
#include "platform/foundation/MemoryGuard.h"
#include "platform/foundation/NativeObject.h"
#include "platform/foundation/NativeRef.h"
#include "platform/graphics/CGPatternValue.h"
#include "platform/graphics/CairoHandles.h"
#include "platform/paths/CGPathValue.h"
#include "platform/raster/Box.h"

struct CGImage;
struct CGShading;
struct CTLine;

/// The pixels that a bitmap context draws into.
struct BitmapInfo {
  void* data;
  std::size_t width;
  std::size_t height;
  std::size_t bytesPerRow;
  std::uint32_t bitmapInfo;
};

namespace platform {

using PixelBox = raster::Box;  // of device pixels

/// What the pictures of a target are made of.
enum class SurfaceKind { kPixels, kRecording, kPDF, kPostScript, kSVG };

/// Where a context draws.
class DrawingTarget {
 public:
  virtual ~DrawingTarget() = default;
  /// The whole target; a box that is never too small.
  virtual PixelBox Bounds() const = 0;
  virtual SurfaceKind Kind() const { return SurfaceKind::kPixels; }
  /// True for pages and recordings, where a gradient has to stay one.
  bool IsVector() const { return Kind() != SurfaceKind::kPixels; }

  // What a page does in a way of its own; false or null, with nothing done, where it does not (platform/pages/Page.h).

  virtual bool ClearAll(CGContext*, CGRect) const { return false; }
  virtual bool DrawImage(CGContext*, const CGImage&, const CGAffineTransform&) const { return false; }
  virtual bool SetShadingSource(CGContext*, const CGShading&) const { return false; }
  virtual CairoPattern PatternSource(CGPattern*, CGSize, double, const CGAffineTransform&) const { return nullptr; }

  /// Takes all clips of the context's own off cairo. What else was set but by SetUpCairo is undefined afterwards.
  virtual void ResetClip(cairo_t* cairo) const { cairo_reset_clip(cairo); }
};

/// A colour, or a pattern with the opacity `alpha`.
struct Paint {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  NativeRef<CGPattern> pattern;
  bool takesPattern = false;  ///< the colour space is one of patterns
};

/// Text whose outlines are part of a clip.
struct ClippingText {
  NativeRef<const CTLine> line;
  CGAffineTransform toDevice;
};

struct GraphicsState {
  CGAffineTransform matrix = CGAffineTransformIdentity;
  double alpha = 1;
  Paint fill;
  Paint stroke;
  CGSize patternPhase{0, 0};
  double lineWidth = 1;
  CGLineCap lineCap = kCGLineCapButt;
  CGLineJoin lineJoin = kCGLineJoinMiter;
  std::shared_ptr<const std::vector<double>> dashes;  ///< in line widths; null for lines without gaps
  bool antialias = true;
  CGBlendMode blendMode = kCGBlendModeNormal;
  CGInterpolationQuality interpolation = kCGInterpolationDefault;
  CGTextDrawingMode textMode = kCGTextFill;
  bool allowsFontSmoothing = true;
  bool shouldSmoothFonts = true;
  std::shared_ptr<std::vector<ClippingText>> textClip;  ///< a union of outlines that is not yet part of `clip`
  Clip clip;
  bool isLost = false;  ///< memory lacked for a part of it: nothing is drawn under it
};

/// What a context is to fill, stroke or clip to next, in device space.
struct CurrentPath {
  CGMutablePathRef items;  ///< owned by who made this
  PathOrigin origin;       ///< what alone was added to it
  Clip same;               ///< not null: the path is this clip's, and `items` are empty
  bool isLost = false;     ///< memory lacked for a part of it

  bool IsEmpty() const { return items->verbs.IsEmpty() && same == nullptr; }
  void Empty();
  /// The items, copied if the path was a clip's until now. Throws when memory lacks.
  CGPath& Own();
};

/// What is drawn as one (AKGroup.h).
struct Group {
  struct Freed {
    void operator()(unsigned char* bytes) const { std::free(bytes); }
  };

  // Over a bitmap: pixels that are drawn in meanwhile.
  std::unique_ptr<unsigned char[], Freed> pixels;
  BitmapInfo own;
  const BitmapInfo* below;
  PixelBox box;  ///< what is kept of them
  // Elsewhere: cairo's clip when the group began.
  Clip clip;
};

}  // namespace platform

struct CGContext final : platform::NativeObject {
  /// Over a bitmap there is no `cairoContext`.
  CGContext(platform::CairoContext cairoContext, std::unique_ptr<platform::DrawingTarget> drawingTarget,
            CGAffineTransform toDevice);
  ~CGContext() override;

  CGAffineTransform UserToDevice() const { return CGAffineTransformConcat(state.matrix, baseToDevice); }
  /// False where a state could not be kept: what is set until it would come back is left out, and nothing is drawn.
  bool HasState() const { return lostSaves == 0; }
  bool CanPaint() const { return HasState() && !state.isLost; }

  platform::CairoContext cairo;  ///< null over a bitmap
  std::unique_ptr<platform::DrawingTarget> target;
  CGAffineTransform baseToDevice;
  platform::ClipPool clips;  // before those who use it
  platform::GraphicsState state;
  std::vector<platform::GraphicsState> savedStates;
  bool hasFailed = false;     ///< memory lacked for something that was to be drawn
  std::size_t lostSaves = 0;  ///< states that memory lacked for; all later ones than the saved
  CGAffineTransform textMatrix = CGAffineTransformIdentity;
  platform::CurrentPath path;
  platform::CairoSurface scratch;      ///< where shadings are prepared; grows as needed
  platform::Clip appliedClip;          ///< what cairo's clip holds now; over a bitmap, the last that was drawn under
  const BitmapInfo* bitmap = nullptr;  ///< of a bitmap context; owned by the target, or by the group that is drawn in
  std::vector<std::unique_ptr<platform::Group>> groups;  ///< that are open, one within the other
};

namespace platform {

/// Puts a path of device space into cairo's current path, to be filled or clipped to on a target, or on any of up to
/// 32767 pixels a side. What lies far outside is cut off (PathCut.h). Returns false, with nothing to draw, when the
/// path is empty or a point is not a number. `box` receives the extent of the points.
bool EmitPath(cairo_t* cairo, const CGPath& path, const PixelBox& target, PixelBox* box);
bool EmitPath(cairo_t* cairo, const CGPath& path, PixelBox* box);
/// The same for a path to be stroked, whose stroke reaches so far out from it.
bool EmitOutline(cairo_t* cairo, const CGPath& path, const PixelBox& target, double reach, PixelBox* box);

/// Does a part of an operation; false, and kept in mind, when memory lacked.
template <typename Work>
bool Guarded(CGContext* context, Work&& work) {
  const bool isDone = Guarded(std::forward<Work>(work));
  context->hasFailed = context->hasFailed || !isDone;
  return isDone;
}

/// Narrows the state's clip by a path of device space, which becomes an empty one. A clip that was drawn under before
/// is taken up again, with what was made for it.
void PushClip(CGContext* context, CGMutablePathRef* path, const PathOrigin& origin);

/// Makes cairo's clip that of the context's state.
void ApplyClip(CGContext* context);

/// Makes the text clip part of the state's clip; text that follows begins another one.
void SettleTextClip(CGContext* context);

/// True when the matrix and its inverse are made of finite numbers.
bool IsInvertible(const CGAffineTransform& m);

/// An axis-aligned extent widened by `margin` and cut to `bounds`.
PixelBox WidenBox(const PixelBox& box, double margin, const PixelBox& bounds);

}  // namespace platform
