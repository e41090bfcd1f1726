// Editing: every edit can be undone and done again to the byte, and views are told where to draw.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <random>

#include "CoreGraphics/CGContext.h"
#include "host/model/ObjectProperties.h"
#include "host/panels/Inspector.h"
#include "host/pictures/HitTest.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

class DocumentSessionTest : public SessionFixture {};

// One random edit through the session's own methods; what the state does not allow is refused and changes nothing.
class RandomEditor {
 public:
  RandomEditor(DocumentSession* session, unsigned int seed) : session_(*session), random_(seed) {}

  unsigned int Pick(std::size_t count) { return static_cast<unsigned int>(random_() % count); }
  double Number(double low, double high) { return low + (high - low) * (random_() % 10001) / 10000.0; }

  ObjectIDs Some() {
    ObjectIDs ids;
    const Document& document = session_.Doc();
    for (unsigned int i = Pick(4); i > 0 && document.ObjectCount() != 0; --i) {
      ids.push_back(document.ObjectAt(Pick(document.ObjectCount())).id);
    }
    return ids;
  }

  LayerID AnyLayer() { return session_.Doc().Layers()[Pick(session_.Doc().Layers().size())]->id; }

  void Edit() {
    const ObjectIDs ids = Some();
    AGBrush brush(3, {1, 2, 3, static_cast<unsigned char>(Pick(256))}, {200, 1, 1});
    AGPen pen;
    pen.SetStyleSolid({9, 9, 9}, Number(0, 20));
    const double x = Number(-50, 50);
    const std::function<void()> edits[] = {
        [&] {
          std::ignore = session_.Objects().Add(AKClassID("stdRect"), "-default", {{x, x, x + 30, x + 20}, x});
        },
        [&] {
          std::ignore = session_.Objects().Add(AKClassID("stdRect"), "", {{x, 0, 40, 10}, 0});
        },
        [&] { std::ignore = session_.Objects().Delete(ids); },
        [&] { std::ignore = session_.Objects().Move(ids, x, -x); },
        [&] {
          std::ignore = session_.Objects().Resize(ids, {0, 0, 10, 10}, {x, 0, x + 20, 5});
        },
        [&] { std::ignore = session_.Objects().Rotate(ids, x); },
        [&] { std::ignore = session_.Objects().SetBrush(ids, brush); },
        [&] { std::ignore = session_.Objects().SetPen(ids, pen); },
        [&] {
          const std::vector<double> dashes(2 * Pick(2), 1.5);
          std::ignore = session_.Objects().SetStyle(ids, {brush, pen, Number(0, 1), dashes, {}, {}, {}});
        },
        [&] {
          std::ignore = session_.Objects().SetProperties(ids, {{"Rounding", std::to_string(x / 50)}, {"Angle", "30"}});
        },
        [&] {
          std::ignore = session_.Objects().SetProperties(ids, {{"Rounding", "0.9"}, {"Bounds", "wrong"}});
        },
        [&] { std::ignore = session_.Arrangement().ChangeOrder(ids, static_cast<OrderChange>(Pick(4))); },
        [&] {
          std::ignore =
              session_.Arrangement().Align(ids, static_cast<Alignment>(Pick(6)), static_cast<AlignTo>(Pick(2)));
        },
        [&] { std::ignore = session_.Arrangement().Distribute(ids, static_cast<Axis>(Pick(2))); },
        [&] { std::ignore = session_.Clipboard().Duplicate(ids, 5, 5); },
        [&] { std::ignore = session_.Clipboard().Cut(ids, &clipboard_); },
        [&] { std::ignore = session_.Clipboard().Paste(clipboard_, 1, 1); },
        [&] { session_.Layers().Add(Pick(2) == 0 ? "" : "Ebene", Pick(3)); },
        [&] { std::ignore = session_.Layers().Remove(AnyLayer()); },
        [&] { std::ignore = session_.Layers().SetVisible(AnyLayer(), Pick(4) != 0); },
        [&] { std::ignore = session_.Layers().SetLocked(AnyLayer(), Pick(4) == 0); },
        [&] { std::ignore = session_.Layers().SetName(AnyLayer(), "Name " + std::to_string(Pick(9))); },
        [&] { std::ignore = session_.Layers().Move(AnyLayer(), Pick(4)); },
        [&] { std::ignore = session_.Layers().MoveObjects(ids, AnyLayer()); },
        [&] {
          std::ignore = session_.SetPage({Number(1, 500), 100});
        },
        [&] { session_.Layers().SetActive(AnyLayer()); },
        [&] { std::ignore = session_.Marks().SetHidden(ids, Pick(3) == 0); },
        [&] { std::ignore = session_.Marks().SetLocked(ids, Pick(3) == 0); },
        [&] { std::ignore = session_.Marks().Group(ids); },
        [&] { std::ignore = session_.Marks().Group(session_.Selection().IDs()); },
        [&] { std::ignore = session_.Marks().Ungroup(session_.Selection().IDs()); },
        [&] { std::ignore = session_.Looks().SetOpacity(ids, Number(-0.2, 1.2)); },
        [&] {
          std::ignore = session_.Looks().SetDashes(ids, {x, Pick(2) * x});
        },
        [&] { std::ignore = session_.Looks().Flip(ids, static_cast<Axis>(Pick(2))); },
        [&] {
          std::ignore = session_.SetAids({kLengthUnits[Pick(5)], Number(0, 20), {x}, {}}, "Aids");
        },
        [&] { session_.Selection().SelectAll(); },
        [&] {
          if (!ids.empty()) session_.Selection().Enter(ids[0]);
        },
        [&] { Slide(ids); },
    };
    edits[Pick(std::size(edits))]();
  }

