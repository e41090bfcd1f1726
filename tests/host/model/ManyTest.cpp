// Documents and bundles with very many of everything: against a plain model, and in time.
#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <random>

#include "host/Host.h"
#include "host/HostLog.h"
#include "host/listings/DocumentListing.h"
#include "host/listings/JsonListing.h"
#include "host/panels/HostPanel.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

std::unique_ptr<DocumentObject> Placeholder() {
  auto object = std::make_unique<DocumentObject>();
  object->classID = AKClassID("nobody");
  return object;
}

// Layers that come, go and move, with objects in them, against plain lists.
TEST(ManyLayersTest, RandomEdits_AgreeWithAPlainModel) {
  const auto seed = static_cast<unsigned int>(testing::UnitTest::GetInstance()->random_seed()) + 3;
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const auto pick = [&random](std::size_t count) { return random() % count; };
  const auto at = [](auto& list, std::size_t index) { return list.begin() + static_cast<std::ptrdiff_t>(index); };
  Document document(AGSize{10, 10});
  std::vector<std::pair<LayerID, std::vector<ObjectID>>> plain = {{document.FirstLayer().id, {}}};
  for (int i = 0; i < 3000 && !testing::Test::HasFailure(); ++i) {
    const std::size_t index = pick(plain.size());
    auto& [layer, objects] = plain[index];
    const std::size_t kind = pick(8);
    if (kind < 3) {
      const std::size_t place = pick(3) == 0 ? pick(plain.size() + 1) : plain.size();
      const LayerID id = document.InsertLayer({}, place);
      plain.insert(at(plain, place), {id, {}});
    } else if (kind < 5) {
      objects.push_back(document.InsertObject(Placeholder(), {layer, objects.size()}));
    } else if (kind == 5) {
      const std::size_t place = pick(plain.size());
      document.MoveLayer(layer, place);
      auto moved = std::move(plain[index]);
      plain.erase(at(plain, index));
      plain.insert(at(plain, place), std::move(moved));
    } else if (!objects.empty()) {
      document.RemoveObject(objects.back());
      objects.pop_back();
    } else if (plain.size() > 1) {
      document.RemoveLayer(layer);
      plain.erase(at(plain, index));
    }
    if (i % 10 != 0) continue;
    std::size_t number = 0;
    for (std::size_t l = 0; l < plain.size(); ++l) {
      ASSERT_EQ(document.IndexOfLayer(plain[l].first), l);
      for (const ObjectID object : plain[l].second) {
        ASSERT_EQ(document.NumberOf(object), number);
        ASSERT_EQ(document.ObjectAt(number++).id, object);
      }
    }
    ASSERT_EQ(document.ObjectCount(), number);
  }
  EXPECT_EQ(document.IndexOfLayer(LayerID{1} << 40), plain.size());
}

// An ID of seven characters for each number.
AKClassID IDOf(unsigned int number) { return AKClassID(("m" + std::to_string(number)).c_str()); }

void RegisterClasses(unsigned int count) {
  const std::size_t before = Host::Instance().Classes().Classes().size();
  AKClassID parent = AKObjectSymbolVect::_ClassID();
  for (unsigned int i = 0; i < count; ++i) {
    AKClassInfo info;
    info.classID = IDOf(i);
    info.parentClassID = std::exchange(parent, info.classID);  // each below the one before
    info.className = "Many";
    info.constructor = [] { return static_cast<AKObject*>(nullptr); };
    info.destructor = [](AKObject*) {};
    info.instanceSize = 64;
    AKClass* cls = nullptr;
    ASSERT_EQ(AKClass::ClassSetup(info, 0, &cls), 0);
    AKClass::AddInspectorGUIDesc(cls, new AKGUIDesc);
  }
  AKClassArray all;
  AKClass::GetClassCollection(&all, AKClass::GetClassOfID(IDOf(0)), 0);
  EXPECT_EQ(all.Count(), count);
  Host::Instance().Classes().RemoveAfter(before);
  EXPECT_EQ(AKClass::GetClassOfID(IDOf(0)), nullptr);
}

void AddControls(unsigned int count) {
  AKGUIDesc panel("-multisel:1");
  for (unsigned int i = 0; i < count; ++i) panel.NewController("-id:%u -type:Slider", i);
  double sum = 0;
  for (unsigned int i = 0; i < count; ++i) {
    panel.SetValueAsFloat64(i, 0.5);
    sum += panel.GetValueAsFloat64(i);
  }
  EXPECT_EQ(sum, count * 0.5);
}

