// The view of a document without a toolkit: where things are, what a pointer does, and what is drawn again.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <numbers>
#include <random>

#include "host/bundles/BundleSet.h"
#include "host/model/ObjectProperties.h"
#include "host/view/PointerTool.h"
#include "host/view/TileCache.h"
#include "kit/values/AKValueHelpers.h"
#include "tests/host/ResultTestSupport.h"

namespace host {
namespace {

constexpr double kRight = std::numbers::pi / 2;

TEST(ViewTransformTest, ZoomAndFit_KeepTheFixedPoint) {
  ViewTransform view;
  view.SetDeviceScale(2);
  view.SetOffset(-75, -901);
  for (double zoom : {0.5, 3.0, 17.25, 1e9, 0.0}) {
    const AGPoint before = view.ToMap({130, 77});
    view.SetZoom(zoom, {130, 77});
    const AGPoint after = view.ToView(before);
    EXPECT_NEAR(after.x, 130, 0.51) << zoom;
    EXPECT_NEAR(after.y, 77, 0.51) << zoom;
    EXPECT_GE(view.Zoom(), ViewTransform::kMinZoom);
    EXPECT_LE(view.Zoom(), ViewTransform::kMaxZoom);
  }
  view.Fit({100, 50, 500, 250}, {1000, 600}, 50);
  const AGRect shown = view.Shown({1000, 600});
  EXPECT_NEAR((shown.x0 + shown.x1) / 2, 300, 0.5);
  EXPECT_NEAR((shown.y0 + shown.y1) / 2, 150, 0.5);
  EXPECT_NEAR(view.Zoom(), 2.25, 1e-12);
  const double zoom = view.Zoom();
  view.Fit({0, 0, 0, 10}, {1000, 600}, 0);
  EXPECT_EQ(view.Zoom(), zoom);
}

class CanvasTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(bundles_.Load(AK_BUNDLE));
    session_ = std::make_unique<DocumentSession>(std::make_unique<Document>(AGSize{400, 300}));
    // Pixels of the view are map units with y turned: map (0, 300) is at the upper left corner.
    view_.SetOffset(0, -300);
    tool_ = std::make_unique<PointerTool>(session_.get(), &view_);
  }
  void TearDown() override {
    tool_.reset();
    session_.reset();
  }

  ObjectID AddRect(const AGRect& bounds, double angle = 0) {
    return Taken(session_->Objects().Add(AKClassID("stdRect"), "", {bounds, angle}));
  }
  AGPoint Seen(double x, double y) const { return view_.ToView({x, y}); }
  void Drag(const AGPoint& from, const AGPoint& to, PointerModifiers modifiers = {}) {
    tool_->Press(from, modifiers);
    for (int i = 1; i <= 5; ++i) {
      tool_->Motion({from.x + (to.x - from.x) * i / 5, from.y + (to.y - from.y) * i / 5}, modifiers);
    }
    EXPECT_EQ(Said(tool_->Release(to, modifiers)), "");
  }
  void DragHandle(Handle handle, const AGPoint& to, PointerModifiers modifiers = {}) {
    Drag(SelectionFrame::Of(*session_).PositionOf(handle, view_), to, modifiers);
  }
  const DocumentObject& Object(ObjectID id) const { return *session_->Doc().Find(id); }
  static void ExpectRect(const AGRect& rect, const AGRect& expected) {
    const double sides[][2] = {
        {rect.x0, expected.x0}, {rect.y0, expected.y0}, {rect.x1, expected.x1}, {rect.y1, expected.y1}};
    for (const auto& side : sides) EXPECT_NEAR(side[0], side[1], 1e-9);
  }
  static double RoundingOf(const DocumentObject& object) {
    double rounding = -1;
    AKValueGetasFloat64(PropertiesOf(object).GetValue("Rounding"), &rounding, false);
    return rounding;
  }