 private:
  // A slide of the inspector, or one that is cancelled.
  void Slide(const ObjectIDs& ids) {
    Inspector inspector;
    if (!inspector.Open(&session_, ids)) return;
    session_.Steps().Begin("Slide");
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(inspector.Change(2, Number(0, 1), nullptr));
    Pick(3) == 0 ? session_.Steps().Cancel() : static_cast<void>(session_.Steps().End());
  }

  DocumentSession& session_;
  std::mt19937 random_;
  std::string clipboard_;
};

// The objects of a group stand together in one layer, and groups lie within each other.
void ExpectSoundGroups(const Document& document) {
  std::map<GroupID, std::vector<GroupID>> around;
  for (const Layer* layer : document.Layers()) {
    std::vector<GroupID> former;
    layer->objects.ForEach([&](const DocumentObject& object) {
      const std::vector<GroupID>& path = object.marks.groups;
      for (std::size_t depth = 0; depth < path.size(); ++depth) {
        const std::vector<GroupID> outer(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(depth));
        const auto [known, isNew] = around.try_emplace(path[depth], outer);
        ASSERT_EQ(known->second, outer);
        ASSERT_TRUE(isNew || std::ranges::count(former, path[depth]) == 1) << "a group is torn";
        ASSERT_TRUE(document.Groups().Members(path[depth]).contains(object.id));
      }
      former = path;
    });
  }
}

// The states after each step are kept; undo, redo and jumps must lead to exactly those bytes.
TEST_F(DocumentSessionTest, RandomEdits_UndoAndRedo_GiveEveryStateBack) {
  const unsigned int seed = testing::UnitTest::GetInstance()->random_seed() + 20261;
  for (unsigned int round = 0; round < 12; ++round) {
    SCOPED_TRACE("seed " + std::to_string(seed + round));
    DocumentSession session(MakeDocument(6));
    std::vector<std::string> states = {Bytes(session)};
    AddPlaceholder(&session);
    states.push_back(Bytes(session));
    RandomEditor editor(&session, seed + round);
    for (int i = 0; i < 300; ++i) {
      editor.Edit();
      const History& steps = session.Steps().Known();
      ASSERT_LE(steps.Position(), states.size());
      if (steps.Position() == states.size()) {
        states.push_back(Bytes(session));
      } else {
        ASSERT_EQ(Bytes(session), states.back()) << "an edit without a step changed something";
      }
      if (editor.Pick(12) == 0) {
        session.Steps().GoTo(editor.Pick(states.size()));
        ASSERT_EQ(Bytes(session), states[session.Steps().Known().Position()]);
        states.resize(session.Steps().Known().Position() + 1);
        AddOne(&session);
        states.push_back(Bytes(session));
      }
      ExpectSoundGroups(session.Doc());
      for (const ObjectID id : session.Selection().IDs()) ASSERT_TRUE(session.Selection().IsEditable(id));
    }
    while (session.Steps().Undo()) ASSERT_EQ(Bytes(session), states[session.Steps().Known().Position()]);
    EXPECT_EQ(session.Steps().Known().Position(), 0U);
    while (session.Steps().Redo()) ASSERT_EQ(Bytes(session), states[session.Steps().Known().Position()]);
    EXPECT_EQ(session.Steps().Known().Position() + 1, states.size());
  }
}

