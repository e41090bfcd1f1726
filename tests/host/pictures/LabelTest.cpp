// Where the ink of labels lies.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "graphics/bitmaps/AGBitmap.h"
#include "host/Fonts.h"
#include "host/listings/FindObjects.h"
#include "host/pictures/DocumentDrawing.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

constexpr int kSide = 200;
constexpr AGRect kBounds{20, 50, 180, 150};  // about the middle of the page
constexpr double kMargin = 4;

// The pixels that are inked, by columns and rows from the lower left.
class Ink {
 public:
  explicit Ink(const Document& document) {
    AGBitmap bitmap(kSide, kSide, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
    DrawObjects(document, bitmap.GetContextOfBitmap(), 1);
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const auto pixel = static_cast<std::size_t>(kSide - 1 - y) * bitmap.RowStride() + static_cast<std::size_t>(x);
        const int alpha = bitmap.Pixels()[pixel * 4 + 3];
        alpha_.push_back(alpha);
        if (alpha < 100) continue;
        ++count;
        box = {std::min(box.x0, double(x)), std::min(box.y0, double(y)), std::max(box.x1, x + 1.0),
               std::max(box.y1, y + 1.0)};
      }
    }
  }
  int At(int x, int y) const { return alpha_[static_cast<std::size_t>(y * kSide + x)]; }
  int InColumns(int x0, int x1) const {
    int inked = 0;
    for (int y = 0; y < kSide; ++y) {
      for (int x = x0; x < x1; ++x) inked += At(x, y) >= 100 ? 1 : 0;
    }
    return inked;
  }

  int count = 0;
  AGRect box{kSide, kSide, 0, 0};

 private:
  std::vector<int> alpha_;
};

class LabelTest : public SessionFixture {
 protected:
  void SetUp() override {
    SessionFixture::SetUp();
    session_ = std::make_unique<DocumentSession>(std::make_unique<Document>(AGSize{kSide, kSide}));
    ids_ = {Taken(session_->Objects().Add(AKClassID("stdRect"), "", {kBounds, 0}))};
    AGBrush none;
    AGPen noPen;
    none.SetStyleNone();
    noPen.SetStyleNone();
    ASSERT_TRUE(session_->Objects().SetBrush(ids_, none) && session_->Objects().SetPen(ids_, noPen));
  }

  Ink Labelled(const LabelChange& change) {
    LabelChange withFont = change;
    withFont.font = "DejaVu Sans";
    EXPECT_TRUE(session_->Labels().Change(ids_, withFont));
    return Ink(session_->Doc());
  }

  Fonts fonts_;
  std::unique_ptr<DocumentSession> session_;
  ObjectIDs ids_;
};

// "H" has straight sides, no overhang and no descent: its ink begins where its room does, but for the side bearings.
TEST_F(LabelTest, Alignments_PutTheInkWhereTheySay) {
  constexpr double kSize = 20;
  const AGFont font("DejaVu Sans", kSize, kAGFontStyleRegular);
  const double bearing = 0.11 * kSize + 1;
  const double middle = (font.GetAscent() - font.GetDescent()) / 2;  // of the line, above the baseline
  const double capHeight = 0.729 * kSize;
  for (int across = 0; across < 3; ++across) {
    for (int down = 0; down < 3; ++down) {
      const Ink ink = Labelled({.text = "HHH",
                                .size = kSize,
                                .across = static_cast<LabelAcross>(across),
                                .down = static_cast<LabelDown>(down)});
      SCOPED_TRACE(std::to_string(across) + std::to_string(down));
      const double left = ink.box.x0 - (kBounds.x0 + kMargin);
      const double right = kBounds.x1 - kMargin - ink.box.x1;
      const double deviations[] = {left - bearing / 2, left - right, right - bearing / 2};
      EXPECT_NEAR(deviations[across], 0, bearing / 2) << left << " " << right;
      const double baselines[] = {kBounds.y1 - kMargin - font.GetAscent(), kBounds.Center().y - middle,
                                  kBounds.y0 + kMargin + font.GetDescent()};
      EXPECT_NEAR(ink.box.y0, baselines[down], 1.5);
      EXPECT_NEAR(ink.box.Height(), capHeight, 2);
    }
  }
}

TEST_F(LabelTest, TurnedLabels_AreTheTurnedPicture_MirroredOnesTheSame) {
  const LabelChange change{.text = "Fig. 7\nleft", .size = 22, .across = LabelAcross::kLeft, .down = LabelDown::kTop};
  const Ink upright = Labelled(change);
  ASSERT_GT(upright.count, 400);
  ASSERT_TRUE(session_->Looks().Flip(ids_, Axis::kHorizontal));
  const Ink mirrored(session_->Doc());
  ASSERT_TRUE(session_->Looks().Flip(ids_, Axis::kHorizontal));
  ASSERT_TRUE(session_->Objects().SetAngle(ids_, std::acos(-1) / 2));
  const Ink turned(session_->Doc());
  ASSERT_TRUE(session_->Looks().SetOpacity(ids_, 0.5));
  const Ink faint(session_->Doc());
  int far = 0;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const int alpha = upright.At(x, y);
      ASSERT_EQ(mirrored.At(x, y), alpha) << x << " " << y;
      ASSERT_NEAR(faint.At(x, y), turned.At(x, y) / 2.0, 1) << x << " " << y;
      far += std::abs(turned.At(kSide - 1 - y, x) - alpha) > 180 ? 1 : 0;
    }
  }
  EXPECT_LT(far, upright.count / 20);  // glyphs lie on quarters of pixels
}

