// Which properties the elements of an SVG picture have: by attributes, by rules of style sheets, and by their own
// style.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/svg/SvgTree.h"

namespace host {

/// Properties of one element, not those that it inherits. Views of what the tree and the styles hold.
class SvgProperties {
 public:
  void Add(std::string_view name, std::string_view value) { pairs_.emplace_back(name, value); }
  /// The one that goes before the others; empty when there is none.
  std::string_view Get(std::string_view name) const;

 private:
  std::vector<std::pair<std::string_view, std::string_view>> pairs_;
};

class SvgStyles {
 public:
  /// Takes rules whose selectors are names of elements, of classes ("." before) and of one element ("#"), alone or
  /// written together. The text outlives this.
  explicit SvgStyles(std::string* text);

  SvgProperties Of(const SvgElement& element) const;
  /// Rules and selectors that were not taken: of what lies within something, of states and media.
  std::size_t NotUnderstood() const { return notUnderstood_; }

 private:
  struct Rule {
    std::string_view element;  ///< empty for any
    std::string_view id;
    std::vector<std::string_view> classes;
    std::string_view declarations;
    std::size_t weight = 0;  ///< of the selector: the heaviest goes before the others, and the last of the same
  };

  void Read(std::string_view text);
  void AddSelector(std::string_view selector, std::string_view declarations);
  void Collect(const std::string& key, const SvgElement& element, std::vector<std::size_t>* found) const;

  std::vector<Rule> rules_;
  std::unordered_map<std::string, std::vector<std::size_t>> byKey_;  ///< "#id", ".class", "element" or ""
  std::size_t notUnderstood_ = 0;
};

}  // namespace host