TEST_F(DocumentSessionTest, Groups_KeepTogether) {
  DocumentSession session(MakeDocument(6));
  ObjectIDs all;
  for (std::size_t i = 0; i < 6; ++i) all.push_back(ID(session, i));
  const LayerID second = session.Layers().Add("");
  SessionMarks& marks = session.Marks();
  const auto order = [&](ObjectIDs ids, OrderChange change) { return session.Arrangement().ChangeOrder(ids, change); };
  const ObjectIDs pair{all[1], all[3]};
  const struct {
    const char* what;
    std::function<Result<>()> act;
    const char* expected;  // the objects by their first places, with groups in parentheses
  } cases[] = {
      {"grouped", [&] { return marks.Group(pair); }, "02(13)45"},
      {"forward", [&] { return order(pair, OrderChange::kForward); }, "024(13)5"},
      {"past one", [&] { return order({all[2]}, OrderChange::kForward); }, "042(13)5"},
      {"past a group", [&] { return order({all[2]}, OrderChange::kForward); }, "04(13)25"},
      {"to the back", [&] { return order(pair, OrderChange::kToBack); }, "(13)0425"},
      {"past a group backwards", [&] { return order({all[0]}, OrderChange::kBackward); }, "0(13)425"},
      {"within its group", [&] { return order({all[1]}, OrderChange::kForward); }, "0(31)425"},
      {"no further", [&] { return order({all[1]}, OrderChange::kToFront); }, "0(31)425"},
      {"nested",
       [&] {
         return marks.Group({all[3], all[1], all[2]});
       },
       "04((31)2)5"},
      {"part of a group with another",
       [&] {
         return marks.Group({all[2], all[5]});
       },
       "04((31))(25)"},
      {"apart", [&] { return marks.Ungroup(all); }, "04(31)25"},
      {"copied",
       [&] {
         return session.Clipboard().Duplicate({all[3], all[1], all[5]}, 0, 0);
       },
       "04(31)25|(31)5"},
      {"part of it elsewhere",
       [&] {
         return session.Layers().MoveObjects({all[1], all[0]}, second);
       },
       "4(3)25|(31)501"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Said(c.act()), "") << c.what;
    std::string seen;
    std::vector<GroupID> open;
    const auto close = [&](std::size_t depth) {
      for (; open.size() > depth; open.pop_back()) seen += ')';
    };
    for (const Layer* layer : session.Doc().Layers()) {
      layer->objects.ForEach([&](const DocumentObject& object) {
        const std::vector<GroupID>& path = object.marks.groups;
        close(static_cast<std::size_t>(std::ranges::mismatch(open, path).in1 - open.begin()));
        for (; open.size() < path.size(); open.push_back(path[open.size()])) seen += '(';
        seen += std::to_string(static_cast<int>(object.bounds.x0 / 20));
      });
      close(0);
      if (layer == session.Doc().Layers()[0] && session.Doc().Layers()[1]->objects.Count() != 0) seen += '|';
    }
    EXPECT_EQ(seen, c.expected) << c.what;
  }
  // One place for all of a group.
  EXPECT_TRUE(session.Arrangement().Align({all[3], all[4]}, Alignment::kLeft, AlignTo::kPage));
  EXPECT_EQ(Said(marks.Group({all[4]})), "a group needs at least two objects");
  EXPECT_EQ(Said(marks.Ungroup({all[4]})), "there is no group among the objects");
}

TEST_F(DocumentSessionTest, SizesMatchPlacesAlignAndTransformsRepeat) {
  DocumentSession session(MakeDocument(4));
  ObjectIDs all;
  for (std::size_t i = 0; i < 4; ++i) all.push_back(ID(session, i));
  EXPECT_NE(Said(session.Objects().Repeat({all[0]})), "");
  EXPECT_TRUE(session.Objects().SetPlacement(all[1], {{20, 0, 40, 30}, 0.5}));
  const ObjectIDs pair{all[2], all[3]};
  EXPECT_TRUE(session.Marks().Group(pair));
  const auto again = [&](const ObjectIDs& ids) { return session.Objects().Repeat(ids); };
  const auto match = [&](const ObjectIDs& ids, Sides sides, ObjectID key = kNoObjectID) {
    return session.Arrangement().Match(ids, sides, key);
  };
  const struct {
    const char* what;
    std::function<Result<>()> act;
    std::size_t number;
    ObjectPlacement expected;
  } cases[] = {
      {"stretched again", [&] { return again({all[0]}); }, 0, {{0, 0, 20, 30}, 0}},
      {"the width of the last",
       [&] {
         return match({all[1], all[0]}, Sides::kWidth);
       },
       1,
       {{20, 0, 40, 30}, 0.5}},
      {"a key",
       [&] {
         return match({all[0], all[1]}, Sides::kHeight, all[0]);
       },
       1,
       {{20, 0, 40, 30}, 0.5}},
      {"a group to an object",
       [&] {
         return match({all[2], all[3], all[0]}, Sides::kWidth);
       },
       3,
       {{175 / 3.0, 0, 65, 10}, 0}},
      {"an object to a group",
       [&] {
         return match({all[1], all[2], all[3]}, Sides::kHeight);
       },
       1,
       {{20, 10, 40, 20}, 0.5}},
      {"to the key",
       [&] {
         return session.Arrangement().Align({all[2], all[3], all[0]}, Alignment::kLeft, AlignTo::kKey);
       },
       2,
       {{0, 0, 20 / 3.0, 10}, 0}},
      {"moved", [&] { return session.Objects().Move({all[0]}, 5, 7); }, 0, {{5, 7, 25, 37}, 0}},
      {"moved again", [&] { return again({all[0]}); }, 0, {{10, 14, 30, 44}, 0}},
      {"turned", [&] { return session.Objects().Rotate({all[1]}, 0.25); }, 1, {{20, 10, 40, 20}, 0.75}},
      {"turned again", [&] { return again({all[0]}); }, 0, {{10, 14, 30, 44}, 0.25}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Said(c.act()), "") << c.what;
    const ObjectPlacement now = session.Doc().Find(all[c.number])->Placement();
    const double sides[][2] = {{now.bounds.x0, c.expected.bounds.x0},
                               {now.bounds.y0, c.expected.bounds.y0},
                               {now.bounds.x1, c.expected.bounds.x1},
                               {now.bounds.y1, c.expected.bounds.y1},
                               {now.angle, c.expected.angle}};
    for (const auto& [is, expected] : sides) EXPECT_NEAR(is, expected, 1e-9) << c.what;
  }
  // The page to what is shown.
  EXPECT_TRUE(session.Marks().SetHidden({all[1]}, true));
  AGRect box;
  AGRect fitted;
  session.Selection().GetBox(session.ShownObjects(), &box);
  EXPECT_TRUE(session.FitPage());
  session.Selection().GetBox(session.ShownObjects(), &fitted);
  EXPECT_NEAR(fitted.x0, 0, 1e-9);
  EXPECT_NEAR(fitted.y1, session.Doc().Page().height, 1e-9);
  EXPECT_NEAR(session.Doc().Page().width, box.Width(), 1e-9);
  EXPECT_NEAR(session.Doc().Find(all[1])->bounds.y0, 10 - box.y0, 1e-9);
  EXPECT_TRUE(session.Steps().Undo());
  EXPECT_EQ(session.Doc().Page().width, 200);
}

