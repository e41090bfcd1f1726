// Patterns on pages.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/pages/Page.h"

namespace platform {
namespace {

// More than so many are a picture rather than a pattern.
constexpr std::size_t kMostColors = 8;
constexpr int kLargestSide = 64;

class Cell {
 public:
  explicit Cell(const CGPattern& pattern)
      : width_(pattern.width),
        height_(pattern.height),
        stride_(static_cast<std::size_t>(cairo_image_surface_get_stride(pattern.cell.get()))),
        bytes_(cairo_image_surface_get_data(pattern.cell.get())) {}

  int Width() const { return width_; }
  int Height() const { return height_; }
  std::uint32_t At(int x, int y) const {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, bytes_ + static_cast<std::size_t>(y) * stride_ + static_cast<std::size_t>(x) * 4, 4);
    return pixel;
  }

  // The colours, the most frequent one first; empty when there are too many.
  std::vector<std::uint32_t> Colors() const {
    std::vector<std::uint32_t> colors;
    std::vector<int> counts;
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        const auto found = std::find(colors.begin(), colors.end(), At(x, y));
        if (found == colors.end()) {
          if (colors.size() == kMostColors) return {};
          colors.push_back(At(x, y));
          counts.push_back(1);
        } else {
          ++counts[static_cast<std::size_t>(found - colors.begin())];
        }
      }
    }
    const auto most = std::max_element(counts.begin(), counts.end()) - counts.begin();
    std::swap(colors.front(), colors[static_cast<std::size_t>(most)]);
    return colors;
  }

 private:
  int width_;
  int height_;
  std::size_t stride_;
  const unsigned char* bytes_;
};

// The squares of one colour as one path, so that no seams show between them.
void AddSquares(cairo_t* cairo, const Cell& cell, std::uint32_t color) {
  for (int y = 0; y < cell.Height(); ++y) {
    for (int x = 0; x < cell.Width(); ++x) {
      const int first = x;
      while (x < cell.Width() && cell.At(x, y) == color) ++x;
      if (x > first) cairo_rectangle(cairo, first, y, x - first, 1);
    }
  }
}

void SetColor(cairo_t* cairo, std::uint32_t pixel, double alpha) {
  const double own = (pixel >> 24) / 255.0;
  const auto channel = [&](unsigned int shift) { return (pixel >> shift & 255) / 255.0 / own; };
  cairo_set_source_rgba(cairo, channel(16), channel(8), channel(0), own * alpha);
}

}  // namespace

CairoPattern MakeVectorPatternSource(CGPattern* pattern, CGSize phase, double alpha,
                                     const CGAffineTransform& baseToDevice) {
  if (!DrawCellOnce(pattern)) return nullptr;
  const Cell cell(*pattern);
  if (cell.Width() > kLargestSide || cell.Height() > kLargestSide) return nullptr;
  const std::vector<std::uint32_t> colors = cell.Colors();
  if (colors.empty()) return nullptr;
  const cairo_rectangle_t extents{0, 0, static_cast<double>(cell.Width()), static_cast<double>(cell.Height())};
  const CairoSurface surface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents));
  const CairoContext cairo(cairo_create(surface.get()));
  const auto isOpaque = [alpha](std::uint32_t color) { return color >> 24 == 255 && alpha >= 1; };
  const bool hasGround = std::all_of(colors.begin(), colors.end(), isOpaque);
  for (const std::uint32_t color : colors) {
    if (color >> 24 == 0) continue;
    SetColor(cairo.get(), color, alpha);
    if (hasGround && color == colors.front()) {
      cairo_paint(cairo.get());  // below the others, so that nothing shines through between them
      continue;
    }
    AddSquares(cairo.get(), cell, color);
    cairo_fill(cairo.get());
  }
  return RepeatCell(surface.get(), *pattern, phase, baseToDevice);
}

}  // namespace platform
