// Pictures and drawings of other programs that become objects: an image file as one picture, with all its bytes, and
// the rectangles of an SVG picture.
//
// Each is one step, in front on the active layer, and selected. What fails changes nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/session/SessionSteps.h"
#include "host/svg/SvgRectangle.h"

namespace host {

/// Where what is imported goes, in map units.
struct ImportPlace {
  std::optional<AGRect> bounds;   ///< that it fills
  std::optional<AGPoint> corner;  ///< its left lower one
  std::optional<AGPoint> middle;  ///< without any, its upper left corner is the page's
};

/// How much was taken.
struct Imported {
  std::size_t taken = 0;
  std::size_t all = 0;         ///< elements of a drawing; 1 of an image
  std::vector<Problem> notes;  ///< what was left out or looks otherwise, and how many

  /// One line for the user; none when all is as it was.
  std::optional<Problem> Summary() const;
};

class SessionImport {
 public:
  /// The most bytes of a file.
  static constexpr std::size_t kMostBytes = std::size_t{256} << 20;

  SessionImport(Document& document, SessionSteps& steps, SessionSelection& selection, ActiveLayer& activeLayer)
      : document_(document), steps_(steps), selection_(selection), activeLayer_(activeLayer) {}

  /// A PNG, JPEG or TIFF file as a picture of the class "stdPict", or an SVG picture as rectangles, told apart by what
  /// is in them. Without bounds they are as large as the file says. Fails for what can't be decoded, is larger than
  /// AGImage::MaxBytes allows, or has no rectangle.
  Result<Imported> Take(const std::string& bytes, const ImportPlace& place);
  /// The same of a file.
  Result<Imported> TakeFile(const std::string& path, const ImportPlace& place);

 private:
  Result<Imported> TakeImage(const std::string& bytes, const ImportPlace& place);
  Result<Imported> TakeDrawing(const std::string& bytes, const ImportPlace& place);
  // What a new object is, beside its class and properties.
  struct Appearance {
    ObjectPlacement placement;
    AGBrush brush;
    AGPen pen;
    ObjectLook look;
  };
  static Appearance AppearanceOf(const SvgRectangle& rectangle, const AGRect& bounds, const AGSize& picture);
  Result<ObjectID> Insert(const char* classID, const Appearance& appearance, const AKDictionary& properties);
  AGRect BoundsOf(const AGSize& size, const ImportPlace& place) const;

  Document& document_;
  SessionSteps& steps_;
  SessionSelection& selection_;
  ActiveLayer& activeLayer_;
};

}  // namespace host
