#include "host/commands/PageOptions.h"

#include "host/model/Paper.h"

namespace host {
namespace {

Result<> ParseColor(const std::string& text, AGColor* color) {
  std::vector<double> numbers;
  if (!ParseNumbers(text, 3, &numbers)) {
    return Problem(N_("--background takes three numbers from 0 to 255 as RED,GREEN,BLUE"));
  }
  unsigned char channels[3];
  for (int i = 0; i < 3; ++i) {
    if (!(numbers[i] >= 0 && numbers[i] <= 255)) {
      return Problem(N_("--background takes numbers from 0 to 255"));
    }
    channels[i] = static_cast<unsigned char>(numbers[i]);
  }
  *color = AGColor(channels[0], channels[1], channels[2]);
  return {};
}

Result<> ParsePaper(const CommandLine& line, AGSize* size) {
  if (line.Has("paper")) {
    const Paper* const paper = FindPaper(line.Value("paper", ""));
    std::string known;
    for (const Paper& each : kPapers) known += (known.empty() ? "" : ", ") + std::string(each.name);
    if (paper == nullptr) return Problem(N_("\"%s\" is none of %s"), {line.Value("paper", ""), known});
    *size = paper->size;
  }
  if (!line.Has("orientation")) return {};
  const std::string orientation = line.Value("orientation", "");
  if (orientation != "portrait" && orientation != "landscape") {
    return Problem(N_("\"%s\" is none of %s"), {orientation, "portrait, landscape"});
  }
  *size = Oriented(*size, orientation == "portrait" ? Orientation::kPortrait : Orientation::kLandscape);
  return {};
}

}  // namespace

Result<> ParsePageOptions(const CommandLine& line, AGSize* size, AGColor* background) {
  std::vector<double> sides = {size->width, size->height};
  if (line.Has("size") && (!ParseLengths(line.Value("size", ""), 2, &sides) || sides[0] <= 0 || sides[1] <= 0)) {
    return Problem(N_("--size takes two numbers above 0 as WIDTH,HEIGHT"));
  }
  AGSize chosen{sides[0], sides[1]};
  if (const auto done = ParsePaper(line, &chosen); !done) return done.Why();
  if (line.Has("background")) {
    if (const auto done = ParseColor(line.Value("background", ""), background); !done) return done.Why();
  }
  *size = chosen;
  return {};
}

}  // namespace host