TEST_F(DocumentSessionTest, LockedAndHidden_StayAsTheyAre) {
  DocumentSession session(MakeDocument(3));
  const ObjectIDs ids = {ID(session, 0), ID(session, 1), ID(session, 2)};
  session.Selection().SelectAll();
  AGBitmap bitmap(60, 10, AGBitmap::kFlagZeroFill);
  const auto blank = [&](unsigned int x) {
    bitmap.ClearPixels();
    DrawObjects(session.Doc(), bitmap.GetContextOfBitmap(), 1);
    return bitmap.Pixels()[4 * (std::size_t{5} * bitmap.RowStride() + x) + 3] == 0;  // the alpha
  };
  EXPECT_TRUE(session.Marks().SetLocked({ids[0]}, true));
  EXPECT_TRUE(session.Marks().SetHidden({ids[1]}, true));
  EXPECT_EQ(session.Selection().IDs(), ObjectIDs{ids[2]});
  EXPECT_FALSE(blank(5));
  EXPECT_TRUE(blank(25));
  EXPECT_EQ(session.Selection().ObjectAt({5, 5}, 1), kNoObjectID);
  EXPECT_EQ(session.Selection().ObjectsIn({0, 0, 100, 100}, Band::kTouched), ObjectIDs{ids[2]});
  EXPECT_NE(Said(session.Objects().Move(ids, 1, 0)).find("locked object"), std::string::npos);
  EXPECT_NE(Said(session.Objects().Delete({ids[1]})).find("hidden object"), std::string::npos);
  EXPECT_EQ(session.Marks().Locked(), ObjectIDs{ids[0]});
  EXPECT_EQ(session.Marks().Hidden(), ObjectIDs{ids[1]});
  // A group without them is whole for who can't select them, and copies are of what is selected.
  EXPECT_TRUE(session.Marks().SetLocked({ids[0]}, false));
  EXPECT_TRUE(session.Marks().Group({ids[0], ids[2]}));
  EXPECT_TRUE(session.Marks().SetLocked({ids[0]}, true));
  EXPECT_EQ(session.Selection().UnitOf(ids[2]), ObjectIDs{ids[2]});
  EXPECT_TRUE(session.Marks().Ungroup({ids[2]}));
  EXPECT_TRUE(session.Doc().Find(ids[0])->marks.groups.empty());
  EXPECT_TRUE(session.Steps().Undo() && session.Steps().Undo() && session.Steps().Undo());
  EXPECT_FALSE(session.Doc().Find(ids[0])->marks.locked);
}

// Of gradients, which stay as they are seen, turned objects and objects that were mirrored before.
TEST_F(DocumentSessionTest, Flip_MirrorsWhatIsSeen) {
  DocumentSession session(std::make_unique<Document>(AGSize{120, 80}));
  AGBrush brush;
  brush.SetStyleLinearGradient(kAGColorRed, kAGColorBlue, 0.4, 0.6);
  std::vector<ObjectID> all;
  for (const AGRect& box : {AGRect{10, 5, 50, 35}, AGRect{60, 20, 110, 75}, AGRect{20, 40, 60, 70}}) {
    all.push_back(Taken(session.Objects().Add(AKClassID("stdRect"), "-default", {box, 0.3 * box.x0})));
  }
  ASSERT_TRUE(session.Objects().SetBrush(all, brush));
  AGRect box;
  for (const ObjectIDs& ids : {all, ObjectIDs{all[1]}, all}) {
    for (const Axis axis : {Axis::kHorizontal, Axis::kVertical}) {
      // On a page whose middle is that of the box.
      ASSERT_TRUE(session.Selection().GetBox(all, &box));
      ASSERT_TRUE(session.Objects().Move(all, 60 - box.Center().x, 40 - box.Center().y));
      const std::vector<AGColor> before = Drawn(session.Doc());
      ASSERT_TRUE(session.Looks().Flip(ids, axis));
      const std::vector<AGColor> after = Drawn(session.Doc());
      if (ids.size() == 1) continue;
      int far = 0;
      for (std::size_t i = 0; i < before.size(); ++i) {
        const std::size_t x = i % 120;
        const std::size_t y = i / 120;
        const AGColor mirrored = before[axis == Axis::kHorizontal ? y * 120 + 119 - x : (79 - y) * 120 + x];
        far += std::abs(after[i].Red() - mirrored.Red()) > 8 || std::abs(after[i].Alpha() - mirrored.Alpha()) > 8;
      }
      EXPECT_LT(far, 30) << static_cast<int>(axis);
    }
  }
}