  BundleSet bundles_{""};
  std::unique_ptr<DocumentSession> session_;
  ViewTransform view_;
  std::unique_ptr<PointerTool> tool_;
};

TEST_F(CanvasTest, Move_OneStepForADrag) {
  const ObjectID id = AddRect({100, 100, 200, 150});
  Drag(Seen(150, 120), Seen(180, 90));
  ExpectRect(Object(id).bounds, {130, 70, 230, 120});
  EXPECT_EQ(session_->Steps().Known().Count(), 2U);
  Drag(Seen(150, 100), Seen(190, 105), {.shift = true});
  ExpectRect(Object(id).bounds, {170, 70, 270, 120});
  tool_->SetSnap({25});
  Drag(Seen(200, 100), Seen(209, 117));
  ExpectRect(Object(id).bounds, {175, 75, 275, 125});
  Drag(Seen(200, 100), Seen(209, 117), {.alt = true});
  ExpectRect(Object(id).bounds, {184, 92, 284, 142});
  EXPECT_TRUE(session_->Steps().Undo() && session_->Steps().Undo() && session_->Steps().Undo() &&
              session_->Steps().Undo());
  ExpectRect(Object(id).bounds, {100, 100, 200, 150});

  tool_->Press(Seen(150, 120), {});
  tool_->Motion(Seen(250, 220), {});
  EXPECT_TRUE(tool_->IsDragging());
  EXPECT_TRUE(tool_->Cancel());
  ExpectRect(Object(id).bounds, {100, 100, 200, 150});
  EXPECT_FALSE(session_->Steps().IsOpen());
}

// Whatever comes first lets the drag end where it is; the rest of it, up to the release, does nothing.
TEST_F(CanvasTest, Finish_EndsTheDragWhereItIs) {
  const AGRect moved{130, 70, 230, 120};
  const struct {
    const char* what;
    std::function<void(ObjectID)> act;
    std::size_t left;  // objects
    AGRect first;
  } cases[] = {
      {"delete", [this](ObjectID id) { std::ignore = session_->Objects().Delete({id}); }, 1, {300, 200, 350, 250}},
      {"undo", [this](ObjectID) { session_->Steps().Undo(); }, 2, {100, 100, 200, 150}},
      {"duplicate", [this](ObjectID id) { std::ignore = session_->Clipboard().Duplicate({id}, 10, 10); }, 3, moved},
      {"select none", [this](ObjectID) { session_->Selection().SelectNone(); }, 2, moved},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.what);
    const ObjectID id = AddRect({100, 100, 200, 150});
    AddRect({300, 200, 350, 250});
    session_->Selection().Select({id});
    tool_->Press(Seen(150, 120), {});
    tool_->Motion(Seen(180, 90), {});
    EXPECT_EQ(Said(tool_->Finish()), "");
    EXPECT_FALSE(session_->Steps().IsOpen());
    one.act(id);
    const std::size_t steps = session_->Steps().Known().Count();
    tool_->Motion(Seen(300, 200), {});
    EXPECT_EQ(Said(tool_->Release(Seen(310, 210), {})), "");
    EXPECT_EQ(session_->Steps().Known().Count(), steps);
    ASSERT_EQ(session_->Doc().ObjectCount(), one.left);
    ExpectRect(session_->Doc().ObjectAt(0).bounds, one.first);
    session_->Selection().SelectAll();
    ASSERT_TRUE(session_->Objects().Delete(session_->Selection().IDs()));
  }
}

