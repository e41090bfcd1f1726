// Everything that a session can do, at random and for as long as one likes, on objects of three bundles, against plain
// notes of what was there: an edit changes what it names as it should and nothing else, one that is refused nothing at
// all; undo and redo lead to the very bytes that were there; a saved document comes back; memory stays flat.
//
// AK_SOAK_SECONDS and AK_SOAK_SEED are for long runs.
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <random>

#include "host/model/ObjectRecord.h"
#include "host/storage/Recovery.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

constexpr std::size_t kMostObjects = 60;
constexpr std::size_t kMostLayers = 6;
constexpr int kEditsOfARound = 4000;  // then the document is new, and memory is looked at
constexpr std::size_t kMostGrowth = 1 << 20;

struct Note {
  ObjectID id;
  LayerID layer;
  ObjectPlacement placement;
  std::string state;  // record, brush and pen
};
using Notes = std::vector<Note>;  // in drawing order

bool Near(double a, double b) { return std::abs(a - b) <= 1e-6 * std::max({1.0, std::abs(a), std::abs(b)}); }
AGPoint CentreOf(const AGRect& r) { return {(r.x0 + r.x1) / 2, (r.y0 + r.y1) / 2}; }

class SoakTest : public SessionFixture {
 protected:
  void SetUp() override {
    SessionFixture::SetUp();
    for (const char* name : {"Times.so", "Star.so"})
      others_.push_back(Taken(Bundle::Load(AK_TEST_BUNDLES "/" + std::string(name))));
  }

  std::size_t Pick(std::size_t count) { return random_() % count; }
  double Number() { return (static_cast<double>(Pick(1601)) - 800) / 8; }

  std::string BytesNow() const {
    AKFile stream(AKFile::kModeMemory);
    EXPECT_EQ(stream.CreateForReadWrite() | WriteDocument(session_->Doc(), stream, nullptr), 0);
    return file_test::StreamContent(stream);
  }

  Notes NotesNow() const {
    Notes notes;
    for (const Layer* layer : session_->Doc().Layers()) {
      layer->objects.ForEach([&](const DocumentObject& o) {
        AKFile stream(AKFile::kModeMemory);
        auto still = CopyState(o);
        still->bounds = {};
        still->angle = 0;
        EXPECT_EQ(stream.CreateForReadWrite() | WriteObjectChunk(stream, *still, o.record), 0);
        notes.push_back({o.id, layer->id, o.Placement(), file_test::StreamContent(stream)});
      });
    }
    return notes;
  }

  bool IsNamed(ObjectID id) const { return std::find(ids_.begin(), ids_.end(), id) != ids_.end(); }

  bool MayEdit() const {
    return std::all_of(ids_.begin(), ids_.end(), [this](ObjectID id) { return session_->Selection().IsEditable(id); });
  }

  LayerID AnyLayer() { return session_->Doc().Layers()[Pick(session_->Doc().Layers().size())]->id; }

  // Notes of the objects that are there before and after; the others of either come back in `*rest`.
  static Notes Kept(const Notes& of, const Notes& other, std::size_t* rest) {
    Notes kept;
    for (const Note& note : of) {
      const bool isThere = std::any_of(other.begin(), other.end(), [&](const Note& n) { return n.id == note.id; });
      if (isThere) kept.push_back(note);
    }
    *rest = of.size() - kept.size();
    return kept;
  }

  using Check = std::function<bool(const Note& before, const Note& after)>;
  enum Change { kPlacement = 1, kState = 2, kOrder = 4 };

  struct Outcome {
    bool done;
    int changes = 0;        // what may change of the named objects
    Check check = nullptr;  // of each of them
    std::size_t gone = 0;   // as many objects as that
    std::size_t come = 0;
  };

