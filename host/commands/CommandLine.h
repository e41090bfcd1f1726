// The words of a command: positional arguments and options, each option with a value or none.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/text/ParseNumber.h"
#include "host/text/Problem.h"

namespace host {

class CommandLine {
 public:
  /// Options that take a value, and options that do not; both without their dashes.
  CommandLine(std::vector<std::string> withValue, std::vector<std::string> withoutValue);

  /// Sorts the words. An argument that begins with a dash and a digit counts as positional. Fails for an
  /// unknown option, a missing value, or a count of positional arguments out of range.
  Result<> Parse(const std::vector<std::string>& words, std::size_t least, std::size_t most);

  const std::vector<std::string>& Positional() const { return positional_; }
  bool Has(const std::string& option) const { return values_.count(option) != 0; }
  /// The values of an option in the order given; empty when it was not.
  std::vector<std::string> Values(const std::string& option) const;
  /// The last value, or `fallback`.
  std::string Value(const std::string& option, const std::string& fallback) const;

 private:
  std::vector<std::string> withValue_;
  std::vector<std::string> withoutValue_;
  std::vector<std::string> positional_;
  std::map<std::string, std::vector<std::string>> values_;
};

/// "name=value" split at the first "="; false when there is none or the name is empty.
bool SplitAssignment(const std::string& text, std::string* name, std::string* value);

/// A count or index: decimal digits only.
bool ParseIndex(const std::string& text, std::size_t* value);

/// `count` finite numbers separated by commas.
bool ParseNumbers(const std::string& text, std::size_t count, std::vector<double>* values);
/// The same for lengths in map units, each of which may be a sum with units (Expression.h), such as 2cm+5.
bool ParseLengths(const std::string& text, std::size_t count, std::vector<double>* values);
/// An angle in degrees, or with a unit.
bool ParseDegrees(const std::string& text, double* degrees);

/// The number of an option within a range, both ends of which are part of it; without the option it stays as it is.
template <typename Number>
Result<> TakeNumber(const CommandLine& line, const char* option, Number least, Number most, Number* number) {
  const std::string text = line.Value(option, "");
  Number taken{};
  if (!line.Has(option)) return {};
  if (!ParseWhole(text, &taken) || !(taken >= least && taken <= most)) {
    return Problem(N_("%s"), {"option \"--" + std::string(option) + "\" does not take \"" + text + "\""});
  }
  *number = taken;
  return {};
}

}  // namespace host
