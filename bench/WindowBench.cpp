// Frames of the canvas without a window: what is done between an event and the pixels that are handed to the toolkit,
// on one core, beside the time that a frame has.
#include <chrono>
#include <cmath>
#include <cstring>
#include <tuple>

#include "bench/Ratio.h"
#include "host/bundles/BundleSet.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/view/PointerTool.h"
#include "host/view/ShiftedSelection.h"
#include "host/view/TileCache.h"

namespace host {
namespace {

constexpr int kAcross = 125;
constexpr int kDown = 80;  // 10,000 rectangles in all
constexpr double kPitch = 10;
constexpr AGSize kView{1250, 800};
constexpr std::chrono::milliseconds kFrameBudget{10};  // as the window has it

struct Bundles {
  Bundles() {
    if (!set.Load(AK_BUNDLE)) std::abort();
  }
  BundleSet set{""};
};

class Canvas final : public SessionObserver {
 public:
  Canvas(int across, int down, double zoom) {
    static const Bundles bundles;
    session_ = std::make_unique<DocumentSession>(std::make_unique<Document>(AGSize{across * kPitch, down * kPitch}));
    session_->Steps().Begin("Fill");
    for (int i = 0; i < across * down; ++i) {
      const double x = i % across * kPitch;
      const double y = i / across * kPitch;
      std::ignore = session_->Objects().Add(AKClassID("stdRect"), "-default", {{x, y, x + 14, y + 12}, i * 0.1});
    }
    session_->Steps().End();
    session_->Selection().SelectNone();
    session_->AddObserver(this);
    tiles_.SetDocument(&session_->Doc());
    view_.SetZoom(zoom, {0, 0});
    view_.SetOffset(0, static_cast<std::int64_t>(-down * kPitch * zoom));
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas() override { session_->RemoveObserver(this); }

  void OnAreaChanged(const AGRect& area) override { tiles_.Invalidate(area); }
  void OnSelectionShifted() override { shifted_.Follow(*session_); }

  /// Draws what a frame draws and copies the tiles that are new, as textures are made.
  void Frame() {
    const auto seen = tiles_.Look(view_, kView);
    if (!shifted_.IsMoving()) {
      tiles_.DrawWithin(kFrameBudget, seen);
      return Show(seen, &shown_);
    }
    shifted_.DrawWithin(kFrameBudget, view_, kView);
    Show(shifted_.Above(view_, kView), &above_);
  }
  void Show(const std::vector<TileCache::Tile*>& seen, std::map<std::pair<int, int>, std::uint64_t>* versions) {
    for (const TileCache::Tile* tile : seen) {
      std::uint64_t& shown = (*versions)[{tile->column, tile->row}];
      if (!tile->drawn || shown == tile->version) continue;
      shown = tile->version;
      std::memcpy(texture_.data(), tile->bitmap->Pixels(), texture_.size());
    }
  }
  void DrawAll() {
    for (TileCache::Tile* tile : tiles_.Look(view_, kView)) tiles_.Draw(tile);
  }

  DocumentSession& Session() { return *session_; }
  ViewTransform& View() { return view_; }

 private:
  std::unique_ptr<DocumentSession> session_;
  ViewTransform view_;
  TileCache tiles_{nullptr};
  ShiftedSelection shifted_;
  std::map<std::pair<int, int>, std::uint64_t> shown_;
  std::map<std::pair<int, int>, std::uint64_t> above_;
  std::vector<unsigned char> texture_ =
      std::vector<unsigned char>(std::size_t{TileCache::kSide} * TileCache::kSide * 4);
};

Canvas& TheCanvas() {
  static Canvas canvas(kAcross, kDown, 1);
  return canvas;
}

void DragOne(benchmark::State& state) {
  Canvas& canvas = TheCanvas();
  canvas.View().SetZoom(1, {0, 0});
  canvas.DrawAll();
  PointerTool tool(&canvas.Session(), &canvas.View());
  tool.SetSize(kView);
  tool.SetSnap({0, true});
  tool.Press(canvas.View().ToView({607, 406}), {});
  int frame = 0;
  for (auto _ : state) {
    const double angle = ++frame * 0.05;
    tool.Motion(canvas.View().ToView({607 + 200 * std::cos(angle), 406 + 200 * std::sin(angle)}), {});
    canvas.Frame();
  }
  if (!tool.IsDragging()) state.SkipWithError("nothing is dragged");
  tool.Cancel();
}

Canvas& TheLargeCanvas() {
  static Canvas canvas(400, 250, 0.3);
  canvas.Session().Selection().SelectAll();
  return canvas;
}

// Something is done with all of 100,000, all in sight: the tiles of what moves are drawn while it does.
void DragAllFrom(benchmark::State& state, const AGPoint& start) {
  Canvas& canvas = TheLargeCanvas();
  PointerTool tool(&canvas.Session(), &canvas.View());
  tool.Press(start, {});
  int frame = 0;
  for (auto _ : state) {
    const double angle = ++frame * 0.05;
    const AGPoint point{600 + 200 * std::cos(angle), 400 + 200 * std::sin(angle)};
    tool.Motion(point, {});
    benchmark::DoNotOptimize(tool.CursorAt(point));
    benchmark::DoNotOptimize(SelectionFrame::Of(canvas.Session()));
    canvas.Frame();
  }
  if (!tool.IsDragging()) state.SkipWithError("nothing is dragged");
  tool.Cancel();
}

void DragAll(benchmark::State& state) { DragAllFrom(state, TheLargeCanvas().View().ToView({2006, 1255})); }

AGPoint PlaceOf(Handle handle) {
  Canvas& canvas = TheLargeCanvas();
  return SelectionFrame::Of(canvas.Session()).PositionOf(handle, canvas.View());
}
void StretchAll(benchmark::State& state) { DragAllFrom(state, PlaceOf(Handle::kUpperRight)); }
void TurnAll(benchmark::State& state) { DragAllFrom(state, PlaceOf(Handle::kRotate)); }

// What the release of the button does then.
void ReleaseAll(benchmark::State& state, Handle handle, const AGPoint& by) {
  Canvas& canvas = TheLargeCanvas();
  for (auto _ : state) {
    PointerTool tool(&canvas.Session(), &canvas.View());
    const AGPoint start = PlaceOf(handle);
    tool.Press(start, {});
    tool.Motion({start.x + by.x, start.y + by.y}, {});
    if (!tool.Finish()) state.SkipWithError("refused");
    state.PauseTiming();
    canvas.Session().Steps().Undo();
    state.ResumeTiming();
  }
}
void ReleaseStretched(benchmark::State& state) { ReleaseAll(state, Handle::kUpperRight, {-30, 20}); }
void ReleaseTurned(benchmark::State& state) { ReleaseAll(state, Handle::kRotate, {60, 20}); }

void SetFromField(benchmark::State& state) {
  Canvas& canvas = TheCanvas();
  canvas.View().SetZoom(1, {0, 0});
  canvas.DrawAll();
  const ObjectID id = canvas.Session().Doc().ObjectAt(5000).id;
  double width = 14;
  for (auto _ : state) {
    width = width > 60 ? 14 : width + 1;
    if (!canvas.Session().Objects().SetPlacement(id, {{500, 400, 500 + width, 412}, 0.3}))
      state.SkipWithError("refused");
    canvas.Frame();
  }
}

void Zoom(benchmark::State& state) {
  Canvas& canvas = TheCanvas();
  int frame = 0;
  for (auto _ : state) {
    canvas.View().SetZoom(1 + 0.2 * std::sin(++frame * 0.1), {625, 400});
    canvas.Frame();
  }
  canvas.View().SetZoom(1, {625, 400});
}

void Wait(benchmark::State& state, double seconds) {
  for (auto _ : state) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (std::chrono::steady_clock::now() < end) benchmark::ClobberMemory();
  }
}

// What a window without tiles would do for each motion.
void DrawEverything(benchmark::State& state) {
  Canvas& canvas = TheCanvas();
  AGBitmap bitmap(kView, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  for (auto _ : state) DrawObjects(canvas.Session().Doc(), bitmap.GetContextOfBitmap(), 1);
}

const bool kDrag = ratio::Pair("drag one of 10,000 visible / 1/60 s", 1.0, DragOne,
                               [](benchmark::State& state) { Wait(state, 1.0 / 60); });
const bool kDragAll = ratio::Pair("drag one of 10,000 visible / draw all", 0.1, DragOne, DrawEverything);
const bool kDragAllOfMany = ratio::Pair("drag 100,000 of 100,000 visible / 1/10 s", 1.0, DragAll,
                                        [](benchmark::State& state) { Wait(state, 0.1); });
const bool kStretchAllOfMany = ratio::Pair("stretch 100,000 of 100,000 visible / 1/10 s", 1.0, StretchAll,
                                           [](benchmark::State& state) { Wait(state, 0.1); });
const bool kTurnAllOfMany = ratio::Pair("turn 100,000 of 100,000 visible / 1/10 s", 1.0, TurnAll,
                                        [](benchmark::State& state) { Wait(state, 0.1); });
const bool kReleaseStretched = ratio::Pair("the end of that stretch / 1 s", 1.0, ReleaseStretched,
                                           [](benchmark::State& state) { Wait(state, 1); });
const bool kReleaseTurned =
    ratio::Pair("the end of that turn / 1 s", 1.0, ReleaseTurned, [](benchmark::State& state) { Wait(state, 1); });
const bool kField = ratio::Pair("number field, 10,000 visible / 1/60 s", 1.0, SetFromField,
                                [](benchmark::State& state) { Wait(state, 1.0 / 60); });
const bool kZoom =
    ratio::Pair("zoom 10,000 visible / 1/30 s", 1.0, Zoom, [](benchmark::State& state) { Wait(state, 1.0 / 30); });

}  // namespace
}  // namespace host
