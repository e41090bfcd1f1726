#include "host/commands/PageOptions.h"

namespace host {
namespace {

bool ParseColor(const std::string& text, AGColor* color, std::string* error) {
  std::vector<double> numbers;
  if (!ParseNumbers(text, 3, &numbers)) {
    *error = "--background takes three numbers from 0 to 255 as RED,GREEN,BLUE";
    return false;
  }
  unsigned char channels[3];
  for (int i = 0; i < 3; ++i) {
    if (!(numbers[i] >= 0 && numbers[i] <= 255)) {
      *error = "--background takes numbers from 0 to 255";
      return false;
    }
    channels[i] = static_cast<unsigned char>(numbers[i]);
  }
  *color = AGColor(channels[0], channels[1], channels[2]);
  return true;
}

}  // namespace

bool ParsePageOptions(const CommandLine& line, AGSize* size, AGColor* background, std::string* error) {
  std::vector<double> sides = {size->width, size->height};
  if (line.Has("size") && (!ParseNumbers(line.Value("size", ""), 2, &sides) || sides[0] <= 0 || sides[1] <= 0)) {
    *error = "--size takes two numbers above 0 as WIDTH,HEIGHT";
    return false;
  }
  if (line.Has("background") && !ParseColor(line.Value("background", ""), background, error)) return false;
  *size = {sides[0], sides[1]};
  return true;
}

}  // namespace host