// Where an outline lies on the fill, only the outline is seen through; half of it lies beside, and is as faint.
TEST_F(DocumentSessionTest, FaintAndDashed_AsDrawnByHand) {
  DocumentSession session(std::make_unique<Document>(AGSize{100, 100}));
  const ObjectIDs ids{Taken(session.Objects().Add(AKClassID("stdRect"), "", {{20, 20, 80, 80}, 0}))};
  AGBrush red;
  AGPen pen;
  red.SetStyleSolid(kAGColorRed);
  pen.SetStyleSolid(kAGColorBlue, 10, kAGPenSizeModeAbsolute);
  ASSERT_TRUE(session.Objects().SetBrush(ids, red) && session.Objects().SetPen(ids, pen));
  ASSERT_TRUE(session.Looks().SetOpacity(ids, 0.5));
  const auto at = [&session](std::size_t x, std::size_t y) { return Drawn(session.Doc())[y * 100 + x]; };
  EXPECT_EQ(at(50, 50), AGColor(128, 0, 0, 128));  // premultiplied
  for (const std::size_t x : {17U, 22U}) EXPECT_EQ(at(x, 50), AGColor(0, 0, 128, 128)) << x;
  EXPECT_EQ(at(5, 5).Alpha(), 0);
  ASSERT_TRUE(session.Looks().SetOpacity(ids, 1));
  red.SetStyleNone();
  ASSERT_TRUE(session.Objects().SetBrush(ids, red));
  ASSERT_TRUE(session.Looks().SetDashes(ids, {2, 1}));
  // Six strokes of 20 along each side, ten wide, but for what they share at corners.
  const auto pixels = Drawn(session.Doc());
  const auto inked = std::ranges::count_if(pixels, [](AGColor color) { return color.Alpha() > 127; });
  EXPECT_NEAR(static_cast<double>(inked), 8 * 20 * 10, 101);
  EXPECT_EQ(session.Selection().ObjectAt({20, 45}, 1), ids[0]) << "a gap is no hole for the pointer";
}

TEST_F(DocumentSessionTest, Drag_IsOneStep_AndCanBeCancelled) {
  DocumentSession session(MakeDocument(3));
  const ObjectIDs ids = {ID(session, 0), ID(session, 2)};
  const std::string before = Bytes(session);
  session.Steps().Begin("Move");
  for (int i = 1; i <= 50; ++i) {
    session.Steps().Rewind();
    ASSERT_TRUE(session.Objects().Move(ids, i * 0.1, i));
  }
  EXPECT_FALSE(session.Steps().Undo()) << "in the middle of a drag";
  EXPECT_TRUE(session.Steps().End());
  EXPECT_EQ(session.Steps().Known().Count(), 1U);
  EXPECT_EQ(session.Steps().UndoTitle(), "Undo Move");
  const std::string after = Bytes(session);
  ASSERT_TRUE(session.Steps().Undo());
  EXPECT_EQ(Bytes(session), before);
  ASSERT_TRUE(session.Steps().Redo());
  EXPECT_EQ(Bytes(session), after);

  session.Steps().Begin("Move");
  std::ignore = session.Objects().Move(ids, 7, 7);
  std::ignore = session.Objects().Delete({ids[0]});
  session.Steps().Cancel();
  EXPECT_EQ(Bytes(session), after);
  session.Steps().Begin("Move");
  std::ignore = session.Objects().Move(ids, 7, 7);
  std::ignore = session.Objects().Move(ids, -7, -7);
  EXPECT_FALSE(session.Steps().End()) << "nothing has changed";
  EXPECT_EQ(session.Steps().Known().Count(), 1U);
}

TEST_F(DocumentSessionTest, CleanMark_FollowsUndoAndRedo_UntilItsStepIsForgotten) {
  DocumentSession session(MakeDocument(2));
  const std::string path = testing::TempDir() + "clean.akd";
  const auto move = [&] { std::ignore = session.Objects().Move({ID(session, 0)}, 1, 0); };
  EXPECT_FALSE(session.File().HasUnsavedChanges());
  move();
  ASSERT_TRUE(session.File().SaveAs(path));
  EXPECT_FALSE(session.File().HasUnsavedChanges());
  session.Steps().Undo();
  EXPECT_TRUE(session.File().HasUnsavedChanges());
  session.Steps().Redo();
  EXPECT_FALSE(session.File().HasUnsavedChanges());
  session.Steps().Undo();
  move();
  EXPECT_TRUE(session.File().HasUnsavedChanges());
  session.Steps().Undo();
  EXPECT_TRUE(session.File().HasUnsavedChanges()) << "what was saved can't be reached any more";

  ASSERT_TRUE(session.File().Save(false));
  for (std::size_t i = 0; i <= History::kMostSteps; ++i) move();
  EXPECT_EQ(session.Steps().Known().Count(), History::kMostSteps);
  while (session.Steps().Undo()) EXPECT_TRUE(session.File().HasUnsavedChanges());

  ASSERT_TRUE(session.File().Save(false));
  std::ofstream(path, std::ios::app) << "x";
  move();
  EXPECT_NE(Said(session.File().Save(false)).find("another program"), std::string::npos);
  EXPECT_TRUE(session.File().HasUnsavedChanges());
  EXPECT_TRUE(session.File().Save(true));
}

