// Text on objects: what users set of it. Placeholders have labels as others do.
#pragma once

#include <optional>
#include <string>

#include "host/session/SessionArrangement.h"

namespace host {

/// What is to change of labels; what is not given stays, or is that of a new label.
struct LabelChange {
  std::optional<std::string> text = std::nullopt;  ///< UTF-8; empty takes the label away
  std::optional<std::string> font = std::nullopt;  ///< a family, UTF-8; empty for that of the system
  std::optional<double> size = std::nullopt;       ///< map units
  std::optional<bool> bold = std::nullopt;
  std::optional<bool> italic = std::nullopt;
  std::optional<AGColor> color = std::nullopt;
  std::optional<LabelAcross> across = std::nullopt;
  std::optional<LabelDown> down = std::nullopt;
  std::optional<LabelDirection> direction = std::nullopt;
};

class SessionLabels {
 public:
  SessionLabels(Document& document, SessionSteps& steps) : document_(document), steps_(steps) {}

  /// Of all objects together. With a text each has a label then; without one those that have a label are changed, and
  /// it fails when none has. Texts, sizes and names out of range (ObjectLabel) are refused.
  Result<> Change(const ObjectIDs& ids, const LabelChange& change);

 private:
  void Set(ObjectID id, std::shared_ptr<const ObjectLabel> label);

  Document& document_;
  SessionSteps& steps_;
};

}  // namespace host
