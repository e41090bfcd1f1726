#include "host/gallery/StrokeFont.h"

#include <cctype>

#include "graphics/paths/AGPath.h"
#include "kit/geometry/AGArrays.h"

namespace host {
namespace {

// Strokes on a grid of 5 by 7 points: two digits a point, column and row from the lower left; a blank lifts the pen.
struct Glyph {
  char character;
  const char* strokes;
};

constexpr Glyph kGlyphs[] = {
    {'A', "0004264440 0242"},
    {'B', "00063645443303 3342413000"},
    {'C', "4536160501103041"},
    {'D', "00062644422000"},
    {'E', "46060040 0333"},
    {'F', "460600 0333"},
    {'G', "45361605011030414323"},
    {'H', "0006 4046 0343"},
    {'I', "1030 2026 1636"},
    {'J', "0110304146"},
    {'K', "0006 460340"},
    {'L', "060040"},
    {'M', "0006234640"},
    {'N', "00064046"},
    {'O', "103041453616050110"},
    {'P', "00063645443303"},
    {'Q', "103041453616050110 2240"},
    {'R', "00063645443303 2340"},
    {'S', "453616050413334241301001"},
    {'T', "0646 2620"},
    {'U', "060110304146"},
    {'V', "062046"},
    {'W', "0610233046"},
    {'X', "0640 0046"},
    {'Y', "062346 2320"},
    {'Z', "06460040"},
    {'0', "103041453616050110 1135"},
    {'1', "152620 1030"},
    {'2', "05163645440040"},
    {'3', "05163645443313 334241301001"},
    {'4', "30360242"},
    {'5', "460603334241301001"},
    {'6', "4536160501103041423303"},
    {'7', "064610"},
    {'8', "13334241301001021304051636454433"},
    {'9', "0110304145361605041343"},
    {'-', "0343"},
};

void AddGlyph(AGPath* path, const char* strokes, const AGPoint& origin, double unit) {
  AGPointArray points;
  for (const char* at = strokes;; ++at) {
    if (*at == ' ' || *at == '\0') {
      // As a path of its own: a polyline would be joined to the one before.
      AGPath stroke;
      stroke.AddLines(points, false);
      path->AddPath(stroke);
      points.Clear();
      if (*at == '\0') return;
      continue;
    }
    const double column = at[0] - '0', row = at[1] - '0';
    points.Append({origin.x + column * unit, origin.y + row * unit});
    ++at;
  }
}

}  // namespace

void DrawStrokeText(const AGContext& context, const std::string& text, const AGPoint& origin, double height) {
  const double unit = height / 6;
  AGPath path;
  AGPoint pen = origin;
  for (const char character : text) {
    const int capital = std::toupper(static_cast<unsigned char>(character));
    for (const Glyph& glyph : kGlyphs) {
      if (glyph.character == capital) AddGlyph(&path, glyph.strokes, pen, unit);
    }
    pen.x += 5 * unit;
  }
  AGContext copy(context);
  copy.brush.SetStyleNone();
  copy.DrawPath(path);
}

}  // namespace host
