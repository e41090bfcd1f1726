#include "host/svg/SvgStyles.h"

#include <algorithm>

#include "host/svg/SvgValues.h"

namespace host {
namespace {

constexpr std::size_t kWeightOfID = 1000000;
constexpr std::size_t kWeightOfClass = 1000;

void BlankComments(std::string* text) {
  for (std::size_t start = text->find("/*"); start != text->npos; start = text->find("/*", start)) {
    const std::size_t end = std::min(text->find("*/", start + 2), text->size() - 2) + 2;
    std::fill(text->begin() + static_cast<std::ptrdiff_t>(start), text->begin() + static_cast<std::ptrdiff_t>(end),
              ' ');
  }
}

// Behind the brace that closes the one that a text begins with.
std::size_t EndOfBlock(std::string_view text) {
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '{') ++depth;
    if (text[i] == '}' && --depth <= 0) return i + 1;
  }
  return text.size();
}

bool HasClass(const SvgElement& element, std::string_view wanted) {
  const auto classes = SvgWords(element.Get("class"));
  return std::ranges::find(classes, wanted) != classes.end();
}

}  // namespace

std::string_view SvgProperties::Get(std::string_view name) const {
  const auto found = std::find_if(pairs_.rbegin(), pairs_.rend(), [&](const auto& pair) { return pair.first == name; });
  return found == pairs_.rend() ? std::string_view() : found->second;
}

SvgStyles::SvgStyles(std::string* text) {
  BlankComments(text);
  Read(*text);
}

void SvgStyles::Read(std::string_view text) {
  for (text = SvgTrimmed(text); !text.empty(); text = SvgTrimmed(text)) {
    const std::size_t open = text.find('{');
    const std::size_t end = text.find(';');
    if (text[0] == '@') {
      ++notUnderstood_;
      text.remove_prefix(end < open ? end + 1 : open == text.npos ? text.size() : open + EndOfBlock(text.substr(open)));
      continue;
    }
    if (open == text.npos) break;
    const std::size_t size = EndOfBlock(text.substr(open));
    const std::string_view body = text.substr(open + 1, size - std::min<std::size_t>(size, 2));
    for (std::string_view rest = text.substr(0, open); !rest.empty();) {
      const std::size_t comma = std::min(rest.find(','), rest.size());
      AddSelector(SvgTrimmed(rest.substr(0, comma)), body);
      rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    text.remove_prefix(open + size);
  }
}

void SvgStyles::AddSelector(std::string_view selector, std::string_view declarations) {
  Rule rule;
  rule.declarations = declarations;
  for (std::string_view rest = selector; !rest.empty();) {
    const char kind = rest[0];
    const std::size_t start = kind == '.' || kind == '#' ? 1 : 0;
    const std::size_t end = std::min(rest.find_first_of(".#", start), rest.size());
    const std::string_view name = rest.substr(start, end - start);
    if (name.empty() || name.find_first_of(" \t\r\n\f>+~:[]()\\") != name.npos) rule.weight = kWeightOfID * kWeightOfID;
    if (kind == '.') rule.classes.push_back(name);
    if (kind == '#') rule.id = name;
    if (start == 0 && name != "*") rule.element = name;
    rule.weight += kind == '#' ? kWeightOfID : kind == '.' ? kWeightOfClass : name == "*" ? 0 : 1;
    rest.remove_prefix(end);
  }
  if (selector.empty() || rule.weight >= kWeightOfID * kWeightOfID) {
    ++notUnderstood_;
    return;
  }
  const std::string key = !rule.id.empty()        ? "#" + std::string(rule.id)
                          : !rule.classes.empty() ? "." + std::string(rule.classes[0])
                                                  : std::string(rule.element);
  byKey_[key].push_back(rules_.size());
  rules_.push_back(std::move(rule));
}

void SvgStyles::Collect(const std::string& key, const SvgElement& element, std::vector<std::size_t>* found) const {
  const auto rules = byKey_.find(key);
  if (rules == byKey_.end()) return;
  for (const std::size_t number : rules->second) {
    const Rule& rule = rules_[number];
    const bool fits = (rule.element.empty() || rule.element == element.name) &&
                      (rule.id.empty() || rule.id == element.Get("id")) &&
                      std::ranges::all_of(rule.classes, [&](auto each) { return HasClass(element, each); });
    if (fits) found->push_back(number);
  }
}

SvgProperties SvgStyles::Of(const SvgElement& element) const {
  SvgProperties properties;
  for (const auto& [name, value] : element.attributes) properties.Add(name, SvgTrimmed(value));
  std::vector<std::size_t> found;
  if (!rules_.empty()) {
    Collect("", element, &found);
    Collect(element.name, element, &found);
    if (!element.Get("id").empty()) Collect("#" + std::string(element.Get("id")), element, &found);
    for (const std::string_view each : SvgWords(element.Get("class")))
      Collect("." + std::string(each), element, &found);
  }
  std::ranges::sort(found, {}, [this](std::size_t number) { return std::pair(rules_[number].weight, number); });
  const auto add = [&properties](std::string_view declarations) {
    for (const auto& [name, value] : SvgDeclarations(declarations)) {
      properties.Add(name, SvgTrimmed(value.substr(0, value.find("!important"))));
    }
  };
  for (const std::size_t number : found) add(rules_[number].declarations);
  add(element.Get("style"));
  return properties;
}

}  // namespace host