// Somebody who does not ask the tool to finish: at any point of any drag, and nothing of it is lost or taken back.
TEST_F(CanvasTest, ChangesByOthersDuringADrag_StayAndEndIt) {
  std::mt19937 random(11);
  const auto upTo = [&random](unsigned int most) { return random() % (most + 1); };
  for (int round = 0; round < 300; ++round) {
    const ObjectID id = AddRect({100, 100, 200, 150});
    const ObjectID other = AddRect({210, 110, 290, 190});
    session_->Selection().Select({id});
    const SelectionFrame frame = SelectionFrame::Of(*session_);
    const Handle handles[] = {Handle::kNone, Handle::kRight, Handle::kRotate, Handle::kFirstProperty};
    const Handle handle = handles[upTo(3)];
    tool_->Press(handle == Handle::kNone ? Seen(150, 115) : frame.PositionOf(handle, view_), {});
    const auto wander = [&] { tool_->Motion(Seen(100 + upTo(150), 100 + upTo(100)), {}); };
    for (unsigned int i = upTo(3); i > 0; --i) wander();
    const unsigned int kind = upTo(3);
    if (kind == 0) std::ignore = session_->Objects().Delete({id});
    if (kind == 1) std::ignore = session_->Objects().Move({other}, 7, 0);
    if (kind == 2) session_->Selection().Select({other});
    if (kind == 3) std::ignore = session_->Layers().SetLocked(session_->Layers().Active(), true);
    const AGRect before = kind == 0 ? AGRect() : Object(id).bounds;
    if (upTo(1) == 1) wander();
    std::ignore = upTo(4) == 0 ? Result<>() : tool_->Release(Seen(260, 170), {});
    tool_->Cancel();
    EXPECT_FALSE(session_->Steps().IsOpen()) << "seed 11, round " << round;
    EXPECT_EQ(session_->Doc().Find(id) == nullptr, kind == 0) << "seed 11, round " << round;
    if (kind != 0) ExpectRect(Object(id).bounds, before);
    EXPECT_EQ(Object(other).bounds.x0, kind == 1 ? 217 : 210) << "seed 11, round " << round;
    std::ignore = session_->Layers().SetLocked(session_->Layers().Active(), false);
    session_->Selection().SelectAll();
    ASSERT_TRUE(session_->Objects().Delete(session_->Selection().IDs()));
  }
}

TEST_F(CanvasTest, Stretch_KeepsTheOtherSide) {
  const ObjectID id = AddRect({100, 100, 200, 150});
  DragHandle(Handle::kRight, Seen(260, 10));
  ExpectRect(Object(id).bounds, {100, 100, 260, 150});
  DragHandle(Handle::kLowerLeft, Seen(60, 90));
  ExpectRect(Object(id).bounds, {60, 90, 260, 150});
  DragHandle(Handle::kUpperRight, Seen(360, 160), {.shift = true});
  ExpectRect(Object(id).bounds, {60, 90, 360, 180});
  DragHandle(Handle::kLeft, Seen(100, 0), {.control = true});
  ExpectRect(Object(id).bounds, {100, 90, 320, 180});
  DragHandle(Handle::kTop, Seen(0, -500));  // through the other side: it stops before
  ExpectRect(Object(id).bounds, {100, 90, 320, 91});
}

TEST_F(CanvasTest, StretchOfATurnedObject_KeepsTheOppositeCornerWhereItIsSeen) {
  std::mt19937 random(20);
  std::uniform_real_distribution<double> angles(-3, 3);
  std::uniform_real_distribution<double> places(20, 280);
  for (int i = 0; i < 50; ++i) {
    const ObjectID id = AddRect({100, 100, 200, 150}, angles(random));
    const AGPoint fixed = SelectionFrame::Of(*session_).PositionOf(Handle::kLowerLeft, view_);
    const AGPoint target{places(random), places(random)};
    DragHandle(Handle::kUpperRight, target);
    const SelectionFrame frame = SelectionFrame::Of(*session_);
    EXPECT_NEAR(frame.PositionOf(Handle::kLowerLeft, view_).x, fixed.x, 1e-6) << "seed 20, round " << i;
    EXPECT_NEAR(frame.PositionOf(Handle::kLowerLeft, view_).y, fixed.y, 1e-6);
    const AGRect& bounds = Object(id).bounds;
    if (bounds.x1 - bounds.x0 > 1.001 && bounds.y1 - bounds.y0 > 1.001) {
      EXPECT_NEAR(frame.PositionOf(Handle::kUpperRight, view_).x, target.x, 1e-6);
      EXPECT_NEAR(frame.PositionOf(Handle::kUpperRight, view_).y, target.y, 1e-6);
    }
    std::ignore = session_->Objects().Delete({id});
  }
}