  // What the edit left, against what was there.
  void Compare(const Notes& before, const Outcome& outcome) {
    const Notes after = NotesNow();
    std::size_t gone = 0;
    std::size_t come = 0;
    Notes old = Kept(before, after, &gone);
    Notes now = Kept(after, before, &come);
    ASSERT_EQ(gone, outcome.gone);
    ASSERT_EQ(come, outcome.come);
    if ((outcome.changes & kOrder) != 0) {
      const auto byID = [](const Note& a, const Note& b) { return a.id < b.id; };
      std::sort(old.begin(), old.end(), byID);
      std::sort(now.begin(), now.end(), byID);
    }
    for (std::size_t i = 0; i < old.size(); ++i) {
      const bool named = IsNamed(old[i].id);
      ASSERT_EQ(old[i].id, now[i].id) << "order";
      const int may = named ? outcome.changes : outcome.changes & kOrder;
      ASSERT_TRUE((may & kPlacement) != 0 || old[i].placement == now[i].placement) << "object " << i;
      ASSERT_TRUE((may & kState) != 0 || old[i].state == now[i].state) << "object " << i;
      ASSERT_TRUE((may & kOrder) != 0 || old[i].layer == now[i].layer) << "object " << i;
      ASSERT_TRUE(!named || !outcome.check || outcome.check(old[i], now[i])) << "object " << i;
    }
  }

  Outcome Place() {
    SessionObjects& objects = session_->Objects();
    const double dx = Number();
    const double dy = Number();
    switch (Pick(4)) {
      case 0:
        return {
            bool(objects.Move(ids_, dx, dy)), kPlacement, [=](const Note& a, const Note& b) {
              const AGRect& r = a.placement.bounds;
              return b.placement == ObjectPlacement{{r.x0 + dx, r.y0 + dy, r.x1 + dx, r.y1 + dy}, a.placement.angle};
            }};
      case 1:
        return {bool(objects.SetAngle(ids_, dx)), kPlacement, [=](const Note& a, const Note& b) {
                  return b.placement == ObjectPlacement{a.placement.bounds, dx};
                }};
      case 2:
        return {bool(objects.Rotate(ids_, dx / 50, {dy, 5})), kPlacement, [=](const Note& a, const Note& b) {
                  const AGPoint from = CentreOf(a.placement.bounds);
                  const AGPoint to = CentreOf(b.placement.bounds);
                  return Near(std::hypot(from.x - dy, from.y - 5), std::hypot(to.x - dy, to.y - 5)) &&
                         Near(std::remainder(b.placement.angle - a.placement.angle - dx / 50, 2 * M_PI), 0);
                }};
      default:
        return {bool(objects.Resize(ids_, {0, 0, 100, 100}, {10, 20, 60, 220})), kPlacement,
                [](const Note& a, const Note& b) {
                  const AGPoint from = CentreOf(a.placement.bounds);
                  const AGPoint to = CentreOf(b.placement.bounds);
                  return Near(to.x, 10 + from.x / 2) && Near(to.y, 20 + from.y * 2);
                }};
    }
  }

  Outcome Arrange() {
    SessionArrangement& arrangement = session_->Arrangement();
    switch (Pick(3)) {
      case 0:
        return {bool(arrangement.ChangeOrder(ids_, static_cast<OrderChange>(Pick(4)))), kOrder};
      case 1:
        return {bool(arrangement.Align(ids_, Alignment::kLeft, AlignTo::kPage)), kPlacement,
                [](const Note&, const Note& b) { return Near(TurnedBox(b.placement).x0, 0); }};
      default:
        return {bool(arrangement.Distribute(ids_, static_cast<Axis>(Pick(2)))), kPlacement};
    }
  }

  Outcome Style() {
    AGBrush brush;
    AGPen pen;
    switch (Pick(4)) {
      case 0:
        return {bool(session_->Objects().SetBrush(ids_, brush)), kState};
      case 1:
        return {bool(session_->Objects().SetPenField(ids_, PenField::kSize, pen)), kState};
      case 2:
        return {bool(session_->Objects().SetBrushField(ids_, static_cast<BrushField>(Pick(9)), brush)), kState};
      default:
        return {bool(session_->Objects().SetProperties(
                    ids_, {{"Pen.Size", std::to_string(Pick(40))}, {"Angle", std::to_string(Pick(90))}})),
                kState | kPlacement};
    }
  }

