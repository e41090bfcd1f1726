// A document against a plain model of it: a million random edits, undos, redos, saves and reopens.
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <optional>
#include <ostream>
#include <random>
#include <unordered_map>

#include "host/model/ObjectProperties.h"
#include "host/model/ObjectTable.h"
#include "kit/values/AKValueHelpers.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

#if defined(AK_SANITIZED)
constexpr int kEdits = 20000;
#else
constexpr int kEdits = 1000000;
#endif

struct PlainObject {
  ObjectID id;
  AGRect bounds;
  double angle;
  double rounding;
  bool operator==(const PlainObject&) const = default;
  friend void PrintTo(const PlainObject& o, std::ostream* out) {
    *out << o.id << " " << o.bounds.x0 << " " << o.bounds.y0 << " " << o.angle << " " << o.rounding;
  }
};

using PlainState = std::vector<std::vector<PlainObject>>;  // by layer

// Whole states, one for each step: nothing is shared with how the session undoes.
struct PlainHistory {
  std::deque<PlainState> states;
  std::size_t position = 0;
  std::optional<std::size_t> saved = 0;

  const PlainState& Now() const { return states[position]; }
  void Take(PlainState state) {
    states.resize(position + 1);
    if (saved && *saved > position) saved.reset();
    states.push_back(std::move(state));
    ++position;
    if (states.size() <= History::kMostSteps + 1) return;
    states.pop_front();
    --position;
    if (saved) saved = *saved == 0 ? std::nullopt : std::optional(*saved - 1);
  }
};

class DocumentModelTest : public SessionFixture {
 protected:
  unsigned int Pick(std::size_t count) { return static_cast<unsigned int>(random_() % count); }
  // Multiples of 1/8: sums of them are exact, and so is a curvature in its record.
  double Eighths(int range) {
    return (static_cast<int>(Pick(2 * 8 * static_cast<std::size_t>(range))) - 8 * range) / 8.0;
  }

  void Start(std::unique_ptr<DocumentSession> session) {
    session_ = std::move(session);
    PlainState state;
    for (const Layer* layer : session_->Doc().Layers()) {
      state.emplace_back();
      layer->objects.ForEach([&](const DocumentObject& o) {
        state.back().push_back({o.id, o.bounds, o.angle, RoundingOf(o)});
      });
    }
    plain_ = {{std::move(state)}, 0, 0};
  }

  static double RoundingOf(const DocumentObject& object) {
    double rounding = -1;
    AKValueGetasFloat64(PropertiesOf(object).GetValue("Rounding"), &rounding, false);
    return rounding;
  }

  void Compare(bool whole) {
    const PlainState& state = plain_.Now();
    ASSERT_EQ(session_->File().HasUnsavedChanges(), plain_.saved != plain_.position);
    ASSERT_EQ(session_->Steps().Known().Position(), plain_.position);
    ASSERT_EQ(session_->Steps().Known().Count() + 1, plain_.states.size());
    ASSERT_EQ(session_->Doc().Layers().size(), state.size());
    std::size_t number = 0;
    for (std::size_t l = 0; l < state.size(); ++l) {
      const ObjectOrder& order = session_->Doc().Layers()[l]->objects;
      ASSERT_EQ(session_->Doc().IndexOfLayer(LayerAt(l)), l);
      ASSERT_EQ(order.Count(), state[l].size());
      std::size_t i = 0;
      order.ForEach([&](const DocumentObject& o) {
        const PlainObject& plain = state[l][i++];
        const PlainObject found{o.id, o.bounds, o.angle, whole ? RoundingOf(o) : plain.rounding};
        EXPECT_EQ(found, plain) << "layer " << l << ", object " << i - 1;
        EXPECT_EQ(session_->Doc().FindByInstance(o.instance.get()), &o);
        EXPECT_EQ(session_->Doc().PlaceOf(o.id).index + 1, i);
        EXPECT_EQ(session_->Doc().NumberOf(o.id), number);
        EXPECT_EQ(&session_->Doc().ObjectAt(number++), &o);
      });
    }
  }

  LayerID LayerAt(std::size_t index) { return session_->Doc().Layers()[index]->id; }

  void Add(PlainState* state) {
    const unsigned int layer = Pick(state->size());
    const double x = Eighths(100);
    const ObjectPlacement placement{{x, 0, x + 10, 20}, Eighths(3)};
    session_->Layers().SetActive(LayerAt(layer));
    const ObjectID id = Taken(session_->Objects().Add(AKClassID("stdRect"), "-default", placement));
    (*state)[layer].push_back({id, placement.bounds, placement.angle, 0.5});
  }

