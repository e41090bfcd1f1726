// Objects found by what they are, rather than where.
#pragma once

#include <optional>
#include <string>

#include "host/model/EditRules.h"

namespace host {

/// What paint is looked for: a colour, whatever its opacity, as any of those that are painted with; or none at all.
struct WantedPaint {
  std::optional<AGColor> color = std::nullopt;

  bool Fits(const AGBrush& brush) const;
};

/// "none", "#rrggbb", "rgb(R,G,B)", "R,G,B" or the name of a colour. None for anything else.
std::optional<WantedPaint> ParsePaint(const std::string& text);

/// All that is given has to fit.
struct Wanted {
  std::optional<AKClassID> classID = std::nullopt;
  std::optional<LayerID> layer = std::nullopt;
  std::optional<WantedPaint> fill = std::nullopt;
  std::optional<WantedPaint> stroke = std::nullopt;
  /// A part of the name of its class, in the user's language or as its ID, or of a text that it has.
  std::string name = {};
  /// A part of its label or of another text that it has.
  std::string text = {};

  bool IsEmpty() const { return !classID && !layer && !fill && !stroke && name.empty() && text.empty(); }
};

/// Those that fit, in drawing order, hidden and locked ones too. Of placeholders only class, layer, name and label are
/// known.
ObjectIDs FindObjects(const Document& document, const Wanted& wanted);

}  // namespace host
