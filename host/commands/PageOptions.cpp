#include "host/commands/PageOptions.h"

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

}  // namespace

Result<> ParsePageOptions(const CommandLine& line, AGSize* size, AGColor* background) {
  std::vector<double> sides = {size->width, size->height};
  if (line.Has("size") && (!ParseLengths(line.Value("size", ""), 2, &sides) || sides[0] <= 0 || sides[1] <= 0)) {
    return Problem(N_("--size takes two numbers above 0 as WIDTH,HEIGHT"));
  }
  if (line.Has("background")) {
    if (const auto done = ParseColor(line.Value("background", ""), background); !done) return done.Why();
  }
  *size = {sides[0], sides[1]};
  return {};
}

}  // namespace host
