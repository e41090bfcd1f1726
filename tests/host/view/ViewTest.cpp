// The view of a document without a toolkit: where things are, what a pointer does, and what is drawn again.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <numbers>
#include <random>

#include "host/bundles/BundleSet.h"
#include "host/model/ObjectProperties.h"
#include "host/view/GuideTool.h"
#include "host/view/HandleKeys.h"
#include "host/view/Outlines.h"
#include "host/view/PointerTool.h"
#include "host/view/ShiftedSelection.h"
#include "host/view/TileCache.h"
#include "kit/geometry/AGAffineTransform.h"
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

TEST(ViewTransformTest, Reveal_ScrollsAsLittleAsShowsTheArea) {
  const struct {
    const char* what;
    AGRect area;  // a view of 1000 by 600 shows 0 to 1000 and -600 to 0
    double dx, dy;
  } cases[] = {{"in sight", {100, -500, 900, -100}, 0, 0},
               {"at the margin", {50, -550, 950, -50}, 0, 0},
               {"right of it", {1000, -500, 1200, -100}, 250, 0},
               {"left and above", {-200, -50, 100, 30}, -250, -80},
               {"wider than the view, which it fills", {-100, -300, 1100, -200}, 0, 0},
               {"wider and beside it", {900, -300, 2300, -200}, 1100, 0}};
  for (const auto& c : cases) {
    ViewTransform view;
    EXPECT_EQ(view.Reveal(c.area, {1000, 600}, 50), c.dx != 0 || c.dy != 0) << c.what;
    EXPECT_EQ(view.OffsetX(), c.dx) << c.what;
    EXPECT_EQ(view.OffsetY(), c.dy) << c.what;
  }
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
  // More than are changed with each motion.
  ObjectIDs SelectMany() {
    for (std::size_t i = 0; i <= PointerTool::kMostChangedLive; ++i) {
      const auto place = static_cast<double>(i % 97);
      AddRect({place / 7, place, place / 7 + 30, place + 40}, place);
    }
    session_->Selection().SelectAll();
    return session_->Selection().IDs();
  }
  std::vector<ObjectPlacement> PlacementsOf(const ObjectIDs& ids) {
    std::vector<ObjectPlacement> all;
    for (const ObjectID id : ids) all.push_back(Object(id).Placement());
    return all;
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

TEST_F(CanvasTest, AltClick_GoesDownThroughAStack) {
  const ObjectID low = AddRect({100, 100, 200, 150});
  const ObjectID middle = AddRect({110, 100, 210, 150});
  const ObjectID high = AddRect({120, 100, 220, 150});
  const ObjectID aside = AddRect({300, 100, 350, 150});
  const auto click = [this](PointerModifiers modifiers) {
    tool_->Press(Seen(150, 120), modifiers);
    EXPECT_TRUE(tool_->Release(Seen(150, 120), modifiers));
    return session_->Selection().IDs();
  };
  const ObjectIDs expected[] = {{high}, {middle}, {low}, {high}};
  for (const ObjectIDs& ids : expected) {
    const ObjectID promised = tool_->HoverAt(Seen(150, 120), {.alt = true}).object;
    EXPECT_EQ(click({.alt = true}), ids);
    EXPECT_EQ(promised, ids[0]);
  }
  EXPECT_EQ(click({.shift = true, .alt = true}), (ObjectIDs{high, middle}));
  session_->Selection().Select({low});
  EXPECT_EQ(tool_->HoverAt(Seen(150, 120), {}).object, high);
  Drag(Seen(150, 120), Seen(160, 120), {.alt = true});  // what is selected, not what lies above it
  EXPECT_EQ(Object(low).bounds.x0, 110);
  EXPECT_EQ(Object(high).bounds.x0, 120);

  // The menu is about what is selected where the pointer is, or becomes so.
  session_->Selection().Select({high, aside});
  tool_->SelectForMenu(Seen(150, 120));
  EXPECT_EQ(session_->Selection().Count(), 2U);
  tool_->SelectForMenu(Seen(112, 120));
  EXPECT_EQ(session_->Selection().IDs(), ObjectIDs{middle});
  tool_->SelectForMenu(Seen(20, 20));
  EXPECT_TRUE(session_->Selection().IsEmpty());
}

// By hand: others at 100 to 140 and 160 to 200 across, 200 to 240 up; the page is 400 by 300; a reach of 6.
TEST_F(CanvasTest, Snap_GoesToEdgesMiddlesAndEqualGaps) {
  AddRect({100, 200, 140, 240});
  AddRect({160, 200, 200, 240});
  AddRect({20, 20, 60, 50});  // hidden: nothing to go to
  ASSERT_TRUE(session_->Marks().SetHidden({session_->Doc().ObjectAt(2).id}, true));
  const ObjectID id = AddRect({300, 100, 330, 130});
  tool_->SetSize({400, 300});
  const struct {
    const char* what;
    AGPoint by;
    PointerModifiers modifiers;
    AGPoint expected;
    std::size_t lines;
  } cases[] = {{"nothing near", {-30, 10}, {}, {-30, 10}, 0},
               {"the left edge to one's right edge", {-96, 0}, {}, {-100, 0}, 1},
               {"the middle to a middle", {-137, 0}, {}, {-135, 0}, 1},
               {"the middle of the page", {-113, 37}, {}, {-115, 35}, 2},
               {"a gap like the other", {-77, 112}, {}, {-80, 110}, 3},
               {"further than it reaches", {-92, 0}, {}, {-92, 0}, 0},
               {"let go", {-96, 2}, {.alt = true}, {-96, 2}, 0},
               {"one axis", {-96, 38}, {.shift = true}, {-100, 0}, 1}};
  for (const auto& c : cases) {
    for (const bool on : {true, false}) {
      tool_->SetSnap({0, on});
      tool_->Press(Seen(310, 110), c.modifiers);
      tool_->Motion(Seen(310 + c.by.x, 110 + c.by.y), c.modifiers);
      const AGRect now = Object(id).bounds;
      EXPECT_EQ(tool_->SnapLines().size(), on ? c.lines : 0) << c.what;
      EXPECT_FALSE(tool_->DragText().empty());
      if (on) {
        EXPECT_NEAR(now.x0 - 300, c.expected.x, 1e-9) << c.what;
        EXPECT_NEAR(now.y0 - 100, c.expected.y, 1e-9) << c.what;
      }
      tool_->Cancel();
      EXPECT_TRUE(tool_->SnapLines().empty());
    }
  }
  tool_->SetSnap({0, true});
  DragHandle(Handle::kLeft, Seen(204, 110));
  ExpectRect(Object(id).bounds, {200, 100, 330, 130});
  tool_->SetNewClass(AKClassID("stdRect"));
  Drag(Seen(240, 170), Seen(203, 198));
  ExpectRect(session_->Doc().ObjectAt(4).bounds, {200, 170, 240, 200});
}

TEST_F(CanvasTest, Guides_ComeGoAndAreFittedTo) {
  GuideTool guides(&view_);
  guides.SetSession(session_.get());
  const AGSize size{400, 300};
  const auto drag = [&](const AGPoint& to, bool isFree) {
    guides.Motion({to.x / 2, to.y / 2}, size, isFree);
    guides.Motion(to, size, isFree);
    EXPECT_TRUE(guides.Release());
  };
  const auto places = [this](int axis) { return session_->Doc().Aids().Guides(axis); };
  using Places = std::vector<double>;
  guides.SetSnap({10, true, true});
  guides.PressOnRuler(1);
  drag(Seen(50, 123), true);
  EXPECT_EQ(places(1), Places{123});
  guides.PressOnRuler(0);
  drag(Seen(83, 50), false);
  EXPECT_EQ(places(0), Places{80}) << "on the grid";
  ASSERT_TRUE(guides.GuideAt(Seen(82, 10)));
  EXPECT_FALSE(guides.GuideAt(Seen(90, 10)));
  guides.Press(*guides.GuideAt(Seen(82, 10)));
  drag(Seen(197, 10), false);
  EXPECT_EQ(places(0), Places{200}) << "on the page's middle";

  // An object fits to both, with a line along each; without the rule and with alt it doesn't.
  const ObjectID id = AddRect({20, 20, 60, 60});
  tool_->SetSnap({0, false, true});
  Drag(Seen(40, 40), Seen(177, 100));
  EXPECT_EQ(Object(id).bounds, (AGRect{160, 83, 200, 123}));
  Drag(Seen(180, 103), Seen(183, 103), {.alt = true});
  EXPECT_EQ(Object(id).bounds.x0, 163);

  guides.Press({0, 200});
  drag({-5, 20}, false);
  EXPECT_TRUE(places(0).empty()) << "back on its ruler";
  session_->Steps().Undo();
  guides.Press({0, 200});
  EXPECT_TRUE(guides.Release());
  EXPECT_EQ(guides.Chosen(), (Guide{0, 200}));
  EXPECT_TRUE(guides.DeleteChosen());
  EXPECT_FALSE(guides.DeleteChosen());
  EXPECT_TRUE(places(0).empty());

  // By the keyboard: those that stand from the left, then the one that lies, and around; one that is gone is none.
  for (const double place : {90.0, 30.0}) ASSERT_TRUE(guides.Add({0, place}));
  EXPECT_EQ(guides.Chosen(), (Guide{0, 30}));
  const Guide order[] = {{0, 30}, {0, 90}, {1, 123}};
  guides.ChooseNone();
  for (std::size_t i = 0; i < 4; ++i) EXPECT_TRUE(guides.ChooseNext(false) && guides.Chosen() == order[i % 3]) << i;
  EXPECT_TRUE(guides.ChooseNext(true) && guides.Chosen() == order[2]);
  EXPECT_TRUE(guides.MoveChosen(45));
  EXPECT_EQ(places(1), Places{45});
  EXPECT_EQ(guides.Chosen(), (Guide{1, 45}));
  session_->Steps().Undo();
  EXPECT_FALSE(guides.Chosen()) << "moved back";
  EXPECT_FALSE(guides.DeleteChosen());
  EXPECT_EQ(places(1), Places{123});
  while (session_->Steps().Undo()) {
  }
  EXPECT_EQ(session_->Doc().Aids(), PageAids());
}

TEST_F(CanvasTest, ControlDrag_MovesCopies) {
  const ObjectID id = AddRect({100, 100, 200, 150});
  AddRect({300, 100, 350, 150});
  session_->Selection().SelectAll();
  Drag(Seen(150, 120), Seen(180, 90), {.control = true});
  EXPECT_EQ(session_->Doc().ObjectCount(), 4U);
  ExpectRect(Object(id).bounds, {100, 100, 200, 150});
  ExpectRect(session_->Doc().ObjectAt(2).bounds, {130, 70, 230, 120});
  ExpectRect(session_->Doc().ObjectAt(3).bounds, {330, 70, 380, 120});
  EXPECT_FALSE(session_->Selection().Contains(id));
  EXPECT_TRUE(session_->Steps().Undo());
  EXPECT_EQ(session_->Doc().ObjectCount(), 2U);
  session_->Selection().Select({id});
  tool_->Press(Seen(150, 120), {.control = true});
  tool_->Motion(Seen(250, 220), {.control = true});
  EXPECT_EQ(session_->Doc().ObjectCount(), 3U);
  EXPECT_TRUE(tool_->Cancel());
  EXPECT_EQ(session_->Doc().ObjectCount(), 2U);
  EXPECT_EQ(session_->Selection().IDs(), ObjectIDs{id});
  const ObjectIDs many = SelectMany();
  const std::size_t count = session_->Doc().ObjectCount();
  Drag(Seen(10, 30), Seen(40, 50), {.control = true});
  EXPECT_EQ(session_->Doc().ObjectCount(), 2 * count);
  EXPECT_EQ(Object(many[2]).bounds.x0, 0);
}

TEST(ViewTransformTest, EdgeSpeed_GrowsOutwards) {
  EXPECT_EQ(EdgeSpeed({100, 100}, {200, 200}), (AGPoint{0, 0}));
  EXPECT_LT(EdgeSpeed({10, 100}, {200, 200}).x, 0);
  EXPECT_LT(EdgeSpeed({-10, 100}, {200, 200}).x, EdgeSpeed({10, 100}, {200, 200}).x);
  EXPECT_GT(EdgeSpeed({100, 300}, {200, 200}).y, EdgeSpeed({100, 195}, {200, 200}).y);
}

TEST_F(CanvasTest, Groups_AreOneThingUntilTheyAreEntered) {
  const ObjectID a = AddRect({100, 100, 140, 140});
  const ObjectID b = AddRect({150, 100, 190, 140});
  const ObjectID c = AddRect({200, 100, 240, 140});
  const ObjectID lone = AddRect({300, 100, 340, 140});
  ASSERT_TRUE(session_->Marks().Group({a, b}));
  ASSERT_TRUE(session_->Marks().Group({a, b, c}));
  const auto click = [this](double x) {
    tool_->Press(Seen(x, 120), {});
    EXPECT_TRUE(tool_->Release(Seen(x, 120), {}));
  };
  const struct {
    const char* what;
    std::function<void()> act;
    ObjectIDs selected;
  } cases[] = {
      {"clicked", [&] { click(120); }, {a, b, c}},
      {"a band over a part", [&] { Drag(Seen(145, 90), Seen(170, 110)); }, {a, b, c}},
      {"entered", [&] { EXPECT_TRUE(tool_->EnterAt(Seen(120, 120))); }, {a, b}},
      {"another one in it", [&] { click(220); }, {c}},
      {"all in it", [&] { session_->Selection().SelectAll(); }, {a, b, c}},
      {"entered further", [&] { EXPECT_TRUE(tool_->EnterAt(Seen(170, 120))); }, {b}},
      {"no further", [&] { EXPECT_FALSE(tool_->EnterAt(Seen(170, 120))); }, {b}},
      {"left", [&] { EXPECT_TRUE(session_->Selection().Leave()); }, {a, b}},
      {"beside all", [&] { click(320); }, {lone}},
      {"whole again", [&] { click(120); }, {a, b, c}},
      {"entered by way of both", [&] { tool_->EnterAt(Seen(120, 120)), tool_->EnterAt(Seen(120, 120)); }, {a}},
      {"nothing", [&] { click(20); }, {}},
      {"the menu", [&] { tool_->SelectForMenu(Seen(220, 120)); }, {a, b, c}},
  };
  for (const auto& step : cases) {
    step.act();
    EXPECT_EQ(session_->Selection().IDs(), step.selected) << step.what;
  }
  EXPECT_EQ(HoverOutlines(*session_, lone).size(), 1U);
  EXPECT_TRUE(HoverOutlines(*session_, a).empty());
  EXPECT_FALSE(EnteredBox(*session_));
  Drag(Seen(120, 120), Seen(130, 120));
  EXPECT_EQ(Object(c).bounds.x0, 210);
  ASSERT_TRUE(session_->Selection().Enter(a));
  EXPECT_EQ(EnteredBox(*session_)->x1, 250);
  ASSERT_TRUE(session_->Objects().Delete({a, b, c}));
  EXPECT_TRUE(session_->Selection().Entered().empty());
}

TEST_F(CanvasTest, Outlines_OfEachOfSeveralAndOfTheHovered) {
  const ObjectID one = AddRect({100, 100, 200, 150}, 0.3);
  const ObjectID two = AddRect({300, 100, 350, 150});
  const AGRect all{0, 0, 400, 300};
  session_->Selection().Select({one});
  EXPECT_TRUE(SelectedOutlines(*session_, all).empty());
  EXPECT_TRUE(HoverOutlines(*session_, one).empty());
  EXPECT_EQ(HoverOutlines(*session_, two).size(), 1U);
  EXPECT_TRUE(HoverOutlines(*session_, kNoObjectID).empty());
  session_->Selection().SelectAll();
  EXPECT_EQ(SelectedOutlines(*session_, {0, 0, 250, 300}).size(), 1U);
  session_->Selection().SetShift(AGPoint{7, 3});
  const auto outlines = SelectedOutlines(*session_, all);
  ASSERT_EQ(outlines.size(), 2U);
  EXPECT_EQ(outlines[0], (ObjectPlacement{{107, 103, 207, 153}, 0.3}));
  SelectMany();
  EXPECT_TRUE(SelectedOutlines(*session_, all).empty());
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

// Many objects wait for the release, and then are where the same drag of the frame takes them at once.
TEST_F(CanvasTest, StretchAndTurnOfMany_AreDoneAtTheEnd) {
  DocumentSession& session = *session_;
  const ObjectIDs ids = SelectMany();
  const auto placements = [&] { return PlacementsOf(ids); };
  const std::vector<ObjectPlacement> before = placements();
  const SelectionFrame frame = SelectionFrame::Of(session);
  const ObjectPlacement from = frame.Placement();
  const std::size_t steps = session.Steps().Known().Position();
  for (const Handle handle : {Handle::kUpperRight, Handle::kRotate}) {
    for (const bool isDone : {true, false}) {
      const AGPoint start = frame.PositionOf(handle, view_);
      tool_->Press(start, {});
      for (const double part : {0.2, 3.0, 1.0}) tool_->Motion({start.x + 40 * part, start.y + 25 * part}, {});
      EXPECT_EQ(placements(), before);
      ASSERT_TRUE(tool_->FrameToCome());
      const ObjectPlacement to = *tool_->FrameToCome();
      isDone ? std::ignore = tool_->Finish() : std::ignore = tool_->Cancel();
      EXPECT_FALSE(tool_->FrameToCome());
      EXPECT_EQ(session.Steps().Known().Position(), steps + (isDone ? 1 : 0));
      if (!isDone) continue;
      const std::vector<ObjectPlacement> after = placements();
      EXPECT_NE(after, before);
      session.Steps().Undo();
      EXPECT_TRUE(handle == Handle::kRotate ? session.Objects().Rotate(ids, to.angle - from.angle, from.bounds.Center())
                                            : session.Objects().Resize(ids, from.bounds, to.bounds));
      EXPECT_EQ(placements(), after);
      session.Steps().Undo();
    }
  }
}

// Whatever a drag of many objects goes through, it changes the document once, as one move by the whole way does.
TEST_F(CanvasTest, MoveOfMany_IsShownAndDoneAtTheEnd) {
  DocumentSession& session = *session_;
  const ObjectIDs ids = SelectMany();
  const auto placements = [&] { return PlacementsOf(ids); };
  const std::vector<ObjectPlacement> before = placements();
  AGRect box;
  ASSERT_TRUE(session.Selection().GetBox(ids, &box));
  const std::size_t steps = session.Steps().Known().Position();
  tool_->SetSnap({2.5});
  const struct {
    const char* what;
    AGPoint by;  // of the drag that goes 31.3, -12.7
    PointerModifiers modifiers;
    std::function<void()> end;
    bool moves;
  } cases[] = {
      {"release",
       {31.3, -12.7},
       {.alt = true},
       [&] { std::ignore = tool_->Release(Seen(51.3, 37.3), {.alt = true}); },
       true},
      {"snapped",
       {std::floor((box.x0 + 31.3) / 2.5 + 0.5) * 2.5 - box.x0, 0},
       {.shift = true},
       [&] { std::ignore = tool_->Release(Seen(51.3, 37.3), {.shift = true}); },
       true},
      {"finish", {31.3, -12.7}, {.alt = true}, [&] { std::ignore = tool_->Finish(); }, true},
      {"escape", {31.3, -12.7}, {.alt = true}, [&] { tool_->Cancel(); }, false},
      {"another selection",
       {31.3, -12.7},
       {.alt = true},
       [&] { session.Selection().Select({ids[3]}), tool_->Motion({}, {}); },
       false},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.what);
    session.Selection().Select(ids);
    tool_->Press(Seen(20, 50), {});
    for (const double part : {0.1, 2.0, -1.0, 1.0})
      tool_->Motion(Seen(20 + 31.3 * part, 50 - 12.7 * part), one.modifiers);
    EXPECT_TRUE(tool_->IsDragging());
    EXPECT_EQ(placements(), before);
    AGRect shown = SelectionFrame::Of(session).Placement().bounds;
    ExpectRect(shown, {box.x0 + one.by.x, box.y0 + one.by.y, box.x1 + one.by.x, box.y1 + one.by.y});
    one.end();
    EXPECT_FALSE(session.Selection().Shift());
    const std::vector<ObjectPlacement> after = placements();
    EXPECT_EQ(session.Steps().Known().Position(), steps + (one.moves ? 1 : 0));
    if (one.moves) {
      session.Steps().Undo();
      EXPECT_EQ(placements(), before);
      EXPECT_TRUE(session.Objects().Move(ids, one.by.x, one.by.y));
      for (std::size_t i = 0; i < ids.size(); ++i) ExpectRect(after[i].bounds, placements()[i].bounds);
      session.Steps().Undo();
    } else {
      EXPECT_EQ(after, before);
    }
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

TEST_F(CanvasTest, HandlesByKeys_MoveAloneWhatTheyStandFor) {
  for (double angle : {0.0, 0.4, -2.0}) {
    for (int i = static_cast<int>(Handle::kLowerLeft); i <= static_cast<int>(Handle::kLeft); ++i) {
      const auto handle = static_cast<Handle>(i);
      const auto opposite = static_cast<Handle>((i - 1 + 4) % 8 + 1);  // they go round
      const ObjectID id = AddRect({50, 60, 150, 220}, angle);
      session_->Selection().Select({id});
      const auto place = [&](Handle of) { return view_.ToMap(SelectionFrame::Of(*session_).PositionOf(of, view_)); };
      const AGPoint from = place(handle);
      const AGPoint kept = place(opposite);
      const HandleSides sides = SidesOf(handle);
      // Outwards along the frame's own diagonal or axis, so that the handle goes exactly where the arrow points.
      const AGPoint by = AGAffineTransformRotation(angle).Apply({7.0 * sides.x, 7.0 * sides.y});
      ASSERT_TRUE(MoveHandle(session_.get(), handle, by));
      EXPECT_NEAR(place(handle).x, from.x + by.x, 1e-6) << i << " at " << angle;
      EXPECT_NEAR(place(handle).y, from.y + by.y, 1e-6) << i << " at " << angle;
      EXPECT_NEAR(place(opposite).x, kept.x, 1e-6) << i << " at " << angle;
      EXPECT_NEAR(place(opposite).y, kept.y, 1e-6) << i << " at " << angle;
      // Never turned inside out, however far.
      ASSERT_TRUE(MoveHandle(session_.get(), handle, by * -1000.0));
      EXPECT_GT(Object(id).bounds.Width(), 0.9);
      EXPECT_GT(Object(id).bounds.Height(), 0.9);
    }
  }
}

// Whatever way an object is turned and mirrored, the handle goes where the arrow points, and is within its range.
TEST_F(CanvasTest, InnerHandlesByKeys_GoWhereTheArrowPoints) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const auto number = [&random](double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(random);
  };
  for (int i = 0; i < 60; ++i) {
    const ObjectID id = AddRect({100, 80, 300, 200}, number(-3, 3));
    session_->Selection().Select({id});
    for (const Axis axis : {Axis::kHorizontal, Axis::kVertical}) {
      ASSERT_TRUE(random() % 2 == 0 || session_->Looks().Flip({id}, axis));
    }
    AGBrush brush(Object(id).brush);
    const bool isRadial = i % 3 == 0;
    isRadial ? brush.SetStyleRadialGradient(kAGColorBlack, kAGColorWhite, 0.5, 0.5, 0.5)
             : brush.SetStyleLinearGradient(kAGColorBlack, kAGColorWhite, number(-3, 3), 0.5);
    ASSERT_TRUE(session_->Objects().SetBrush({id}, brush));
    ASSERT_TRUE(session_->Objects().SetProperties({id}, {{"Rounding", "0.5"}}));
    const auto place = [&](Handle of) { return view_.ToMap(SelectionFrame::Of(*session_).PositionOf(of, view_)); };
    const AGPoint middle = Object(id).bounds.Center();
    for (const Handle handle : {Handle::kGradient, HandleOfProperty(0)}) {
      const double way = number(-3, 3);
      const AGPoint by{3 * std::cos(way), 3 * std::sin(way)};
      const AGPoint from = place(handle);
      ASSERT_TRUE(MoveHandle(session_.get(), handle, by));
      const AGPoint moved = place(handle) - from;
      if (handle == Handle::kGradient && isRadial) {
        EXPECT_NEAR(moved.x, by.x, 1e-3);  // a brush has floats
        EXPECT_NEAR(moved.y, by.y, 1e-3);
      } else if (handle == Handle::kGradient) {
        const AGPoint arm = from - middle;
        EXPECT_LT((arm.x * moved.y - arm.y * moved.x) * (by.x - by.y), 0) << "right and down are clockwise";
      } else {
        EXPECT_GT(moved.x * by.x + moved.y * by.y, 0);
      }
    }
    ASSERT_TRUE(MoveHandle(session_.get(), Handle::kGradient, {1e4, 1e4}));
    ASSERT_TRUE(MoveHandle(session_.get(), HandleOfProperty(0), {-1e4, 1e3}));
    const AGBrush& far = Object(id).brush;
    EXPECT_TRUE(far.GradientCenterX() >= 0 && far.GradientCenterX() <= 1 && far.GradientCenterY() >= 0 &&
                far.GradientCenterY() <= 1);
    EXPECT_TRUE(RoundingOf(Object(id)) == 0 || RoundingOf(Object(id)) == 1);
    ASSERT_TRUE(session_->Objects().Delete({id}));
  }
}

// Several objects are turned and stretched by their frame, and the keys go round the handles that there are.
TEST_F(CanvasTest, HandlesByKeys_OfSeveral) {
  HandleKeys keys;
  EXPECT_FALSE(keys.TakeNext(SelectionFrame::Of(*session_), view_, false));
  EXPECT_TRUE(MoveHandle(session_.get(), Handle::kLeft, {1, 1}));  // of nothing
  const ObjectIDs both = {AddRect({0, 0, 100, 100}), AddRect({100, 100, 200, 200})};
  session_->Selection().Select(both);
  const SelectionFrame frame = SelectionFrame::Of(*session_);
  for (const bool backwards : {false, true}) {
    const std::vector<Handle> handles = frame.Handles(view_);
    ASSERT_EQ(handles.size(), 9U);
    for (std::size_t i = 0; i <= handles.size(); ++i) {
      ASSERT_TRUE(keys.TakeNext(frame, view_, backwards));
      const std::size_t at = i % handles.size();
      EXPECT_EQ(keys.Taken(frame, view_), handles[backwards ? handles.size() - 1 - at : at]);
      EXPECT_NE(NameOf(keys.Taken(frame, view_)), NameOf(Handle::kNone));
    }
    EXPECT_TRUE(keys.LetGo());
  }
  EXPECT_FALSE(keys.LetGo());
  ASSERT_TRUE(MoveHandle(session_.get(), Handle::kUpperRight, {200, -100}));
  ExpectRect(Object(both[0]).bounds, {0, 0, 200, 50});
  ExpectRect(Object(both[1]).bounds, {200, 50, 400, 100});
  ASSERT_TRUE(MoveHandle(session_.get(), Handle::kRotate, {90, 0}));  // degrees, clockwise, about (200, 50)
  ExpectRect(Object(both[1]).bounds, {125, -75, 325, -25});
  EXPECT_NEAR(Object(both[1]).angle, -kRight, 1e-9);
  for (const Handle single : {Handle::kGradient, HandleOfProperty(0)}) {
    EXPECT_TRUE(MoveHandle(session_.get(), single, {5, 5}));
  }
  EXPECT_EQ(session_->Steps().Known().Count(), 4U);
}

TEST_F(CanvasTest, DragText_AndCursor_SayWhatTheDragDoes) {
  const ObjectID id = AddRect({50, 60, 150, 160});
  EXPECT_EQ(tool_->HoverAt(Seen(100, 110), {}).object, id);
  EXPECT_EQ(tool_->HoverAt(Seen(300, 20), {}).cursor, PointerTool::Cursor::kArrow);
  session_->Selection().Select({id});
  const struct {
    AGPoint from, to;  // of the map
    PointerTool::Cursor cursor;
    const char* text;
  } cases[] = {{{100, 110}, {107, 105}, PointerTool::Cursor::kMove, "57.0, 55.0"},
               {{150, 110}, {170, 110}, PointerTool::Cursor::kEastWest, "120.0 × 100.0"},
               {{100, 60}, {100, 50}, PointerTool::Cursor::kNorthSouth, "100.0 × 110.0"},
               {{150, 160}, {160, 190}, PointerTool::Cursor::kRising, "110.0 × 130.0"},
               {{50, 160}, {40, 190}, PointerTool::Cursor::kFalling, "110.0 × 130.0"},
               {{100, 186}, {176, 110}, PointerTool::Cursor::kRotate, "-90.0°"},
               {{300, 20}, {320, 40}, PointerTool::Cursor::kArrow, ""}};
  for (const auto& [from, to, cursor, text] : cases) {
    session_->Selection().Select({id});
    EXPECT_EQ(tool_->HoverAt(Seen(from.x, from.y), {}).cursor, cursor) << text;
    tool_->Press(Seen(from.x, from.y), {});
    tool_->Motion(Seen(to.x, to.y), {});
    EXPECT_EQ(tool_->DragText(), text);
    EXPECT_EQ(tool_->Band().has_value(), *text == '\0') << text;
    EXPECT_TRUE(tool_->Cancel());
    EXPECT_EQ(tool_->DragText(), "");
    ExpectRect(Object(id).bounds, {50, 60, 150, 160});
  }
  // A turned frame has turned arrows.
  ASSERT_TRUE(session_->Objects().SetAngle({id}, kRight / 2));
  session_->Selection().Select({id});
  const AGPoint corner = SelectionFrame::Of(*session_).PositionOf(Handle::kUpperRight, view_);
  EXPECT_EQ(tool_->HoverAt(corner, {}).cursor, PointerTool::Cursor::kNorthSouth);
  // Shift adds what a band takes, and makes squares of what is drawn.
  const ObjectID other = AddRect({300, 100, 310, 110});
  session_->Selection().Select({id});
  Drag(Seen(290, 90), Seen(320, 120), {.shift = true});
  EXPECT_EQ(session_->Selection().IDs(), (ObjectIDs{id, other}));
  tool_->SetNewClass(AKClassID("stdRect"));
  EXPECT_EQ(tool_->HoverAt(Seen(5, 5), {}).cursor, PointerTool::Cursor::kCross);
  Drag(Seen(200, 200), Seen(230, 150), {.shift = true});
  ExpectRect(Object(session_->Selection().IDs()[0]).bounds, {200, 150, 250, 200});
}

// Each by the keyboard alone is seen: none lies exactly on another one.
TEST_F(CanvasTest, MadeInTheMiddle_AreAllSeen) {
  EXPECT_TRUE(tool_->MakeInTheMiddle());
  EXPECT_EQ(session_->Doc().ObjectCount(), 0U);
  tool_->SetSize({400, 300});
  for (std::size_t i = 0; i < 4; ++i) {
    tool_->SetNewClass(AKClassID("stdRect"));
    EXPECT_EQ(Said(tool_->MakeInTheMiddle()), "");
    ASSERT_EQ(session_->Doc().ObjectCount(), i + 1);
    const AGRect bounds = session_->Doc().ObjectAt(i).bounds;
    EXPECT_TRUE(i > 0 || bounds.Center() == (AGPoint{200, 150}));
    for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(session_->Doc().ObjectAt(k).bounds == bounds);
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

// A part with thousands of objects is drawn in bands: none draws more than a few hundred of them, and together they are
// the picture that is drawn at once.
TEST_F(CanvasTest, DenseTiles_AreDrawnInBands) {
  for (int i = 0; i < 5000; ++i) {
    const double x = i % 100 * 2.5;
    const double y = i / 100 * 5;
    AddRect({x, y, x + 2, y + 4}, i % 2 * 0.3);
  }
  TileCache tiles(&session_->Doc());
  view_.SetOffset(0, -256);
  std::vector<TileCache::Tile*> seen = tiles.Look(view_, {256, 256});
  ASSERT_EQ(seen.size(), 1U);
  int bands = 0;
  while (!tiles.DrawWithin(std::chrono::microseconds(0), seen)) ++bands;
  EXPECT_GE(bands, 4);
  EXPECT_LE(bands, 40);
  AGBitmap whole(AGSize{256, 256}, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  std::memset(whole.Pixels(), 255, whole.ByteCount());  // paper
  DrawObjects(session_->Doc(), whole.GetContextOfBitmap(), 1);
  EXPECT_LE(LargestDifference(*seen[0]->bitmap, whole), 16);
}

// While a selection is shown shifted, its picture over that of the rest is the document as it will be, where the
// selection lies in front; and so it stays until the document's own tiles are drawn.
TEST_F(CanvasTest, ShiftedSelection_LooksLikeTheMovedDocument) {
  const ObjectID rest = AddRect({40, 40, 140, 100}, 0.4);
  const ObjectID moved = AddRect({100, 60, 220, 130}, 0.2);
  TileCache tiles(&session_->Doc());
  ShiftedSelection shifted;
  view_.SetOffset(0, -256);
  const AGSize size{256, 256};
  const std::chrono::seconds enough(60);
  const auto draw = [&] { EXPECT_TRUE(tiles.DrawWithin(enough, tiles.Look(view_, size))); };
  draw();
  TileCache::Tile& tile = *tiles.Find(0, -1);
  session_->Selection().Select({moved});
  EXPECT_EQ(shifted.Beneath(tile), nullptr);
  session_->Selection().SetShift(AGPoint{-30, 20});
  shifted.Follow(*session_);
  EXPECT_TRUE(shifted.Covers(tile));
  EXPECT_EQ(shifted.Beneath(tile), nullptr) << "what was there is seen until there is something else";
  EXPECT_TRUE(shifted.DrawWithin(enough, view_, size));
  ASSERT_NE(shifted.Beneath(tile), nullptr);
  AGBitmap composed(AGSize{256, 256}, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  std::memcpy(composed.Pixels(), shifted.Beneath(tile)->bitmap->Pixels(), composed.ByteCount());
  const ViewTransform aside = shifted.ShiftedView(view_);
  auto* const to = static_cast<unsigned char*>(composed.Pixels());
  for (const TileCache::Tile* above : shifted.Above(view_, size)) {
    const auto* from = static_cast<const unsigned char*>(above->bitmap->Pixels());
    for (std::int64_t y = 0; y < TileCache::kSide; ++y) {
      for (std::int64_t x = 0; x < TileCache::kSide; ++x) {
        const std::int64_t toX = x + above->column * TileCache::kSide - aside.OffsetX();
        const std::int64_t toY = y + above->row * TileCache::kSide - aside.OffsetY();
        if (toX < 0 || toY < 0 || toX >= TileCache::kSide || toY >= TileCache::kSide) continue;
        for (int c = 0; c < 4; ++c) {  // premultiplied
          unsigned char& pixel = to[(toY * TileCache::kSide + toX) * 4 + c];
          const unsigned char* over = from + (y * TileCache::kSide + x) * 4;
          pixel = static_cast<unsigned char>(over[c] + (pixel * (255 - over[3]) + 127) / 255);
        }
      }
    }
  }
  ASSERT_TRUE(session_->Objects().Move({moved}, -30, 20));
  tiles.InvalidateAll();
  session_->Selection().SetShift(std::nullopt);
  shifted.Follow(*session_);
  EXPECT_NE(shifted.Beneath(tile), nullptr);
  draw();
  EXPECT_FALSE(shifted.Covers(tile));
  EXPECT_LE(LargestDifference(*tile.bitmap, composed), 2);
  EXPECT_EQ(Object(rest).bounds.x0, 40);
}

}  // namespace
}  // namespace host
