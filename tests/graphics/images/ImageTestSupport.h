// What the tests of images share: their pixels, another program's view of a file, a folder of samples.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/images/AGImage.h"
#include "kit/files/AKFilePath.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace image_test {

/// What a program prints; empty, and a failed test, when it fails.
inline std::string Output(const std::string& command) {
  std::string output;
  FILE* pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
  std::array<char, 4096> part;
  for (std::size_t count = 0; (count = std::fread(part.data(), 1, part.size(), pipe)) > 0;) {
    output.append(part.data(), count);
  }
  EXPECT_EQ(::pclose(pipe), 0) << command;
  return output;
}

/// Bytes red, green, blue, alpha, premultiplied, rows from the top down.
inline std::vector<unsigned char> Pixels(const AGImage& image) {
  AGBitmap bitmap(image, 0);
  std::vector<unsigned char> pixels;
  for (unsigned int y = bitmap.Height(); y-- > 0;) {
    for (unsigned int x = 0; x < bitmap.Width(); ++x) {
      const AGColor color = bitmap.GetPixelColor(x, y);
      pixels.insert(pixels.end(), {color.Red(), color.Green(), color.Blue(), color.Alpha()});
    }
  }
  return pixels;
}

/// The same of the first image of a file by another program, its colours multiplied here.
inline std::vector<unsigned char> ForeignPixels(const std::string& path) {
  const std::string straight = Output("convert '" + path + "[0]' -colorspace sRGB -depth 8 RGBA:-");
  std::vector<unsigned char> pixels(straight.begin(), straight.end());
  for (std::size_t i = 0; i + 3 < pixels.size(); i += 4) {
    for (std::size_t channel = 0; channel < 3; ++channel) {
      pixels[i + channel] = static_cast<unsigned char>((pixels[i + channel] * pixels[i + 3] + 127) / 255);
    }
  }
  return pixels;
}

/// The largest difference of two lists of pixels; 256 for lists of different lengths or empty ones.
inline int Difference(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b) {
  if (a.size() != b.size() || a.empty()) return 256;
  int largest = 0;
  for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::abs(a[i] - b[i]));
  return largest;
}

inline AGImage ImageOfFile(const std::string& path) {
  AGImage image;
  const bool done = image.SetupFromFile(AKFilePath(path.c_str()));
  EXPECT_EQ(done, !image.IsEmpty());
  return image;
}

inline std::string Sample(const std::string& name) { return std::string(AK_IMAGES "/") + name; }

/// A picture whose colours change from pixel to pixel, with alphas from 0 to 255 when `translucent`.
inline AGImage Picture(unsigned int width, unsigned int height, bool translucent) {
  AGBitmap bitmap(width, height, AGBitmap::kFlagZeroFill);
  for (unsigned int y = 0; y < height; ++y) {
    for (unsigned int x = 0; x < width; ++x) {
      const unsigned int alpha = translucent ? (x * 7 + y * 13) % 256 : 255;
      const auto channel = [alpha](unsigned int value) {
        return static_cast<unsigned char>(value % 256 * alpha / 255);
      };
      bitmap.SetPixelColor(x, y, AGColor(channel(x * 5), channel(y * 9), channel(x * y), channel(255)));
    }
  }
  return AGImage(bitmap);
}

}  // namespace image_test
