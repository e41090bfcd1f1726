// Numbers, lists of them and assignments on command lines, against the C library.
#include <cerrno>
#include <cmath>
#include <cstring>

#include "fuzz/HostFuzz.h"
#include "host/commands/CommandLine.h"
#include "host/panels/Description.h"
#include "host/text/ParseNumber.h"

namespace {

using host_fuzz::Require;

bool HasOnly(const std::string& text, const char* letters) {
  return !text.empty() && text.find_first_not_of(letters) == std::string::npos;
}

// The C library takes blanks, signs and hexadecimal digits too, and zero for what is too small.
void CheckReal(const std::string& text) {
  double number = -1;
  if (host::ParseFinite(text, &number)) {
    Require(HasOnly(text, "0123456789.eE+-") && text[0] != '+' && std::strtod(text.c_str(), nullptr) == number);
    return;
  }
  Require(number == -1);
  char* end = nullptr;
  const double other = std::strtod(text.c_str(), &end);
  const bool isWhole = HasOnly(text, "0123456789.eE+-") && text[0] != '+' && *end == '\0';
  Require(!isWhole || !std::isfinite(other) || std::fabs(other) < 1e-307);
}

void CheckWhole(const std::string& text) {
  std::size_t index = 7;
  int number = 7;
  errno = 0;
  const unsigned long long other = std::strtoull(text.c_str(), nullptr, 10);
  const bool isIndex = HasOnly(text, "0123456789") && errno == 0;
  Require(host::ParseIndex(text, &index) == isIndex && index == (isIndex ? other : 7));
  const bool isNegative = !text.empty() && text[0] == '-';
  errno = 0;
  const long long wide = std::strtoll(text.c_str(), nullptr, 10);
  const bool isNumber =
      HasOnly(isNegative ? text.substr(1) : text, "0123456789") && errno == 0 && wide == static_cast<int>(wide);
  Require(host::ParseInteger(AKString(text), &number) == isNumber && number == (isNumber ? wide : 7));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  if (const std::size_t zero = text.find('\0'); zero != std::string::npos) text.resize(zero);
  CheckReal(text);
  CheckWhole(text);
  std::vector<double> numbers;
  const auto commas = static_cast<std::size_t>(std::count(text.begin(), text.end(), ','));
  if (host::ParseNumbers(text, commas + 1, &numbers)) {
    std::size_t at = 0;
    for (const double number : numbers) {
      Require(std::strtod(text.c_str() + at, nullptr) == number);
      at = text.find(',', at) + 1;
    }
  }
  std::string name;
  std::string value;
  Require(host::SplitAssignment(text, &name, &value) == (text.find('=', 1) != std::string::npos && text[0] != '='));
  Require(name.empty() || name + "=" + value == text);
  AGPoint pair;
  double x = 0;
  if (host::ParsePair(AKString(text), &pair)) {
    Require(std::sscanf(text.c_str(), "(%lf;", &x) == 1 && x == pair.x && text.back() == ')');
  }
  return 0;
}
