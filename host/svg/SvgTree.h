// An SVG file as the tree of its elements.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/text/Problem.h"

namespace host {

struct SvgElement {
  std::string name;                                             ///< without what is before a colon
  std::vector<std::pair<std::string, std::string>> attributes;  ///< as the file has them
  std::vector<std::unique_ptr<SvgElement>> children;

  /// An attribute as it is written, without blanks around it; empty when there is none.
  std::string_view Get(std::string_view attribute) const;
};

struct SvgTree {
  std::unique_ptr<SvgElement> root;
  std::unordered_map<std::string_view, const SvgElement*> byID;
  std::string styles;  ///< what all `style` elements hold

  /// What "#id" or "url(#id)" points at; null for anything else.
  const SvgElement* Find(std::string_view reference) const;
};

/// Fails for what is no XML in UTF-8, has another element than `svg` around it, entities of its own, elements that lie
/// more than 256 deep in each other, or more than a million.
Result<SvgTree> ReadSvgTree(const std::string& text);

}  // namespace host