// Moved between layers, copied, deleted and brought back, a placeholder's chunk stays what it was.
TEST_F(DocumentSessionTest, Placeholder_KeepsItsBytes_ThroughEdits) {
  DocumentSession session(MakeDocument(2));
  AddPlaceholder(&session);
  const std::string chunk = session.Clipboard().Copy({placeholder_}).substr(16);
  const auto count = [&] {
    const std::string file = Bytes(session);
    unsigned int found = 0;
    for (std::size_t at = file.find(chunk); at != std::string::npos; at = file.find(chunk, at + 1)) ++found;
    return found;
  };
  EXPECT_NE(Said(session.Objects().Move({placeholder_}, 1, 1)).find("no bundle has its class"), std::string::npos);
  EXPECT_TRUE(session.Objects().Move({placeholder_, ID(session, 0)}, 1, 1)) << "the others can be moved";
  session.Layers().Add("Over");
  ASSERT_TRUE(session.Layers().MoveObjects({placeholder_}, session.Layers().Active()));
  EXPECT_EQ(count(), 1U);
  ASSERT_TRUE(session.Clipboard().Duplicate({placeholder_}, 3, 3));
  EXPECT_EQ(count(), 2U);
  ASSERT_TRUE(session.Objects().Delete({placeholder_}));
  EXPECT_EQ(count(), 1U);
  ASSERT_TRUE(session.Layers().Remove(session.Layers().Active()));
  EXPECT_EQ(count(), 0U);
  session.Steps().Undo();
  session.Steps().Undo();
  EXPECT_EQ(count(), 2U);
  EXPECT_EQ(session.Doc().PlaceOf(placeholder_).index, 0U);
}

TEST_F(DocumentSessionTest, Inspector_OfSeveral_KnowsWhatDiffers_AndChangesAllInOneStep) {
  DocumentSession session(MakeDocument(3));
  const ObjectIDs ids = {ID(session, 1), ID(session, 0), ID(session, 2)};
  ASSERT_TRUE(session.Objects().SetProperties({ids[0]}, {{"Rounding", "0.5"}}));
  const std::string before = Bytes(session);
  Inspector inspector;
  ASSERT_TRUE(inspector.Open(&session, ids));
  EXPECT_TRUE(inspector.Fill());
  EXPECT_EQ(inspector.Wrapper().GetValueAsFloat64(2), 0.5) << "filled from the first";
  EXPECT_TRUE(inspector.IsMixed(1) && inspector.IsMixed(2));
  EXPECT_FALSE(inspector.IsMixed(0));

  std::string name;
  session.Steps().Begin("");
  for (const char* text : {"0.1", "0.9", "1"}) ASSERT_TRUE(inspector.Enter(2, text, &name));
  session.Steps().End();
  EXPECT_EQ(name, "Change Rectangle Curvature");
  EXPECT_EQ(session.Steps().UndoTitle(), "Undo Change Rectangle Curvature");
  for (const ObjectID id : ids) EXPECT_EQ(TextOf(PropertiesOf(*session.Doc().Find(id)).GetValue("Rounding")), "1");
  ASSERT_TRUE(inspector.Fill());
  EXPECT_FALSE(inspector.IsMixed(1));
  EXPECT_TRUE(inspector.Send(77, 5, &name));
  EXPECT_EQ(name, "");
  EXPECT_EQ(session.Steps().Known().Count(), 2U) << "an event that changes nothing is no step";
  ASSERT_TRUE(session.Steps().Undo());
  EXPECT_EQ(Bytes(session), before);
}

