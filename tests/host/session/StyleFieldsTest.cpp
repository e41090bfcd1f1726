// Fields of brushes and pens: each is told when it differs, taken alone, and all of them together are the whole.
#include <random>

#include "host/session/StyleFields.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

class StyleFieldsTest : public SessionFixture {
 protected:
  double Number() { return std::uniform_real_distribution<float>(0.1F, 0.9F)(random_); }
  unsigned int Below(unsigned int end) { return random_() % end; }

  /// Two values a field, so that some are the same.
  AGBrush AnyBrush() {
    constexpr AGBrushStyle kStyles[] = {kAGBrushStyleNone, kAGBrushStyleSolid, kAGBrushStylePattern,
                                        kAGBrushStyleLinearGradient, kAGBrushStyleRadialGradient};
    AGBrush brush;
    brush.SetStyle(kStyles[Below(5)]);
    brush.SetColor(Below(2) == 0 ? kAGColorBlack : AGColor(9, 8, 7, 200));
    brush.SetColor2(Below(2) == 0 ? kAGColorWhite : AGColor(1, 2, 3, 100));
    brush.SetPatternIndex(1 + Below(2));
    brush.SetGradientBlend(Below(2) == 0 ? 0.5 : Number());
    brush.SetGradientAngle(Below(2) == 0 ? 0 : Number());
    brush.SetGradientCenterX(Below(2) == 0 ? 0.5 : Number());
    brush.SetGradientCenterY(Below(2) == 0 ? 0.5 : Number());
    return brush;
  }
  AGPen AnyPen() {
    AGPen pen;
    pen.SetStyleSolid(kAGColorBlack, Below(2) == 0 ? 1 : 7);
    pen.SetLineCap(Below(2) == 0 ? kAGPenLineCapButt : kAGPenLineCapRound);
    pen.SetLineJoin(Below(2) == 0 ? kAGPenLineJoinMiter : kAGPenLineJoinRound);
    pen.SetRatio(Below(2) == 0 ? 1 : Number());
    pen.SetAngle(Below(2) == 0 ? 0 : Number());
    return pen;
  }

  std::mt19937 random_;
};

TEST_F(StyleFieldsTest, FieldsThatDiffer_MakeTheDifference) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  random_.seed(seed);
  DocumentSession session(MakeDocument(2));
  const ObjectIDs ids = {ID(session, 0), ID(session, 1)};
  for (int i = 0; i < 300; ++i) {
    const AGBrush from = AnyBrush();
    const AGPen fromPen = AnyPen();
    AGBrush to = AnyBrush();
    AGPen toPen = AnyPen();
    const auto differs = [&] {
      EXPECT_TRUE(session.Objects().SetStyle({ids[0]}, {from, fromPen, 1, {}, {}, {}, {}}));
      EXPECT_TRUE(session.Objects().SetStyle({ids[1]}, {to, toPen, 1, {}, {}, {}, {}}));
      return StyleOf(session.Doc(), ids).value();
    };
    const SharedStyle first = differs();
    EXPECT_EQ(LookAlike(from, to), LookAlike(to, from));
    for (std::size_t field = 0; field < first.brushDiffers.size(); ++field) {
      TakeField(static_cast<BrushField>(field), from, &to);
      const BrushFields now = differs().brushDiffers;
      EXPECT_EQ(now, first.brushDiffers >> (field + 1) << (field + 1)) << "after field " << field;
    }
    for (std::size_t field = 0; field < first.penDiffers.size(); ++field) {
      TakeField(static_cast<PenField>(field), fromPen, &toPen);
      EXPECT_EQ(differs().penDiffers, first.penDiffers >> (field + 1) << (field + 1)) << "after field " << field;
    }
    EXPECT_TRUE(LookAlike(from, to) && LookAlike(fromPen, toPen));
  }
}

// Only what a style shows counts, and what was never chosen does not stay unseen.
TEST_F(StyleFieldsTest, OnlyWhatIsSeenCounts) {
  AGBrush none;
  AGBrush solid;
  none.SetStyleNone();
  solid.SetStyleSolid(kAGColorBlack);
  AGBrush otherNone(none);
  otherNone.SetColor(AGColor(5, 5, 5, 5));
  EXPECT_TRUE(LookAlike(none, otherNone));
  EXPECT_FALSE(LookAlike(none, solid));
  AGBrush clear;
  clear.SetStyleNone();
  clear.SetColor(AGColor(0, 0, 0, 0));
  clear.SetColor2(AGColor(0, 0, 0, 0));
  AGBrush pattern;
  pattern.SetStyle(kAGBrushStylePattern);
  TakeField(BrushField::kStyle, pattern, &clear);
  EXPECT_EQ(clear.Color(), kAGColorBlack);
  EXPECT_EQ(clear.Color2(), kAGColorWhite);
}

}  // namespace
}  // namespace host
