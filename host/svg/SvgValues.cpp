#include "host/svg/SvgValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <string>

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

// Names between blanks, each with its colour behind it.
constexpr std::string_view kColors =
    " aliceblue f0f8ff antiquewhite faebd7 aqua 00ffff aquamarine 7fffd4 azure f0ffff beige f5f5dc"
    " bisque ffe4c4 black 000000 blanchedalmond ffebcd blue 0000ff blueviolet 8a2be2 brown a52a2a"
    " burlywood deb887 cadetblue 5f9ea0 chartreuse 7fff00 chocolate d2691e coral ff7f50 cornflowerblue 6495ed"
    " cornsilk fff8dc crimson dc143c cyan 00ffff darkblue 00008b darkcyan 008b8b darkgoldenrod b8860b"
    " darkgray a9a9a9 darkgreen 006400 darkgrey a9a9a9 darkkhaki bdb76b darkmagenta 8b008b"
    " darkolivegreen 556b2f darkorange ff8c00 darkorchid 9932cc darkred 8b0000 darksalmon e9967a"
    " darkseagreen 8fbc8f darkslateblue 483d8b darkslategray 2f4f4f darkslategrey 2f4f4f darkturquoise 00ced1"
    " darkviolet 9400d3 deeppink ff1493 deepskyblue 00bfff dimgray 696969 dimgrey 696969 dodgerblue 1e90ff"
    " firebrick b22222 floralwhite fffaf0 forestgreen 228b22 fuchsia ff00ff gainsboro dcdcdc"
    " ghostwhite f8f8ff gold ffd700 goldenrod daa520 gray 808080 green 008000 greenyellow adff2f grey 808080"
    " honeydew f0fff0 hotpink ff69b4 indianred cd5c5c indigo 4b0082 ivory fffff0 khaki f0e68c lavender e6e6fa"
    " lavenderblush fff0f5 lawngreen 7cfc00 lemonchiffon fffacd lightblue add8e6 lightcoral f08080"
    " lightcyan e0ffff lightgoldenrodyellow fafad2 lightgray d3d3d3 lightgreen 90ee90 lightgrey d3d3d3"
    " lightpink ffb6c1 lightsalmon ffa07a lightseagreen 20b2aa lightskyblue 87cefa lightslategray 778899"
    " lightslategrey 778899 lightsteelblue b0c4de lightyellow ffffe0 lime 00ff00 limegreen 32cd32"
    " linen faf0e6 magenta ff00ff maroon 800000 mediumaquamarine 66cdaa mediumblue 0000cd mediumorchid ba55d3"
    " mediumpurple 9370db mediumseagreen 3cb371 mediumslateblue 7b68ee mediumspringgreen 00fa9a"
    " mediumturquoise 48d1cc mediumvioletred c71585 midnightblue 191970 mintcream f5fffa mistyrose ffe4e1"
    " moccasin ffe4b5 navajowhite ffdead navy 000080 oldlace fdf5e6 olive 808000 olivedrab 6b8e23"
    " orange ffa500 orangered ff4500 orchid da70d6 palegoldenrod eee8aa palegreen 98fb98 paleturquoise afeeee"
    " palevioletred db7093 papayawhip ffefd5 peachpuff ffdab9 peru cd853f pink ffc0cb plum dda0dd"
    " powderblue b0e0e6 purple 800080 rebeccapurple 663399 red ff0000 rosybrown bc8f8f royalblue 4169e1"
    " saddlebrown 8b4513 salmon fa8072 sandybrown f4a460 seagreen 2e8b57 seashell fff5ee sienna a0522d"
    " silver c0c0c0 skyblue 87ceeb slateblue 6a5acd slategray 708090 slategrey 708090 snow fffafa"
    " springgreen 00ff7f steelblue 4682b4 tan d2b48c teal 008080 thistle d8bfd8 tomato ff6347"
    " turquoise 40e0d0 violet ee82ee wheat f5deb3 white ffffff whitesmoke f5f5f5 yellow ffff00"
    " yellowgreen 9acd32"
    " ";

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
  const std::size_t count = digits.size() == 4 || digits.size() == 8 ? 4 : 3;
  const std::size_t each = digits.size() / count;
  if (digits.size() != count * each || each < 1 || each > 2) return std::nullopt;
  unsigned char channels[] = {0, 0, 0, 255};
  for (std::size_t i = 0; i < count; ++i) {
    const auto channel = HexDigits(digits.substr(i * each, each));
    if (!channel) return std::nullopt;
    channels[i] = *channel;
  }
  return AGColor(channels[0], channels[1], channels[2], channels[3]);
}

// "255, 0, 0", "100% 0% 0%", and with an opacity from 0 to 1 behind them.
std::optional<AGColor> ChannelsColor(std::string_view text) {
  unsigned char channels[] = {0, 0, 0, 255};
  std::size_t count = 0;
  for (text = SvgTrimmed(text); !text.empty() && count < 4; text = SvgTrimmed(text)) {
    if (count > 0 && (text[0] == ',' || text[0] == '/')) text = SvgTrimmed(text.substr(1));
    auto number = TakeNumber(&text);
    if (!number) return std::nullopt;
    if (text.starts_with('%')) {
      text.remove_prefix(1);
      number = *number * 255 / 100;
    } else if (count == 3) {
      number = *number * 255;
    }
    channels[count++] = static_cast<unsigned char>(std::lround(std::clamp(*number, 0.0, 255.0)));
  }
  if (count < 3 || !text.empty()) return std::nullopt;
  return AGColor(channels[0], channels[1], channels[2], channels[3]);
}

std::optional<AGColor> NamedColor(std::string_view name) {
  const bool isName = !name.empty() && std::ranges::all_of(name, [](char c) { return c >= 'a' && c <= 'z'; });
  const std::string written = " " + std::string(name) + " ";
  const std::size_t at = isName ? kColors.find(written) : kColors.npos;
  return at == kColors.npos ? std::nullopt : HexColor(kColors.substr(at + written.size(), 6));
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
  if (text == "transparent") return AGColor(0, 0, 0, 0);
  if (text.starts_with('#')) return HexColor(text.substr(1));
  const std::size_t open = text.starts_with("rgba(") ? 5 : 4;
  if (text.starts_with("rgb") && text.substr(open - 1).starts_with('(') && text.ends_with(')')) {
    return ChannelsColor(text.substr(open, text.size() - open - 1));
  }
  std::string name(text);
  std::ranges::transform(name, name.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return NamedColor(name);
}

AGColor SvgFaded(const AGColor& color, double opacity) {
  const double alpha = std::clamp(color.Alpha() * opacity, 0.0, 255.0);
  return {color.Red(), color.Green(), color.Blue(), static_cast<unsigned char>(std::lround(alpha))};
}

std::vector<std::string_view> SvgWords(std::string_view text) {
  std::vector<std::string_view> words;
  for (text = SvgTrimmed(text); !text.empty(); text = SvgTrimmed(text)) {
    const std::size_t end = std::min(text.find_first_of(kBlanks), text.size());
    words.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return words;
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
