// Sizes of pages that have names.
#pragma once

#include <string_view>

#include "kit/geometry/AGSize.h"

namespace host {

struct Paper {
  const char* name;  ///< not translated
  AGSize size;       ///< map units, upright
};

constexpr AGSize SizeInMillimetres(double width, double height) { return {width * 72 / 25.4, height * 72 / 25.4}; }

inline constexpr Paper kPapers[] = {{"A3", SizeInMillimetres(297, 420)},
                                    {"A4", SizeInMillimetres(210, 297)},
                                    {"A5", SizeInMillimetres(148, 210)},
                                    {"A6", SizeInMillimetres(105, 148)},
                                    {"B5", SizeInMillimetres(176, 250)},
                                    {"Letter", {612, 792}},
                                    {"Legal", {612, 1008}},
                                    {"Tabloid", {792, 1224}}};

/// Null for an unknown name.
constexpr const Paper* FindPaper(std::string_view name) {
  for (const Paper& paper : kPapers) {
    if (name == paper.name) return &paper;
  }
  return nullptr;
}

enum class Orientation { kPortrait, kLandscape };

/// The size turned so that its longer side is where the orientation has it.
constexpr AGSize Oriented(const AGSize& size, Orientation orientation) {
  const bool isUpright = size.height >= size.width;
  return isUpright == (orientation == Orientation::kPortrait) ? size : AGSize{size.height, size.width};
}

}  // namespace host
