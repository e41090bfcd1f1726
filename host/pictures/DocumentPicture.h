// Documents as picture files.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/model/EditRules.h"
#include "host/pictures/Progress.h"
#include "host/text/Problem.h"

namespace host {

/// The kinds of picture file, told by the extension of a name, in either case.
enum class PictureKind { kPNG, kJPEG, kTIFF, kPDF, kSVG };

/// False for an unknown one.
bool PictureKindOf(const std::string& path, PictureKind* kind);

struct PictureOptions {
  double scale = 1;          ///< pixels of a bitmap, or points of a page, a map unit
  bool transparent = false;  ///< without the document's background; on white in JPEG and TIFF files
  double quality = 0.9;      ///< of JPEG, 0 (smallest file) to 1 (best picture)
  /// What is seen, in map units, with an area; the page without it.
  std::optional<AGRect> area = std::nullopt;
  /// The objects that are drawn; all without it. What is hidden is not.
  std::optional<ObjectIDs> objects = std::nullopt;
};

/// The box of what objects paint, provided that they keep to their bounds and half of the pen's width around them.
/// Hidden ones, and those of hidden layers, have no part in it. False for none that is shown.
bool GetPictureBox(const Document& document, const ObjectIDs& ids, AGRect* box);

/// The page as a picture file in memory: PNG, PDF or SVG. Fails when there is no such picture, or when `progress`,
/// which may be null, stopped the work.
Result<> RenderPicture(const Document& document, PictureKind kind, const PictureOptions& options, Progress* progress,
                       std::vector<unsigned char>* file);

/// Renders the page and puts it into a file of the kind that its name tells: whole, or not at all.
Result<> ExportPicture(const Document& document, const std::string& path, const PictureOptions& options,
                       Progress* progress);

}  // namespace host