// Field by field over objects of different styles: the one that is set is the same in all, every other is what it was.
TEST_F(DocumentSessionTest, OneField_OfSeveralStyles_LeavesAllOthers) {
  DocumentSession session(MakeDocument(3));
  const ObjectIDs ids = {ID(session, 0), ID(session, 1), ID(session, 2)};
  std::mt19937 random(7);
  const auto number = [&random](double high) { return high * (random() % 997) / 997.0; };
  const auto brush = [&] {
    AGBrush made(static_cast<AGBrushStyle>(1 + random() % 4), AGColor(random() % 256, 9, 9),
                 AGColor(9, random() % 256, 9));
    made.SetPatternIndex(1 + random() % 50);
    made.SetGradientBlend(number(1));
    made.SetGradientAngle(number(6));
    made.SetGradientCenterX(number(1));
    made.SetGradientCenterY(number(1));
    made.SetFillMode(random() % 2);
    return made;
  };
  const auto pen = [&] {
    AGPen made;
    made.SetSize(number(90));
    made.SetSizeMode(random() % 2);
    made.SetLineCap(random() % 3);
    made.SetLineJoin(random() % 3);
    made.SetRatio(number(1));
    made.SetAngle(number(3));
    made.SetBrush(brush());
    return made;
  };
  using Texts = std::vector<std::string>;
  const auto brushTexts = [](const AGBrush& b) {
    const double each[] = {double(b.Style()),        double(b.Color().Red()), double(b.Color2().Green()),
                           double(b.PatternIndex()), b.GradientBlend(),       b.GradientAngle(),
                           b.GradientCenterX(),      b.GradientCenterY(),     double(b.FillMode())};
    Texts texts;
    for (const double value : each) texts.push_back(std::to_string(value));
    return texts;
  };
  const auto texts = [&](ObjectID id) {
    const DocumentObject& object = *session.Doc().Find(id);
    Texts all = brushTexts(object.brush);
    for (const std::string& text : brushTexts(object.pen.Brush())) all.push_back(text);
    const AGPen& p = object.pen;
    for (const double value :
         {p.Size(), double(p.SizeMode()), double(p.LineCap()), double(p.LineJoin()), p.Ratio(), p.Angle()}) {
      all.push_back(std::to_string(value));
    }
    return all;
  };
  const auto differences = [&] {
    const auto shared = StyleOf(session.Doc(), ids);
    return shared->penDiffers.to_string() + shared->penBrushDiffers.to_string() + shared->brushDiffers.to_string();
  };
  constexpr std::size_t kFields = 24;  // those of the brush, of the pen's brush, of the pen
  for (std::size_t field = 0; field < kFields; ++field) {
    for (const ObjectID id : ids) {
      ASSERT_TRUE(session.Objects().SetBrush({id}, brush()) && session.Objects().SetPen({id}, pen()));
    }
    std::vector<Texts> wanted;
    for (const ObjectID id : ids) wanted.push_back(texts(id));
    const AGBrush newBrush = brush();
    const AGPen newPen = pen();
    ASSERT_TRUE(session.Objects().SetBrush({ids[0]}, newBrush) && session.Objects().SetPen({ids[0]}, newPen));
    const Texts source = texts(ids[0]);
    ASSERT_TRUE(session.Steps().Undo() && session.Steps().Undo());
    const std::size_t steps = session.Steps().Known().Count();
    const auto done = field < 9 ? session.Objects().SetBrushField(ids, static_cast<BrushField>(field), newBrush)
                      : field < 18
                          ? session.Objects().SetPenBrushField(ids, static_cast<BrushField>(field - 9), newPen.Brush())
                          : session.Objects().SetPenField(ids, static_cast<PenField>(field - 18), newPen);
    ASSERT_TRUE(done);
    EXPECT_LE(session.Steps().Known().Count(), steps + 1);
    for (std::size_t i = 0; i < ids.size(); ++i) {
      wanted[i][field] = source[field];
      EXPECT_EQ(texts(ids[i]), wanted[i]) << "field " << field << " of object " << i;
    }
    std::string differs;
    for (std::size_t i = kFields; i-- > 0;) {
      differs += wanted[0][i] == wanted[1][i] && wanted[0][i] == wanted[2][i] ? '0' : '1';
    }
    EXPECT_EQ(differences(), differs) << "field " << field;
  }
}

// The geometry of a rounded square tells where there is ink.
TEST_F(DocumentSessionTest, ObjectAt_SeesTheOutline_NotTheBox) {
  const struct {
    const char* what;
    std::vector<std::pair<std::string, std::string>> properties;
    AGPoint point;
    bool hit;
  } cases[] = {
      {"square, corner", {{"Rounding", "0"}}, {1, 1}, true},
      {"round, corner", {{"Rounding", "1"}}, {6, 6}, false},
      {"round, on the arc", {{"Rounding", "1"}}, {16, 16}, true},
      {"turned, corner of the box", {{"Angle", "45"}}, {2, 2}, false},
      {"turned, tip beyond the box", {{"Angle", "45"}}, {50, -18}, true},
      {"no fill, inside", {{"Brush.Style", "None"}}, {50, 50}, false},
      {"no fill, on the stroke", {{"Brush.Style", "None"}}, {50, 0.4}, true},
      {"a thick stroke, outside", {{"Pen.Size", "20"}}, {50, -8}, true},
      {"a thin stroke, outside", {{"Pen.Size", "2"}}, {50, -8}, false},
      {"barely seen", {{"Brush.Color", "(255;255;255;1)"}}, {50, 50}, true},
      {"a pattern", {{"Brush.Style", "Pattern"}}, {50, 50}, true},
      {"nothing to see", {{"Brush.Style", "None"}, {"Pen.Brush.Style", "None"}}, {50, 0}, false},
  };
  for (const auto& c : cases) {
    DocumentSession session(MakeDocument(0));
    const ObjectID id = Taken(session.Objects().Add(AKClassID("stdRect"), "", {{0, 0, 100, 100}, 0}));
    ASSERT_TRUE(session.Objects().SetProperties({id}, c.properties)) << c.what;
    EXPECT_EQ(session.Selection().ObjectAt(c.point, 0.5), c.hit ? id : kNoObjectID) << c.what;
  }
}

