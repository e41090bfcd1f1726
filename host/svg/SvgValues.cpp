#include "host/svg/SvgValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

#include "host/text/ParseNumber.h"

namespace host {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";

struct Unit {
  std::string_view name;
  double pixels;
};
constexpr Unit kUnits[] = {{"", 1},           {"px", 1},  {"pt", 96.0 / 72}, {"pc", 16},
                           {"mm", 96 / 25.4}, {"in", 96}, {"cm", 96 / 2.54}, {"Q", 96 / 101.6}};

struct NamedColor {
  std::string_view name;
  AGColor color;
};
constexpr NamedColor kColors[] = {
    {"black", {0, 0, 0}},           {"silver", {192, 192, 192}},    {"gray", {128, 128, 128}},
    {"grey", {128, 128, 128}},      {"white", {255, 255, 255}},     {"maroon", {128, 0, 0}},
    {"red", {255, 0, 0}},           {"purple", {128, 0, 128}},      {"fuchsia", {255, 0, 255}},
    {"magenta", {255, 0, 255}},     {"green", {0, 128, 0}},         {"lime", {0, 255, 0}},
    {"olive", {128, 128, 0}},       {"yellow", {255, 255, 0}},      {"navy", {0, 0, 128}},
    {"blue", {0, 0, 255}},          {"teal", {0, 128, 128}},        {"aqua", {0, 255, 255}},
    {"cyan", {0, 255, 255}},        {"orange", {255, 165, 0}},      {"brown", {165, 42, 42}},
    {"pink", {255, 192, 203}},      {"gold", {255, 215, 0}},        {"lightgray", {211, 211, 211}},
    {"lightgrey", {211, 211, 211}}, {"darkgray", {169, 169, 169}},  {"darkgrey", {169, 169, 169}},
    {"steelblue", {70, 130, 180}},  {"lightblue", {173, 216, 230}}, {"transparent", {0, 0, 0, 0}},
};

// The number that a text begins with; what follows stays in the text.
std::optional<double> TakeNumber(std::string_view* text) {
  std::string_view rest = *text;
  if (rest.starts_with('+')) rest.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
  *text = rest.substr(static_cast<std::size_t>(end - rest.data()));
  return number;
}

std::optional<unsigned char> HexDigits(std::string_view digits) {
  unsigned int value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return static_cast<unsigned char>(digits.size() == 1 ? value * 17 : value);
}

std::optional<AGColor> HexColor(std::string_view digits) {
  if (digits.size() != 3 && digits.size() != 6) return std::nullopt;
  const std::size_t each = digits.size() / 3;
  const auto red = HexDigits(digits.substr(0, each));
  const auto green = HexDigits(digits.substr(each, each));
  const auto blue = HexDigits(digits.substr(2 * each, each));
  if (!red || !green || !blue) return std::nullopt;
  return AGColor(*red, *green, *blue);
}

// "255, 0, 0" or "100%, 0%, 0%".
std::optional<AGColor> ChannelsColor(std::string_view text) {
  unsigned char channels[3];
  for (unsigned char& channel : channels) {
    while (!text.empty() && (kBlanks.find(text[0]) != kBlanks.npos || text[0] == ',')) text.remove_prefix(1);
    auto number = TakeNumber(&text);
    if (!number) return std::nullopt;
    if (text.starts_with('%')) {
      text.remove_prefix(1);
      number = *number * 255 / 100;
    }
    channel = static_cast<unsigned char>(std::lround(std::clamp(*number, 0.0, 255.0)));
  }
  if (!SvgTrimmed(text).empty()) return std::nullopt;
  return AGColor(channels[0], channels[1], channels[2]);
}

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }

std::optional<AGAffineTransform> OneTransform(std::string_view name, const std::vector<double>& n) {
  const std::size_t count = n.size();
  if (name == "matrix" && count == 6) return AGAffineTransform{n[0], n[1], n[2], n[3], n[4], n[5]};
  if (name == "translate" && (count == 1 || count == 2)) {
    return AGAffineTransformTranslation(n[0], count == 2 ? n[1] : 0);
  }
  if (name == "scale" && (count == 1 || count == 2)) return AGAffineTransformScaling(n[0], n[count - 1]);
  if (name == "rotate" && count == 1) return AGAffineTransformRotation(Radians(n[0]));
  if (name == "rotate" && count == 3) return AGAffineTransformRotation(Radians(n[0]), {n[1], n[2]});
  if (name == "skewX" && count == 1) return AGAffineTransform{1, 0, std::tan(Radians(n[0])), 1, 0, 0};
  if (name == "skewY" && count == 1) return AGAffineTransform{1, std::tan(Radians(n[0])), 0, 1, 0, 0};
  return std::nullopt;
}

}  // namespace

std::string_view SvgTrimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<double> SvgLength(std::string_view text, double whole) {
  text = SvgTrimmed(text);
  const auto number = TakeNumber(&text);
  if (!number) return std::nullopt;
  if (text == "%") return *number * whole / 100;
  for (const Unit& unit : kUnits) {
    if (text == unit.name) return *number * unit.pixels;
  }
  return std::nullopt;
}

std::optional<double> SvgFraction(std::string_view text) {
  text = SvgTrimmed(text);
  const auto number = TakeNumber(&text);
  if (!number || (!text.empty() && text != "%")) return std::nullopt;
  return std::clamp(text.empty() ? *number : *number / 100, 0.0, 1.0);
}

bool SvgNumbers(std::string_view text, std::vector<double>* numbers) {
  for (text = SvgTrimmed(text); !text.empty(); text = SvgTrimmed(text)) {
    if (text[0] == ',' && !numbers->empty()) text = SvgTrimmed(text.substr(1));
    const auto number = TakeNumber(&text);
    if (!number) return false;
    numbers->push_back(*number);
  }
  return true;
}

std::optional<AGColor> SvgColor(std::string_view text) {
  text = SvgTrimmed(text);
  if (text.starts_with('#')) return HexColor(text.substr(1));
  if (text.starts_with("rgb(") && text.ends_with(')')) return ChannelsColor(text.substr(4, text.size() - 5));
  for (const NamedColor& each : kColors) {
    if (text == each.name) return each.color;
  }
  return std::nullopt;
}

std::optional<AGAffineTransform> SvgTransform(std::string_view text) {
  AGAffineTransform all = kAGAffineTransformIdentity;
  for (text = SvgTrimmed(text); !text.empty(); text = SvgTrimmed(text)) {
    if (text[0] == ',') text = SvgTrimmed(text.substr(1));
    const std::size_t open = text.find('(');
    const std::size_t close = text.find(')');
    if (open == text.npos || close == text.npos || close < open) return std::nullopt;
    std::vector<double> numbers;
    if (!SvgNumbers(text.substr(open + 1, close - open - 1), &numbers)) return std::nullopt;
    const auto one = OneTransform(SvgTrimmed(text.substr(0, open)), numbers);
    if (!one) return std::nullopt;
    all = AGAffineTransformConcat(*one, all);
    text = text.substr(close + 1);
  }
  return all;
}

std::vector<std::pair<std::string_view, std::string_view>> SvgDeclarations(std::string_view text) {
  std::vector<std::pair<std::string_view, std::string_view>> pairs;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string_view one = text.substr(0, end);
    const std::size_t colon = one.find(':');
    if (colon != one.npos) pairs.emplace_back(SvgTrimmed(one.substr(0, colon)), SvgTrimmed(one.substr(colon + 1)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pairs;
}

}  // namespace host
