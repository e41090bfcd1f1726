#include "platform/graphics/ImageResample.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace platform {
namespace {

// Smaller still, and there is next to nothing to be seen, but all of the image to be gone through for each pixel of it.
constexpr double kMinScale = 1e-4;
constexpr std::size_t kChannels = 4;
// So many sums at a time stay in the processor's nearest cache.
constexpr std::size_t kStretch = 1024;

double Cubic(double x) {
  const double t = std::fabs(x);
  if (t < 1) return (1.5 * t - 2.5) * t * t + 1;
  if (t < 2) return ((-0.5 * t + 2.5) * t - 4) * t + 2;
  return 0;
}

double Linear(double x) { return std::max(1 - std::fabs(x), 0.0); }

// Which source pixels make a target pixel, and with which weights, whose sum is 1.
struct Taps {
  std::size_t first = 0;
  std::vector<float> weights;
};

// Taps of the target pixels start to end along one axis: position = scale * source + offset. Beyond its edges the
// source goes on as its last pixel.
std::vector<Taps> MakeTaps(int start, int end, double scale, double offset, int sourceSize) {
  std::vector<Taps> all;
  all.reserve(static_cast<std::size_t>(end - start));
  const bool isSmaller = std::fabs(scale) <= 1;
  const double radius = isSmaller ? 2 / std::fabs(scale) : 1;
  for (int target = start; target < end; ++target) {
    const double center = (target + 0.5 - offset) / scale;
    const double low = std::floor(center - radius);
    const double high = std::ceil(center + radius);
    const auto inside = [sourceSize](double index) {
      return static_cast<int>(std::clamp(index, 0.0, sourceSize - 1.0));
    };
    const int first = inside(low);
    std::vector<double> weights(static_cast<std::size_t>(inside(high) - first) + 1);
    double sum = 0;
    for (double source = low; source <= high; ++source) {
      const double distance = source + 0.5 - center;
      const double weight = isSmaller ? Cubic(distance * scale) : Linear(distance);
      weights[static_cast<std::size_t>(inside(source) - first)] += weight;
      sum += weight;
    }
    Taps taps;
    taps.first = static_cast<std::size_t>(first);
    for (const double weight : weights) taps.weights.push_back(static_cast<float>(weight / sum));
    all.push_back(std::move(taps));
  }
  return all;
}

const unsigned char* RowOf(const raster::PixelGrid& image, std::size_t y) {
  return reinterpret_cast<const unsigned char*>(image.pixels + y * image.stride);
}

// Bytes first to last of the rows below a target row, added up by weight.
void AddRows(const raster::PixelGrid& image, const Taps& taps, std::size_t first, std::size_t last, float* sums) {
  for (std::size_t start = first; start < last; start += kStretch) {
    const std::size_t count = std::min(kStretch, last - start);
    float* const out = sums + start;
    std::fill_n(out, count, 0.0F);
    for (std::size_t i = 0; i < taps.weights.size(); ++i) {
      const unsigned char* const row = RowOf(image, taps.first + i) + start;
      const float weight = taps.weights[i];
      for (std::size_t k = 0; k < count; ++k) out[k] += weight * static_cast<float>(row[k]);
    }
  }
}

std::uint32_t ByteOf(float value, float limit) {
  return static_cast<std::uint32_t>(std::clamp(value, 0.0F, limit) + 0.5F);
}

std::uint32_t PixelOf(const Taps& taps, const float* sums) {
  float pixel[kChannels] = {};
  const float* source = sums + taps.first * kChannels;
  for (const float weight : taps.weights) {
    for (std::size_t channel = 0; channel < kChannels; ++channel) pixel[channel] += weight * source[channel];
    source += kChannels;
  }
  // The cubic overshoots at edges; a premultiplied colour stays below its alpha.
  const float alpha = std::clamp(pixel[3], 0.0F, 255.0F);
  return ByteOf(alpha, 255) << 24 | ByteOf(pixel[2], alpha) << 16 | ByteOf(pixel[1], alpha) << 8 |
         ByteOf(pixel[0], alpha);
}

bool IsMadeSmaller(const CGAffineTransform& m) {
  const double width = std::fabs(m.a);
  const double height = std::fabs(m.d);
  return m.b == 0 && m.c == 0 && std::min(width, height) >= kMinScale && std::min(width, height) < 1;
}

}  // namespace

CairoSurface ResampleForDrawing(const raster::PixelGrid& image, const CGAffineTransform& toDevice,
                                const PixelBox& box) {
  if (!IsMadeSmaller(toDevice) || box.IsEmpty()) return nullptr;
  CairoSurface result(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, box.x1 - box.x0, box.y1 - box.y0));
  if (cairo_surface_status(result.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  const int width = image.width;
  const std::vector<Taps> columns = MakeTaps(box.x0, box.x1, toDevice.a, toDevice.tx, width);
  const std::vector<Taps> rows = MakeTaps(box.y0, box.y1, toDevice.d, toDevice.ty, image.height);
  std::size_t first = static_cast<std::size_t>(width) * kChannels;
  std::size_t last = 0;
  for (const Taps& taps : columns) {
    first = std::min(first, taps.first * kChannels);
    last = std::max(last, (taps.first + taps.weights.size()) * kChannels);
  }
  std::vector<float> sums(static_cast<std::size_t>(width) * kChannels);
  for (std::size_t y = 0; y < rows.size(); ++y) {
    AddRows(image, rows[y], first, last, sums.data());
    auto* out =
        reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(result.get()) +
                                         y * static_cast<std::size_t>(cairo_image_surface_get_stride(result.get())));
    for (const Taps& taps : columns) *out++ = PixelOf(taps, sums.data());
  }
  cairo_surface_mark_dirty(result.get());
  return result;
}

}  // namespace platform