TEST_F(CanvasTest, SmallObject_MovesByItsInside) {
  const ObjectID id = AddRect({100, 100, 110, 108}, 0.2);
  Drag(Seen(105, 104), Seen(125, 134));
  ExpectRect(Object(id).bounds, {120, 130, 130, 138});
  DragHandle(Handle::kUpperRight, Seen(200, 200));
  EXPECT_GT(Object(id).bounds.x1 - Object(id).bounds.x0, 50) << "its corners still stretch it";
}

TEST_F(CanvasTest, TurnAndRound_FollowThePointer) {
  const ObjectID id = AddRect({100, 100, 300, 200});
  DragHandle(Handle::kRotate, Seen(90, 150));
  EXPECT_NEAR(Object(id).angle, kRight, 1e-9);
  DragHandle(Handle::kRotate, Seen(203, 290), {.shift = true});
  EXPECT_NEAR(Object(id).angle, 0, 1e-9);
  EXPECT_NEAR(RoundingOf(Object(id)), 0, 1e-12);
  DragHandle(Handle::kFirstProperty, Seen(250, 150));
  EXPECT_NEAR(RoundingOf(Object(id)), 1, 1e-12);
  const AGPoint half = SelectionFrame::Of(*session_).PositionOf(Handle::kFirstProperty, view_);
  Drag(half, {half.x + 18, half.y - 18});
  EXPECT_NEAR(RoundingOf(Object(id)), 0.5, 1e-9);
  AGBrush brush;
  brush.SetStyleLinearGradient(kAGColorWhite, kAGColorBlack, 0.5, 0);
  ASSERT_TRUE(session_->Objects().SetBrush({id}, brush));
  EXPECT_NEAR(SelectionFrame::Of(*session_).PositionOf(Handle::kGradient, view_).x, Seen(235, 150).x, 1e-9);
  DragHandle(Handle::kGradient, Seen(200, 190));
  EXPECT_NEAR(Object(id).brush.GradientAngle(), 3 * kRight, 1e-6) << "upwards on the screen";
  brush.SetStyleRadialGradient(kAGColorWhite, kAGColorBlack, 0.5, 0.5, 0.5);
  ASSERT_TRUE(session_->Objects().SetBrush({id}, brush));
  DragHandle(Handle::kGradient, Seen(150, 175));
  const AGPoint center = SelectionFrame::Of(*session_).PositionOf(Handle::kGradient, view_);
  EXPECT_NEAR(center.x, Seen(150, 175).x, 1e-4);
  EXPECT_NEAR(center.y, Seen(150, 175).y, 1e-4);
  EXPECT_NEAR(Object(id).brush.GradientCenterX(), 0.25, 1e-6);
  EXPECT_NEAR(Object(id).brush.GradientCenterY(), 0.25, 1e-6);
}