AGRect Both(const AGRect& a, const AGRect& b) {
  return {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
}

class Recorder final : public SessionObserver {
 public:
  void OnAreaChanged(const AGRect& area) override { areas.push_back(area); }
  std::vector<AGRect> areas;
};

// In a large document a part is drawn as the whole is, an object is found where a plain search finds it, and an edit
// tells of no more than where it happened.
TEST_F(DocumentSessionTest, LargeDocument_PartsAreDrawnAndFound_AsTheWhole) {
  auto document = std::make_unique<Document>(AGSize{2000, 2000});
  std::mt19937 random(7);
  const auto number = [&random](int range) { return static_cast<double>(random() % (range * 10)) / 10; };
  for (int i = 0; i < 100000; ++i) {
    auto object = Taken(Document::NewObject(AKClassID("stdRect"), ""));
    const double x = number(2000);
    const double y = number(2000);
    object->bounds = {x, y, x + 1 + number(8), y + 1 + number(8)};
    object->angle = number(6);
    object->brush.SetStyleSolid(AGColor(static_cast<unsigned char>(i), 90, static_cast<unsigned char>(i >> 8)));
    document->AppendObject(std::move(object));
  }
  DocumentSession session(std::move(document));
  const AGRect area{700, 900, 764, 964};
  AGBitmap whole(AGSize{64, 64}, AGBitmap::kFlagZeroFill);
  AGBitmap part(AGSize{64, 64}, AGBitmap::kFlagZeroFill);
  for (AGBitmap* bitmap : {&whole, &part}) {
    const AGContext context = bitmap->GetContextOfBitmap();
    CGContextConcatCTM(context.NativePort(), {1, 0, 0, 1, -area.x0, -area.y0});
    bitmap == &whole ? static_cast<void>(DrawObjects(session.Doc(), context, 1))
                     : DrawObjects(session.Doc(), context, 1, area);
  }
  EXPECT_EQ(std::memcmp(whole.Pixels(), part.Pixels(), whole.ByteCount()), 0);

  for (int i = 0; i < 40; ++i) {
    const AGPoint point{number(2000), number(2000)};
    HitTest test(point, 1);
    ObjectID expected = kNoObjectID;
    session.Doc().ForEachObject([&](const DocumentObject& object) {
      if (std::hypot(object.bounds.x0 - point.x, object.bounds.y0 - point.y) < 40 && test.Hits(object)) {
        expected = object.id;
      }
    });
    EXPECT_EQ(session.Selection().ObjectAt(point, 1), expected) << point.x << " " << point.y;
  }

  Recorder recorder;
  session.AddObserver(&recorder);
  const ObjectID id = ID(session, 50000);
  const AGRect box = PaintedBox(*session.Doc().Find(id));
  ASSERT_TRUE(session.Objects().Move({id}, 30, 0));
  ASSERT_EQ(recorder.areas.size(), 2U);
  EXPECT_EQ(recorder.areas[0], box);
  EXPECT_NEAR(recorder.areas[1].x0, box.x0 + 30, 1e-9);
  EXPECT_NEAR(recorder.areas[1].y1, box.y1, 1e-9);
  // Of many objects a box of them is told, so that a drag of all costs its observers no more than one of some.
  recorder.areas.clear();
  session.Selection().SelectAll();
  ASSERT_TRUE(session.Objects().Move(session.Selection().IDs(), 5, 0));
  EXPECT_LE(recorder.areas.size(), 64U);
  AGRect told = recorder.areas[0];
  for (const AGRect& each : recorder.areas) told = Both(told, each);
  session.Doc().ForEachObject([&](const DocumentObject& object) {
    const AGRect now = PaintedBox(object);
    EXPECT_TRUE(told.x0 <= now.x0 - 5 + 1e-6 && now.x1 <= told.x1 && told.y0 <= now.y0 && now.y1 <= told.y1);
  });
  session.RemoveObserver(&recorder);
}

TEST_F(DocumentSessionTest, LockedAndHiddenLayers_KeepTheirObjects) {
  DocumentSession session(MakeDocument(2));
  const LayerID layer = session.Doc().FirstLayer().id;
  session.Selection().SelectAll();
  EXPECT_EQ(session.Selection().Count(), 2U);
  std::ignore = session.Layers().SetLocked(layer, true);
  EXPECT_TRUE(session.Selection().IsEmpty());
  const ObjectIDs ids = {ID(session, 0)};
  session.Selection().Select(ids);
  EXPECT_TRUE(session.Selection().IsEmpty());
  EXPECT_EQ(session.Selection().ObjectAt({5, 5}, 1), kNoObjectID);
  EXPECT_TRUE(session.Selection().ObjectsIn({-5, -5, 100, 100}, Band::kWithin).empty());
  EXPECT_FALSE(session.Objects().Move(ids, 1, 1));
  EXPECT_FALSE(session.Objects().Delete(ids));
  EXPECT_NE(Said(session.Objects().Add(AKClassID("stdRect"), "", {})).find("locked"), std::string::npos);
}

}  // namespace
}  // namespace host