  // One edit of one object, of the session and of the state.
  void Edit(PlainState* state) {
    const unsigned int layer = Pick(state->size());
    std::vector<PlainObject>& objects = (*state)[layer];
    if (objects.empty() || Pick(12) == 0) {
      if (objects.size() < 30) Add(state);
      return;
    }
    const auto object = objects.begin() + Pick(objects.size());
    const PlainObject old = *object;
    const ObjectIDs ids = {old.id};
    const double number = Eighths(8);
    switch (Pick(7)) {
      case 0:
        ASSERT_TRUE(session_->Objects().Delete(ids));
        objects.erase(object);
        break;
      case 1:
      case 2:
        ASSERT_TRUE(session_->Objects().Move(ids, number, -number));
        object->bounds = {old.bounds.x0 + number, old.bounds.y0 - number, old.bounds.x1 + number,
                          old.bounds.y1 - number};
        break;
      case 3:
        ASSERT_TRUE(session_->Objects().SetAngle(ids, number));
        object->angle = number;
        break;
      case 4:
        object->rounding = Pick(9) / 8.0;
        ASSERT_TRUE(session_->Objects().SetProperties(ids, {{"Rounding", std::to_string(object->rounding)}}));
        break;
      case 5: {
        const bool front = Pick(2) == 0;
        std::ignore = session_->Arrangement().ChangeOrder(ids, front ? OrderChange::kToFront : OrderChange::kToBack);
        objects.erase(object);
        objects.insert(front ? objects.end() : objects.begin(), old);
        break;
      }
      default: {
        const std::size_t other = (layer + 1) % state->size();
        ASSERT_TRUE(session_->Layers().MoveObjects(ids, LayerAt(other)));
        objects.erase(object);
        (*state)[other].push_back(old);
      }
    }
  }

  void SaveAndPerhapsReopen(const std::string& path) {
    ASSERT_TRUE(session_->File().SaveAs(path));
    plain_.saved = plain_.position;
    if (Pick(2) == 0) return;
    PlainState before = plain_.Now();
    auto session = Taken(DocumentSession::Open(path));
    Start(std::move(session));
    for (std::size_t l = 0; l < before.size(); ++l) {
      ASSERT_EQ(before[l].size(), plain_.Now()[l].size());
      for (std::size_t i = 0; i < before[l].size(); ++i) before[l][i].id = plain_.Now()[l][i].id;  // IDs are new
    }
    ASSERT_EQ(before, plain_.Now());
  }

  void Step() {
    PlainState state = plain_.Now();
    const unsigned int kind = Pick(20);
    if (kind < 3) {
      if (session_->Steps().Undo()) --plain_.position;
    } else if (kind < 5) {
      if (session_->Steps().Redo()) ++plain_.position;
    } else if (kind == 5) {  // several edits as one step, or taken back
      session_->Steps().Begin("Several");
      for (unsigned int i = Pick(4); i > 0; --i) Edit(&state);
      if (Pick(3) == 0) {
        session_->Steps().Cancel();
      } else {
        // A step that brings everything back where it was, as by adding and deleting, may be recorded or not.
        const bool recorded = session_->Steps().End();
        if (recorded) {
          plain_.Take(std::move(state));
        } else {
          ASSERT_EQ(state, plain_.Now());
        }
      }
    } else {
      Edit(&state);
      if (state != plain_.Now()) plain_.Take(std::move(state));
    }
  }

  std::mt19937 random_;
  std::unique_ptr<DocumentSession> session_;
  PlainHistory plain_;
};

TEST_F(DocumentModelTest, MillionEdits_AgreeWithAPlainModel) {
  const file_test::TempFolder folder;
  const auto seed = static_cast<unsigned int>(testing::UnitTest::GetInstance()->random_seed()) + 8;
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::printf("seed %u, %d edits\n", seed, kEdits);
  random_.seed(seed);
  auto session = std::make_unique<DocumentSession>(MakeDocument(3));
  session->Layers().Add("Second");
  ASSERT_TRUE(session->File().SaveAs(folder.Path("model.akd")));
  Start(Taken(DocumentSession::Open(folder.Path("model.akd"))));
  for (int i = 0; i < kEdits && !HasFailure(); ++i) {
    Step();
    if (i % 32 == 0) Compare(i % 2048 == 0);
    if (Pick(8000) == 0) SaveAndPerhapsReopen(folder.Path("model.akd"));
  }
  Compare(true);
  EXPECT_EQ(folder.EntryCount(), 1U) << "saves leave nothing else behind";
}

// Addresses that share their slots, put in and taken out, against a plain map.
TEST(InstanceIndexTest, RandomInsertionsAndRemovals_FindWhatIsThere) {
  std::mt19937 random(5);
  std::unordered_map<const AKObject*, ObjectID> plain;
  InstanceIndex index;
  for (ObjectID id = 1; id < 200000; ++id) {
    const auto address = static_cast<std::uintptr_t>(random() % 3000 + 1) * (random() % 2 == 0 ? 16 : 4096);
    const auto* instance = reinterpret_cast<const AKObject*>(address);
    const auto found = plain.find(instance);
    ASSERT_EQ(index.Find(instance), found == plain.end() ? kNoObjectID : found->second);
    if (random() % 2 == 0) {
      index.Remove(instance);
      plain.erase(instance);
    } else if (found == plain.end()) {
      index.Insert(instance, id);
      plain[instance] = id;
    }
  }
  for (const auto& [instance, id] : plain) ASSERT_EQ(index.Find(instance), id);
}

}  // namespace
}  // namespace host
