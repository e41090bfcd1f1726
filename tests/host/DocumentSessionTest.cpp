// Editing: every edit can be undone and done again to the byte, and views are told where to draw.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

#include "host/document/DocumentDrawing.h"
#include "host/document/DocumentListing.h"
#include "host/document/ObjectProperties.h"
#include "host/panels/Inspector.h"
#include "kit/AKHandler.h"
#include "tests/host/SessionTestSupport.h"

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
    Document const& document = session_.Doc();
    for (unsigned int i = Pick(4); i > 0 && document.ObjectCount() != 0; --i) {
      ids.push_back(document.ObjectAt(Pick(document.ObjectCount())).id);
    }
    return ids;
  }

  LayerID AnyLayer() { return session_.Doc().Layers()[Pick(session_.Doc().Layers().size())]->id; }

  void Edit() {
    std::string error;
    const ObjectIDs ids = Some();
    AGBrush brush(3, {1, 2, 3, static_cast<unsigned char>(Pick(256))}, {200, 1, 1});
    AGPen pen;
    pen.SetStyleSolid({9, 9, 9}, Number(0, 20));
    const double x = Number(-50, 50);
    const std::function<void()> edits[] = {
        [&] {
          session_.Add(AKClassID("stdRect"), "-default", {{x, x, x + 30, x + 20}, x}, &error);
        },
        [&] {
          session_.Add(AKClassID("stdRect"), "", {{x, 0, 40, 10}, 0}, &error);
        },
        [&] { session_.Delete(ids, &error); },
        [&] { session_.Move(ids, x, -x, &error); },
        [&] {
          session_.Resize(ids, {0, 0, 10, 10}, {x, 0, x + 20, 5}, &error);
        },
        [&] { session_.Rotate(ids, x, &error); },
        [&] { session_.SetBrush(ids, brush, &error); },
        [&] { session_.SetPen(ids, pen, &error); },
        [&] {
          session_.SetProperties(ids, {{"Rounding", std::to_string(x / 50)}, {"Angle", "30"}}, &error);
        },
        [&] {
          session_.SetProperties(ids, {{"Rounding", "0.9"}, {"Bounds", "wrong"}}, &error);
        },
        [&] { session_.ChangeOrder(ids, static_cast<OrderChange>(Pick(4)), &error); },
        [&] { session_.Align(ids, static_cast<Alignment>(Pick(6)), static_cast<AlignTo>(Pick(2)), &error); },
        [&] { session_.Distribute(ids, static_cast<Axis>(Pick(2)), &error); },
        [&] { session_.Duplicate(ids, 5, 5, &error); },
        [&] { session_.Cut(ids, &clipboard_, &error); },
        [&] { session_.Paste(clipboard_, 1, 1, &error); },
        [&] { session_.AddLayer(Pick(2) == 0 ? "" : "Ebene", Pick(3)); },
        [&] { session_.RemoveLayer(AnyLayer(), &error); },
        [&] { session_.SetLayerVisible(AnyLayer(), Pick(4) != 0, &error); },
        [&] { session_.SetLayerLocked(AnyLayer(), Pick(4) == 0, &error); },
        [&] { session_.SetLayerName(AnyLayer(), "Name " + std::to_string(Pick(9)), &error); },
        [&] { session_.MoveLayer(AnyLayer(), Pick(4), &error); },
        [&] { session_.MoveToLayer(ids, AnyLayer(), &error); },
        [&] {
          session_.SetPage({Number(1, 500), 100}, &error);
        },
        [&] { session_.SetActiveLayer(AnyLayer()); },
        [&] { Slide(ids); },
    };
    edits[Pick(std::size(edits))]();
  }

 private:
  // A slide of the inspector, or one that is cancelled.
  void Slide(ObjectIDs const& ids) {
    std::string error;
    Inspector inspector;
    if (!inspector.Open(&session_, ids, &error)) return;
    session_.BeginStep("Slide");
    for (int i = 0; i < 3; ++i) inspector.Change(2, Number(0, 1), nullptr);
    Pick(3) == 0 ? session_.CancelStep() : static_cast<void>(session_.EndStep());
  }

  DocumentSession& session_;
  std::mt19937 random_;
  std::string clipboard_;
};

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
      History const& steps = session.Steps();
      ASSERT_LE(steps.Position(), states.size());
      if (steps.Position() == states.size()) {
        states.push_back(Bytes(session));
      } else {
        ASSERT_EQ(Bytes(session), states.back()) << "an edit without a step changed something";
      }
      if (editor.Pick(12) == 0) {
        session.GoToStep(editor.Pick(states.size()));
        ASSERT_EQ(Bytes(session), states[session.Steps().Position()]);
        states.resize(session.Steps().Position() + 1);
        AddOne(&session);
        states.push_back(Bytes(session));
      }
      for (const ObjectID id : session.Selected().IDs()) ASSERT_TRUE(session.IsEditable(id));
    }
    while (session.Undo()) ASSERT_EQ(Bytes(session), states[session.Steps().Position()]);
    EXPECT_EQ(session.Steps().Position(), 0U);
    while (session.Redo()) ASSERT_EQ(Bytes(session), states[session.Steps().Position()]);
    EXPECT_EQ(session.Steps().Position() + 1, states.size());
  }
}

TEST_F(DocumentSessionTest, Drag_IsOneStep_AndCanBeCancelled) {
  DocumentSession session(MakeDocument(3));
  const ObjectIDs ids = {ID(session, 0), ID(session, 2)};
  const std::string before = Bytes(session);
  session.BeginStep("Move");
  for (int i = 1; i <= 50; ++i) {
    session.RewindStep();
    ASSERT_TRUE(session.Move(ids, i * 0.1, i, &error_));
  }
  EXPECT_FALSE(session.Undo()) << "in the middle of a drag";
  EXPECT_TRUE(session.EndStep());
  EXPECT_EQ(session.Steps().Count(), 1U);
  EXPECT_EQ(session.UndoTitle(), "Undo Move");
  const std::string after = Bytes(session);
  ASSERT_TRUE(session.Undo());
  EXPECT_EQ(Bytes(session), before);
  ASSERT_TRUE(session.Redo());
  EXPECT_EQ(Bytes(session), after);

  session.BeginStep("Move");
  session.Move(ids, 7, 7, &error_);
  session.Delete({ids[0]}, &error_);
  session.CancelStep();
  EXPECT_EQ(Bytes(session), after);
  session.BeginStep("Move");
  session.Move(ids, 7, 7, &error_);
  session.Move(ids, -7, -7, &error_);
  EXPECT_FALSE(session.EndStep()) << "nothing has changed";
  EXPECT_EQ(session.Steps().Count(), 1U);
}

}  // namespace
}  // namespace host
