// The rectangle by itself: state, record, properties, drawing.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#include "graphics/bitmaps/AGBitmap.h"
#include "kit/geometry/AGConstants.h"
#include "kit/streams/AKFile.h"
#include "kit/text/AKArgs.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"
#include "plugin/CStdRect.h"

namespace {

struct Destroy {
  void operator()(CStdRect* rectangle) const { CStdRect::_ClassDtor(rectangle); }
};
using Rectangle = std::unique_ptr<CStdRect, Destroy>;

// Without a host there is no class record, so the hidden class pointer is null.
Rectangle NewRectangle() { return Rectangle(static_cast<CStdRect*>(CStdRect::_ClassCtor())); }

double Rounding(const CStdRect& rectangle) {
  AKDictionary properties;
  EXPECT_EQ(rectangle.akmGetObjectProperties(&properties), 0);
  return AKValueGetasFloat64(properties.GetValue("Rounding"), false);
}

void SetRounding(CStdRect& rectangle, double value) {
  AKDictionary properties;
  properties.SetValue("Rounding", AKValueSetasFloat64(value));
  EXPECT_EQ(rectangle.akmSetObjectProperties(properties), 0);
}

TEST(CStdRectTest, Args_OnlyDefaultCounts) {
  const struct {
    const char* args;
    double curvature;
  } cases[] = {{"", 0}, {"-default", 0.5}, {"-other -default", 0.5}, {"-defaultSize:3", 0.5}, {"default", 0}};
  for (const auto& c : cases) {
    const Rectangle rectangle = NewRectangle();
    EXPECT_EQ(rectangle->akmInitWithArgs(AKArgs(c.args, true)), 0);
    EXPECT_EQ(Rounding(*rectangle), c.curvature) << c.args;
  }
}

TEST(CStdRectTest, Properties_AreClamped_AndLeftAloneWhenUnreadable) {
  const Rectangle rectangle = NewRectangle();
  const struct {
    double given;
    double kept;
  } cases[] = {{-3, 0}, {7.5, 1}, {0.25, 0.25}, {-0.0, 0}, {1, 1}, {std::numeric_limits<double>::infinity(), 1}};
  for (const auto& c : cases) {
    SetRounding(*rectangle, c.given);
    EXPECT_EQ(Rounding(*rectangle), c.kept) << c.given;
  }
  SetRounding(*rectangle, std::nan(""));
  EXPECT_TRUE(std::isnan(Rounding(*rectangle)));
  SetRounding(*rectangle, 0.75);
  AKDictionary wrongKind;
  wrongKind.SetValue("Rounding", AKValueSetasAKString("0.3"));
  EXPECT_EQ(rectangle->akmSetObjectProperties(wrongKind), 0);
  EXPECT_EQ(rectangle->akmSetObjectProperties(kAKNullDictionary), 0);
  EXPECT_EQ(Rounding(*rectangle), 0.75);
}

TEST(CStdRectTest, Record_SixteenBytes_NotClamped) {
  const struct {
    unsigned char bytes[4];
    double curvature;
  } cases[] = {{{0, 0, 0, 0x40}, 2.0}, {{0xCD, 0xCC, 0xCC, 0x3D}, 0.10000000149011612}, {{0, 0, 0x80, 0xBF}, -1.0}};
  for (const auto& c : cases) {
    unsigned char record[20] = {};
    std::memset(record, 0xEE, sizeof(record));
    std::memcpy(record, c.bytes, 4);
    AKFile in(record, sizeof(record));
    in.OpenForRead();
    const Rectangle rectangle = NewRectangle();
    EXPECT_EQ(rectangle->akmInitFromFile(in, 99), 0);
    EXPECT_EQ(Rounding(*rectangle), c.curvature);
    unsigned long long position = 0;
    in.GetPos(&position);
    EXPECT_EQ(position, 16U);

    AKFile out(AKFile::kModeMemory);
    out.CreateForReadWrite();
    EXPECT_EQ(rectangle->akmWriteToFile(out), 0);
    const void* data = nullptr;
    unsigned long long size = 0;
    out.GetMemoryStreamDataPtr(&data, &size);
    ASSERT_EQ(size, 16U);
    unsigned char expected[16] = {};
    std::memcpy(expected, c.bytes, 4);
    EXPECT_EQ(std::memcmp(data, expected, 16), 0);
  }
}

TEST(CStdRectTest, Record_CutShort_GivesTheFilesStatus) {
  const unsigned char record[16] = {0, 0, 0, 0x40};
  for (unsigned int size = 0; size < 16; ++size) {
    AKFile in(record, size);
    in.OpenForRead();
    EXPECT_EQ(NewRectangle()->akmInitFromFile(in, 0), size < 4 ? -890 : -888) << size;
  }
}

// Draws into a bitmap and tells where ink fell.
class DrawnRectangle {
 public:
  DrawnRectangle() : bitmap_(40U, 40U, AGBitmap::kFlagZeroFill), context_(bitmap_.GetContextOfBitmap()) {
    brush_.SetStyleSolid(kAGColorRed);
    event_.bounds = {10, 10, 30, 30};
    event_.recommendedBrush = &brush_;
    event_.recommendedPen = &pen_;
  }
  AGContext& Context() { return context_; }
  AKDrawEvent& Event() { return event_; }
  AGBrush& Brush() { return brush_; }
  AGPen& Pen() { return pen_; }