TEST_F(LabelTest, WhatDoesNotFit_IsWrappedThenCutOff) {
  std::string words;
  for (int i = 0; i < 6; ++i) words += "wrapped words ";
  const Ink fits = Labelled({.text = words, .size = 12});
  EXPECT_GT(fits.box.Height(), 3 * 12);
  EXPECT_GE(fits.box.x0, kBounds.x0 + kMargin - 1);
  EXPECT_LE(fits.box.x1, kBounds.x1 - kMargin + 1);
  const Ink first = Labelled({.text = "Mg", .size = 30, .down = LabelDown::kTop});
  for (const LabelDown down : {LabelDown::kTop, LabelDown::kMiddle, LabelDown::kBottom}) {
    const Ink cut = Labelled({.text = "Mg\nMg\nMg\nMg", .size = 30, .down = down});
    EXPECT_EQ(cut.box.y0, kBounds.y0);
    EXPECT_EQ(cut.box.y1, first.box.y1) << "it begins at its top";
  }
  const Ink wide = Labelled({.text = "W", .size = 400});
  EXPECT_GT(wide.count, 500);
  EXPECT_TRUE(wide.box.x0 >= kBounds.x0 && wide.box.x1 <= kBounds.x1 && wide.box.y1 <= kBounds.y1) << wide.box.x0;
}

// A full stop behind Latin text stands at its end, which is where the paragraph ends.
TEST_F(LabelTest, Direction_IsThatOfTheFirstLetter_OrAsGiven) {
  const struct {
    const char* text;
    LabelDirection direction;
    bool dotIsLeft;
  } cases[] = {{"HH.", LabelDirection::kAuto, false},
               {"HH.", LabelDirection::kRightToLeft, true},
               {"\u05D4\u05D4.", LabelDirection::kAuto, true},
               {"\u05D4\u05D4.", LabelDirection::kLeftToRight, false},
               {"\u05D4\u05D4.", LabelDirection::kRightToLeft, true}};
  for (const auto& c : cases) {
    const Ink ink = Labelled({.text = c.text, .size = 60, .direction = c.direction});
    const int dot = 10;  // pixels, of the eight that it is wide with its room
    const int left = ink.InColumns(int(ink.box.x0), int(ink.box.x0) + dot);
    const int right = ink.InColumns(int(ink.box.x1) - dot, int(ink.box.x1));
    EXPECT_EQ(left < right, c.dotIsLeft) << c.text << static_cast<int>(c.direction) << " " << left << " " << right;
  }
}

TEST_F(LabelTest, LabelsAreHitFoundCopiedAndUndone) {
  SessionSelection& selection = session_->Selection();
  ASSERT_EQ(selection.ObjectAt({100, 100}, 1), kNoObjectID) << "nothing is drawn";
  Labelled({.text = "\u00C4pfel\r\nund Birnen", .size = 20});
  EXPECT_EQ(session_->Doc().Find(ids_[0])->marks.label->text, "\u00C4pfel\nund Birnen");
  EXPECT_EQ(selection.ObjectAt({100, 100}, 1), ids_[0]);
  EXPECT_EQ(selection.ObjectAt({30, 60}, 1), kNoObjectID);
  EXPECT_EQ(FindObjects(session_->Doc(), {.name = "birnen"}), ids_);
  EXPECT_EQ(FindObjects(session_->Doc(), {.text = "pfel"}), ids_);
  EXPECT_TRUE(FindObjects(session_->Doc(), {.text = "stdRect"}).empty());
  ASSERT_TRUE(session_->Clipboard().Duplicate(ids_, 5, 5));
  const ObjectIDs both{ids_[0], selection.IDs()[0]};
  EXPECT_EQ(session_->Doc().Find(both[1])->marks, session_->Doc().Find(both[0])->marks);
  const std::string before = Bytes(*session_);
  const std::size_t steps = session_->Steps().Known().Count();
  ASSERT_TRUE(session_->Labels().Change(both, {.size = 8.0, .bold = true}));
  ASSERT_TRUE(session_->Labels().Change(both, {.text = ""}));
  EXPECT_EQ(session_->Doc().Find(both[1])->marks.label, nullptr);
  for (const LabelChange& wrong :
       {LabelChange{.size = 3.0}, LabelChange{.text = "a", .size = 0.4}, LabelChange{.text = "a", .size = std::nan("")},
        LabelChange{.text = "\xFF"}, LabelChange{.text = std::string(65537, 'x')},
        LabelChange{.text = std::string(1, 0)}, LabelChange{.text = "a", .font = std::string(256, 'f')}}) {
    EXPECT_FALSE(session_->Labels().Change(both, wrong));
  }
  EXPECT_EQ(session_->Steps().Known().Count(), steps + 2);
  ASSERT_TRUE(session_->Steps().Undo() && session_->Steps().Undo());
  EXPECT_EQ(Bytes(*session_), before);
}

}  // namespace
}  // namespace host