TEST_F(CanvasTest, ClicksAndBands_Select) {
  const ObjectID a = AddRect({20, 20, 80, 80});
  const ObjectID b = AddRect({120, 20, 180, 80});
  const auto click = [this](double x, double y, PointerModifiers modifiers = {}) {
    tool_->Press(Seen(x, y), modifiers);
    std::ignore = tool_->Release(Seen(x, y), modifiers);
  };
  click(50, 40);
  EXPECT_EQ(session_->Selection().IDs(), ObjectIDs{a});
  click(150, 40, {.shift = true});
  EXPECT_EQ(session_->Selection().IDs(), (ObjectIDs{a, b}));
  click(50, 40, {.shift = true});
  EXPECT_EQ(session_->Selection().IDs(), ObjectIDs{b});
  click(300, 200);
  EXPECT_TRUE(session_->Selection().IsEmpty());
  Drag(Seen(10, 100), Seen(130, 70));
  EXPECT_EQ(session_->Selection().IDs(), (ObjectIDs{a, b}));
  EXPECT_EQ(session_->Steps().Known().Count(), 2U) << "selecting is no step";
  Drag(Seen(50, 50), Seen(60, 50));  // on one of several: all move
  ExpectRect(Object(b).bounds, {130, 20, 190, 80});
  click(60, 50);
  EXPECT_EQ(session_->Selection().IDs(), ObjectIDs{a}) << "a click on one of several takes it alone";
}

TEST_F(CanvasTest, NewObject_IsDraggedOut) {
  tool_->SetNewClass(AKClassID("stdRect"));
  Drag(Seen(200, 200), Seen(100, 150));
  tool_->SetNewClass(std::nullopt);
  ASSERT_EQ(session_->Doc().ObjectCount(), 1U);
  ExpectRect(session_->Doc().ObjectAt(0).bounds, {100, 150, 200, 200});
  EXPECT_NEAR(RoundingOf(session_->Doc().ObjectAt(0)), 0.5, 1e-12);
}

int LargestDifference(const AGBitmap& a, const AGBitmap& b) {
  const auto* first = static_cast<const unsigned char*>(a.Pixels());
  const auto* second = static_cast<const unsigned char*>(b.Pixels());
  int largest = 0;
  for (std::size_t i = 0; i < std::size_t{TileCache::kSide} * TileCache::kSide * 4; ++i) {
    largest = std::max(largest, std::abs(first[i] - second[i]));
  }
  return largest;
}

// The tile's pixels after changes are those of a tile that is drawn anew, but for the edges of turned shapes: how much
// of a pixel cairo counts as covered depends a little on where the clip cuts the shape.
TEST_F(CanvasTest, Tiles_DrawnInPartsAreAsDrawnAtOnce) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> places(-30, 330);
  ObjectIDs ids;
  for (int i = 0; i < 40; ++i) {
    const double x = places(random);
    const double y = places(random);
    ids.push_back(AddRect({x, y, x + 40, y + 30}, x));
  }
  struct Watch final : SessionObserver {
    void OnAreaChanged(const AGRect& area) override { tiles->Invalidate(area); }
    TileCache* tiles = nullptr;
  };
  TileCache tiles(&session_->Doc());
  Watch watch;
  watch.tiles = &tiles;
  session_->AddObserver(&watch);
  tiles.SetGrid({20});
  view_.SetDeviceScale(1.25);
  view_.SetZoom(1.3, {0, 0});
  const AGSize size{500, 400};
  for (int round = 0; round < 20; ++round) {
    for (TileCache::Tile* tile : tiles.Look(view_, size)) tiles.Draw(tile);
    std::ignore = session_->Objects().Move({ids[static_cast<std::size_t>(round)]}, places(random) / 10, 7);
  }
  TileCache fresh(&session_->Doc());
  fresh.SetGrid({20});
  const auto drawn = tiles.Look(view_, size);
  const auto anew = fresh.Look(view_, size);
  ASSERT_EQ(drawn.size(), anew.size());
  for (std::size_t i = 0; i < drawn.size(); ++i) {
    tiles.Draw(drawn[i]);
    fresh.Draw(anew[i]);
    ASSERT_EQ(drawn[i]->column, anew[i]->column);
    EXPECT_LE(LargestDifference(*drawn[i]->bitmap, *anew[i]->bitmap), 16)
        << "seed 7, tile " << drawn[i]->column << ", " << drawn[i]->row;
  }
  session_->RemoveObserver(&watch);
}

}  // namespace
}  // namespace host