  void Draw(double curvature) {
    const Rectangle rectangle = NewRectangle();
    SetRounding(*rectangle, curvature);
    EXPECT_EQ(rectangle->akmDraw(context_, event_), 0);
  }
  int Alpha(unsigned int x, unsigned int y) const { return bitmap_.GetPixelColor(x, y).Alpha(); }
  double Area() const {
    double area = 0;
    for (unsigned int y = 0; y < 40; ++y) {
      for (unsigned int x = 0; x < 40; ++x) area += Alpha(x, y) / 255.0;
    }
    return area;
  }

 private:
  AGBitmap bitmap_;
  AGContext context_;
  AGBrush brush_;
  AGPen pen_;
  AKDrawEvent event_;
};

TEST(CStdRectTest, Draw_CurvatureRoundsTheCorners_ByArea) {
  // Four corners of radius R lose (4 - π) R² in all; the radius is half the shorter side times the curvature.
  // Curves are drawn as chords that stay within 0.1 pixels, so an arc may lose two thirds of that along its length.
  for (const double curvature : {0.0, 0.02, 0.021, 0.25, 0.5, 1.0}) {
    DrawnRectangle drawn;
    drawn.Draw(curvature);
    const double radius = curvature > 0.02 ? 10 * curvature : 0;
    EXPECT_NEAR(drawn.Area(), 400 - (4 - kPi) * radius * radius, 0.1 + 0.1 * 2 / 3 * k2Pi * radius) << curvature;
  }
}

TEST(CStdRectTest, Draw_TurnsAboutTheCentre) {
  DrawnRectangle drawn;
  drawn.Event().bounds = {10, 15, 30, 25};
  drawn.Event().angle = kPi / 2;
  drawn.Draw(0);
  EXPECT_EQ(drawn.Alpha(16, 11), 255);
  EXPECT_EQ(drawn.Alpha(24, 29), 255);
  EXPECT_EQ(drawn.Alpha(14, 20), 0);
  EXPECT_EQ(drawn.Alpha(26, 20), 0);
  EXPECT_NEAR(drawn.Area(), 200, 0.1);
}

TEST(CStdRectTest, Draw_AngleIsCounterClockwise) {
  // Turned by a quarter, the long right half points up.
  DrawnRectangle drawn;
  drawn.Event().bounds = {10, 18, 30, 22};
  drawn.Event().angle = kPi / 6;
  drawn.Draw(0);
  EXPECT_EQ(drawn.Alpha(27, 24), 255);
  EXPECT_EQ(drawn.Alpha(27, 15), 0);
}

TEST(CStdRectTest, Draw_VisibilityByAlphaBrushAndPen) {
  const struct {
    double alpha;
    bool brush;
    bool pen;
    std::uint32_t flags;
    bool drawn;
  } cases[] = {{0.0039, true, true, 0, false}, {0.004, true, true, 0, true},        {1, false, true, 0, true},
               {1, false, false, 0, false},    {0, true, true, 0x10, true},         {0, true, true, 0x20, true},
               {0, true, true, 0x0F, false},   {std::nan(""), true, true, 0, false}};
  for (const auto& c : cases) {
    DrawnRectangle drawn;
    if (!c.brush) drawn.Brush().SetStyleNone();
    if (c.pen) drawn.Pen().SetStyleSolid(kAGColorBlue, 4, kAGPenSizeModeAbsolute);
    drawn.Context().alpha = c.alpha;
    drawn.Event().flags = c.flags;
    drawn.Draw(0);
    EXPECT_EQ(drawn.Area() > 0, c.drawn) << c.alpha << " " << c.flags;
    if (c.brush || !c.drawn) continue;
    EXPECT_EQ(drawn.Alpha(20, 20), 0) << "only the outline is drawn";
    EXPECT_EQ(drawn.Alpha(10, 20), 255);
  }
}

TEST(CStdRectTest, Draw_JoinIsRound_WhateverIsRecommended_AndTheHostsContextStays) {
  DrawnRectangle drawn;
  drawn.Pen().SetStyleSolid(kAGColorBlue, 8, kAGPenSizeModeAbsolute);
  drawn.Pen().SetLineJoin(kAGPenLineJoinMiter);
  drawn.Draw(0);
  // A mitre would paint the pixel at the very corner of the stroke, (6, 6).
  EXPECT_EQ(drawn.Alpha(6, 6), 0);
  EXPECT_EQ(drawn.Alpha(6, 20), 255);
  EXPECT_FALSE(drawn.Context().brush.Appears());
}

TEST(CStdRectTest, NaturalBounds_AreTheUnitSquare) {
  EXPECT_TRUE(NewRectangle()->akmGetNaturalBounds() == (AGRect{0, 0, 1, 1}));
}

}  // namespace
