// Documents of 100,000 rectangles: opening, saving, and one edit with its undo.
#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "bench/Ratio.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "host/bundles/Bundle.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/session/DocumentSession.h"
#include "host/storage/DocumentFile.h"
#include "host/storage/WholeFiles.h"

namespace {

constexpr int kMany = 100000;
constexpr int kFew = 100;

template <typename Value>
Value Taken(host::Result<Value> result) {
  if (result) return std::move(*result);
  std::fprintf(stderr, "%s\n", result.Why().English().c_str());
  std::exit(1);
}

// The bundle, and a large document on the disk, removed at the end.
struct Setting {
  Setting() {
    bundle = Taken(host::Bundle::Load(AK_BUNDLE));
    path = "document-bench-" + std::to_string(getpid()) + ".akd";
    Taken(host::WriteDocument(*Make(kMany), path));
    Taken(host::ReadWholeFile(path, &bytes));
  }
  ~Setting() { unlink(path.c_str()); }

  static std::unique_ptr<host::Document> Make(int count) {
    auto document = std::make_unique<host::Document>(AGSize{1000, 1000});
    for (int i = 0; i < count; ++i) {
      auto object = Taken(host::Document::NewObject(AKClassID("stdRect"), "-default"));
      const double x = i % 320 * 3;
      const double y = i / 320 * 3;
      object->bounds = {x, y, x + 8, y + 6};
      document->AppendObject(std::move(object));
    }
    return document;
  }

  std::unique_ptr<host::Bundle> bundle;
  std::string path;
  std::string bytes;
};

Setting& TheSetting() {
  static Setting setting;
  return setting;
}

void DrawWhole(const host::Document& document) {
  const AGBitmap bitmap(AGSize{1000, 1000}, AGBitmap::kFlagLittleEndian);
  host::DrawObjects(document, bitmap.GetContextOfBitmap(), 1);
}

void Open(benchmark::State& state) {
  const std::size_t before = mallinfo2().uordblks;
  const auto kept = Taken(host::ReadDocument(TheSetting().path));
  const std::size_t used = mallinfo2().uordblks - before;
  static const bool told [[maybe_unused]] = [used] {
    std::printf("memory: %zu bytes an object, its instance of 368 included\n", used / kMany);
    return true;
  }();
  for (auto _ : state) benchmark::DoNotOptimize(host::ReadDocument(TheSetting().path));
}

void ReadBytesAndDraw(benchmark::State& state) {
  const auto document = Taken(host::ReadDocument(TheSetting().path));
  for (auto _ : state) {
    std::string bytes;
    Taken(host::ReadWholeFile(TheSetting().path, &bytes));
    benchmark::DoNotOptimize(bytes.data());
    DrawWhole(*document);
  }
}

void Save(benchmark::State& state) {
  const auto document = Taken(host::ReadDocument(TheSetting().path));
  for (auto _ : state) Taken(host::WriteDocument(*document, TheSetting().path));
}

void SaveBytes(benchmark::State& state) {
  const std::string& bytes = TheSetting().bytes;
  for (auto _ : state) Taken(host::ReplaceFile(TheSetting().path, bytes.data(), bytes.size()));
}

// One edit of each kind and its undo, on objects all over the document.
template <typename Edit>
ratio::Body EditIn(int count, Edit edit) {
  return [count, edit](benchmark::State& state) {
    TheSetting();
    host::DocumentSession session(Setting::Make(count));
    std::vector<host::ObjectID> ids;
    session.Doc().ForEachObject([&ids](const host::DocumentObject& object) { ids.push_back(object.id); });
    std::size_t number = 0;
    for (auto _ : state) {
      number = (number + 7919) % ids.size();
      Taken(edit(session, ids[number]));
      session.Steps().Undo();
    }
  };
}

host::Result<> Move(host::DocumentSession& session, host::ObjectID id) { return session.Objects().Move({id}, 1, 1); }

host::Result<> SetRounding(host::DocumentSession& session, host::ObjectID id) {
  return session.Objects().SetProperties({id}, {{"Rounding", "0.25"}});
}

host::Result<> Delete(host::DocumentSession& session, host::ObjectID id) { return session.Objects().Delete({id}); }

const bool kPairs [[maybe_unused]] =
    ratio::Pair("open 100,000 rectangles / read the bytes and draw", 3, &Open, &ReadBytesAndDraw) &&
    ratio::PairByTheClock("save 100,000 rectangles / write the bytes", 3, &Save, &SaveBytes) &&
    ratio::Pair("the same, processor time alone", 0, &Save, &SaveBytes) &&
    ratio::Pair("move and undo, among 100,000 / 100", 3, EditIn(kMany, &Move), EditIn(kFew, &Move)) &&
    ratio::Pair("property and undo, among 100,000 / 100", 3, EditIn(kMany, &SetRounding), EditIn(kFew, &SetRounding)) &&
    ratio::Pair("delete and undo, among 100,000 / 100", 3, EditIn(kMany, &Delete), EditIn(kFew, &Delete));

}  // namespace