  Outcome ComeAndGo() {
    SessionClipboard& clipboard = session_->Clipboard();
    const bool hasRoom = session_->Doc().ObjectCount() + ids_.size() < kMostObjects;
    const std::size_t count = ids_.size();
    bool done = false;
    switch (Pick(4)) {
      case 0:
        if (hasRoom) done = bool(clipboard.Duplicate(ids_, 4, 4));
        return {done, 0, nullptr, 0, done ? count : 0};
      case 1:
        if (hasRoom) done = bool(clipboard.Paste(clipboard.Copy(ids_), 1, 1));
        return {done, 0, nullptr, 0, done ? count : 0};
      case 2:
        done = bool(Pick(2) == 0 ? session_->Objects().Delete(ids_) : clipboard.Cut(ids_, &cut_));
        return {done, 0, nullptr, done ? count : 0, 0};
      default: {
        static const char* const classes[] = {"stdRect", "tTimed", "exStar"};
        session_->Layers().SetActive(AnyLayer());
        const double x = Number();
        if (hasRoom) done = bool(session_->Objects().Add(AKClassID(classes[Pick(3)]), "", {{x, 0, x + 30, 20}, 0.5}));
        return {done, 0, nullptr, 0, done ? 1U : 0U};
      }
    }
  }

  Outcome EditLayers() {
    SessionLayers& layers = session_->Layers();
    const LayerID layer = AnyLayer();
    switch (Pick(8)) {
      case 0:
        return {session_->Doc().Layers().size() < kMostLayers && layers.Add("Layer", Pick(3)) != kNoLayerID};
      case 1: {
        const std::size_t count = session_->Doc().FindLayer(layer)->objects.Count();
        const bool done = bool(layers.Remove(layer));
        return {done, 0, nullptr, done ? count : 0, 0};
      }
      case 2:
        return {bool(layers.SetName(layer, std::to_string(Pick(9))))};
      case 3:
        return {bool(layers.SetVisible(layer, Pick(3) != 0))};
      case 4:
        return {bool(layers.SetLocked(layer, Pick(3) == 0))};
      case 5:
        return {bool(layers.Move(layer, Pick(session_->Doc().Layers().size()))), kOrder};
      case 6:
        session_->SetBackground(kAGColorWhite);
        return {bool(session_->SetPage({100.0 + static_cast<double>(Pick(9)), 80}))};
      default:
        return {bool(layers.MoveObjects(ids_, layer)), kOrder,
                [=](const Note&, const Note& after) { return after.layer == layer; }};
    }
  }

  void Edit() {
    ids_.clear();
    session_->Doc().ForEachObject([&](const DocumentObject& o) {
      if (Pick(4) == 0 && ids_.size() < 8) ids_.push_back(o.id);
    });
    if (Pick(3) == 0) session_->Selection().Select(ids_);
    const Notes before = NotesNow();
    const std::string bytes = BytesNow();
    const bool mayEdit = MayEdit();
    Outcome (SoakTest::*const kinds[])() = {&SoakTest::Place,     &SoakTest::Arrange,   &SoakTest::Style,
                                            &SoakTest::ComeAndGo, &SoakTest::ComeAndGo, &SoakTest::EditLayers};
    const std::size_t kind = Pick(std::size(kinds));
    const Outcome outcome = (this->*kinds[kind])();
    ++(outcome.done ? done_ : refused_);
    ASSERT_TRUE(outcome.done || BytesNow() == bytes) << "a refused edit changed something: " << kind;
    ASSERT_TRUE(kind > 2 || mayEdit || !outcome.done) << "an object of a hidden or locked layer was edited";
    if (outcome.done) Compare(before, outcome);
    if (HasFatalFailure()) std::printf("edit of kind %zu of %zu objects\n", kind, ids_.size());
  }

  // The states as the history should know them: undone ones stay until another edit.
  void Take() {
    if (states_.empty() || changes_ != session_->Steps().ChangeCount()) {
      states_.resize(session_->Steps().Known().Position());
      states_.push_back(std::hash<std::string>()(BytesNow()));
    }
    changes_ = session_->Steps().ChangeCount();
    ASSERT_EQ(session_->Steps().Known().Count() + 1, states_.size());
  }