// An object in each layer but the first; all are numbered, deleted and brought back.
void EditLayers(unsigned int count) {
  const QuietLog quiet;
  auto document = std::make_unique<Document>(AGSize{10, 10});
  for (unsigned int i = 0; i < count; ++i) {
    const LayerID layer = document->InsertLayer({"Layer"}, i + 1);
    document->InsertObject(Placeholder(), {layer, 0});
    document->SetLayerSettings(layer, {"Other"});
  }
  DocumentSession session(std::move(document));
  ObjectIDs ids;
  for (unsigned int i = 0; i < count; ++i) ids.push_back(session.Doc().ObjectAt(count - 1 - i).id);
  EXPECT_EQ(InDrawingOrder(session.Doc(), ids).back(), ids.front());
  EXPECT_TRUE(session.Objects().Delete(ids));
  EXPECT_TRUE(session.Steps().Undo());
  EXPECT_EQ(session.Doc().ObjectCount(), count);
}

// In any order, through a record and back, and gone again.
void SetProperties(unsigned int count) {
  AKDictionary dictionary;
  const auto key = [count](unsigned int i) { return AKString("k" + std::to_string(i * 7919ULL % count)); };
  for (unsigned int i = 0; i < count; ++i) dictionary.SetValue(key(i), dictionary.GetValue(key(i / 2)));
  EXPECT_EQ(dictionary.Count(), count);
  AKFile stream(AKFile::kModeMemory);
  AKDictionary again;
  ASSERT_EQ(stream.CreateForReadWrite() | dictionary.WriteToFile(stream) | stream.SetPos(0), 0);
  ASSERT_EQ(again.ReadFromFile(stream), 0);
  again.Merge(dictionary, false);
  EXPECT_EQ(again, dictionary);
  for (unsigned int i = 0; i < count; ++i) EXPECT_EQ(again.RemoveValue(key(i)), 0);
  EXPECT_TRUE(again.IsEmpty());
}

// Every second one is brought to the front, copied and deleted; all that is undone, listed, written and read.
void EditObjects(unsigned int count) {
  const auto bundle = Taken(Bundle::Load(AK_BUNDLE));
  auto document = std::make_unique<Document>(AGSize{10, 10});
  for (unsigned int i = 0; i < count; ++i) {
    document->AppendObject(Taken(Document::NewObject(AKClassID("stdRect"), "")));
  }
  DocumentSession session(std::move(document));
  ObjectIDs ids;
  for (unsigned int i = 0; i < count; i += 2) ids.push_back(session.Doc().ObjectAt(i).id);
  EXPECT_TRUE(session.Arrangement().ChangeOrder(ids, OrderChange::kToFront));
  EXPECT_TRUE(session.Clipboard().Duplicate(ids, 1, 1));
  EXPECT_EQ(session.Doc().ObjectCount(), count + ids.size());
  EXPECT_TRUE(session.Objects().Delete(ids));
  EXPECT_TRUE(session.Steps().GoTo(0));
  EXPECT_EQ(session.Doc().ObjectAt(2).id, ids[1]);
  EXPECT_GT(JsonOfDocument(session).size() + FullListing(session.Doc()).size(), 200 * std::size_t{count});
  AKFile stream(AKFile::kModeMemory);
  ASSERT_EQ(stream.CreateForReadWrite() | WriteDocument(session.Doc(), stream, nullptr) | stream.SetPos(0), 0);
  EXPECT_EQ(Taken(ReadDocument(stream, "many"))->ObjectCount(), count);
}

double Seconds(void (*work)(unsigned int), unsigned int count) {
  const std::clock_t start = std::clock();
  work(count);
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// What grows as the square takes a hundred times as long for ten times as many. Whatever else the machine does, one
// try of three shows it.
TEST(ManyTest, TenTimesAsMany_TakeFarLessThanAHundredTimesAsLong) {
  const struct {
    const char* name;
    void (*work)(unsigned int count);
    unsigned int count;
  } cases[] = {{"classes", &RegisterClasses, 10000},
               {"controls", &AddControls, 10000},
               {"layers", &EditLayers, 10000},
               {"objects", &EditObjects, 10000},
               {"properties", &SetProperties, 10000}};
  for (const auto& [name, work, count] : cases) {
    double ratio = 1e9;
    for (int i = 0; i < 3 && ratio > 40; ++i) {
      const double few = Seconds(work, count);
      ratio = std::min(ratio, Seconds(work, 10 * count) / std::max(few, 1e-3));
    }
    EXPECT_LT(ratio, 40) << name;
  }
}

}  // namespace
}  // namespace host
