#include "host/commands/CommandLine.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "host/text/Expression.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

// A dash before a digit or a point belongs to a number, or to several: "-20,5".
bool IsOption(const std::string& word) {
  return word.size() > 1 && word[0] == '-' && word[1] != '.' && (word[1] < '0' || word[1] > '9');
}

bool Contains(const std::vector<std::string>& list, const std::string& item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

}  // namespace

CommandLine::CommandLine(std::vector<std::string> withValue, std::vector<std::string> withoutValue)
    : withValue_(std::move(withValue)), withoutValue_(std::move(withoutValue)) {}

Result<> CommandLine::Parse(const std::vector<std::string>& words, std::size_t least, std::size_t most) {
  bool options = true;  // until "--"
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (options && word == "--") {
      options = false;
      continue;
    }
    if (!options || !IsOption(word)) {
      positional_.push_back(word);
      continue;
    }
    const std::string name =
        word.substr(word.find_first_not_of('-') == std::string::npos ? word.size() : word.find_first_not_of('-'));
    if (Contains(withoutValue_, name)) {
      values_[name];
    } else if (!Contains(withValue_, name)) {
      return Problem(N_("unknown option \"%s\""), {word});
    } else if (i + 1 == words.size()) {
      return Problem(N_("option \"%s\" needs a value"), {word});
    } else {
      values_[name].push_back(words[++i]);
    }
  }
  if (positional_.size() < least) {
    return Problem(N_("too few arguments; --help tells what is needed"));
  }
  if (positional_.size() > most) {
    return Problem(N_("unexpected argument \"%s\""), {positional_[most]});
  }
  return {};
}

std::vector<std::string> CommandLine::Values(const std::string& option) const {
  const auto found = values_.find(option);
  return found == values_.end() ? std::vector<std::string>() : found->second;
}

std::string CommandLine::Value(const std::string& option, const std::string& fallback) const {
  const auto found = values_.find(option);
  return found == values_.end() || found->second.empty() ? fallback : found->second.back();
}

bool SplitAssignment(const std::string& text, std::string* name, std::string* value) {
  const std::size_t middle = text.find('=');
  if (middle == std::string::npos || middle == 0) return false;
  *name = text.substr(0, middle);
  *value = text.substr(middle + 1);
  return true;
}

bool ParseIndex(const std::string& text, std::size_t* value) { return ParseWhole(text, value); }

namespace {

// The parts between commas.
template <typename Parse>
bool ParseParts(std::string_view text, std::size_t count, std::vector<double>* values, const Parse& parse) {
  values->clear();
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(',', start), text.size());
    const std::optional<double> number = parse(text.substr(start, end - start));
    if (!number) return false;
    values->push_back(*number);
    start = end + 1;
  }
  return values->size() == count;
}

}  // namespace

bool ParseNumbers(const std::string& text, std::size_t count, std::vector<double>* values) {
  return ParseParts(text, count, values, [](std::string_view part) {
    double number = 0;
    return ParseFinite(part, &number) ? std::optional(number) : std::nullopt;
  });
}

bool ParseLengths(const std::string& text, std::size_t count, std::vector<double>* values) {
  return ParseParts(text, count, values, [](std::string_view part) {
    return Evaluate(part, Measure::kLength, std::nullopt, Decimals::kPoint);
  });
}

bool ParseDegrees(const std::string& text, double* degrees) {
  const std::optional<double> number = Evaluate(text, Measure::kAngle, std::nullopt, Decimals::kPoint);
  if (number) *degrees = *number;
  return number.has_value();
}

}  // namespace host