  void Travel() {
    SessionSteps& steps = session_->Steps();
    const std::size_t position = steps.Known().Position();
    switch (Pick(3)) {
      case 0:
        ASSERT_EQ(steps.Undo(), position > 0);
        break;
      case 1:
        ASSERT_EQ(steps.Redo(), position + 1 < states_.size());
        break;
      default:
        steps.GoTo(Pick(states_.size()));
    }
    changes_ = steps.ChangeCount();
    ASSERT_EQ(std::hash<std::string>()(BytesNow()), states_[steps.Known().Position()]) << "undone and redone";
  }

  void EditsAsOneStep() {
    const std::string before = BytesNow();
    session_->Steps().Begin("Several");
    for (std::size_t i = Pick(4); i > 0 && !HasFatalFailure(); --i) Edit();
    const std::size_t end = Pick(3);
    if (end == 0) session_->Steps().Rewind();
    if (end == 1) session_->Steps().Cancel();
    ASSERT_TRUE(end == 2 || BytesNow() == before) << "taken back";
    if (end != 1) session_->Steps().End();
  }

  void SaveAndReopen() {
    const std::string path = folder_.Path("soak.akd");
    ASSERT_TRUE(session_->File().SaveAs(path));
    ASSERT_FALSE(session_->File().HasUnsavedChanges());
    const std::string bytes = BytesNow();
    ASSERT_EQ(file_test::ReadBytes(path), bytes);
    if (Pick(2) == 0) return;
    recovery_.reset();
    session_ = Taken(DocumentSession::Open(path));
    recovery_.emplace(*session_, 0);
    ASSERT_EQ(BytesNow(), bytes) << "reopened";
    states_.clear();
    Take();
  }

  void Round() {
    session_ = std::make_unique<DocumentSession>(MakeDocument(3));
    recovery_.emplace(*session_, 1000);
    states_.clear();
    Take();
    for (int i = 0; i < kEditsOfARound && !HasFailure(); ++i) {
      const std::size_t kind = Pick(40);
      if (kind < 8) {
        Travel();
      } else if (kind == 8) {
        EditsAsOneStep();
        Take();
      } else if (kind == 9 && Pick(8) == 0) {
        SaveAndReopen();
      } else if (kind == 10 && Pick(8) == 0) {
        recovery_->UpdateNow();
      } else {
        Edit();
        Take();
      }
    }
    recovery_.reset();
    session_.reset();
  }

  const file_test::TempFolder folder_;
  std::vector<std::unique_ptr<Bundle>> others_;
  std::mt19937 random_;
  std::unique_ptr<DocumentSession> session_;
  std::optional<Recovery> recovery_;
  std::vector<std::size_t> states_;  // hashes of the documents
  std::uint64_t changes_ = 0;        // the session's count of them when the last of these was taken
  ObjectIDs ids_;                    // that an edit names
  std::string cut_;
  std::size_t done_ = 0;
  std::size_t refused_ = 0;
};

TEST_F(SoakTest, Anything_AsLongAsOneLikes) {
  const char* seconds = std::getenv("AK_SOAK_SECONDS");
  const char* seed = std::getenv("AK_SOAK_SEED");
  const auto from =
      seed != nullptr ? static_cast<unsigned int>(std::strtoul(seed, nullptr, 10)) : std::random_device()();
  std::printf("soak: seed %u\n", from);
  SCOPED_TRACE("seed " + std::to_string(from));
  random_.seed(from);
  ASSERT_EQ(setenv("XDG_DATA_HOME", folder_.Path("data").c_str(), 1), 0);
  const auto end =
      std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds != nullptr ? std::atof(seconds) : 0);
  std::size_t first = 0;
  std::size_t rounds = 0;
  do {
    Round();
    const std::size_t used = mallinfo2().uordblks;
    if (++rounds == 3) first = used;  // by then all that is made once is there
    EXPECT_TRUE(first == 0 || used <= first + kMostGrowth) << "memory grows";
  } while (!HasFailure() && std::chrono::steady_clock::now() < end);
  std::printf("soak: %zu edits, %zu refused, %zu rounds, heap %zu kB after three, %zu kB at the end\n", done_, refused_,
              rounds, first / 1024, std::size_t{mallinfo2().uordblks} / 1024);
  EXPECT_GT(done_, kEditsOfARound / 20) << "hardly anything was tried";
  unsetenv("XDG_DATA_HOME");
}

}  // namespace
}  // namespace host
