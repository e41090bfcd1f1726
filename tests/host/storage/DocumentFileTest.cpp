// Documents on disk: they come back, damage is found, unknown classes survive, old files survive failures.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <tuple>

#include "host/bundles/Bundle.h"
#include "host/listings/DocumentListing.h"
#include "host/storage/DocumentFile.h"
#include "tests/host/ResultTestSupport.h"

namespace host {
namespace {

using Bytes = std::string;

class DocumentFileTest : public testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/documentXXXXXX";
    folder_ = mkdtemp(pattern);
    bundle_ = Taken(Bundle::Load(AK_BUNDLE));
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::string Path(const char* name) const { return folder_ + "/" + name; }

  static Bytes Read(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  }
  static void Write(const std::string& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  std::unique_ptr<Document> MakeDocument() {
    auto document = std::make_unique<Document>(AGSize{300, 200});
    for (int i = 0; i < 3; ++i) {
      auto object = Taken(Document::NewObject(AKClassID("stdRect"), i == 1 ? "" : "-default"));
      if (!object) return nullptr;
      object->bounds = {10.0 * i, 1, 50.0 + i, 99.25};
      object->angle = 0.1 * i;
      object->pen.SetSize(1.5 + i);
      if (i == 2) document->InsertLayer({"Über", false, true}, 1);
      const ObjectMarks marks[] = {
          {true, false, {7, 8}}, {false, true, {7}}, {false, false, {}, {0.25, i == 2, false, {3, 1.5}}}};
      object->marks = marks[i];
      if (i != 1) object->marks.label = std::make_shared<ObjectLabel>(ObjectLabel{"Zwei\nZeilen", "Serif", 7.0 + i});
      document->AppendObject(std::move(object));
    }
    document->SetAids({LengthUnit::kInch, 12.5, {7, -8.25}, {1e6}});
    return document;
  }

  std::string folder_;
  std::unique_ptr<Bundle> bundle_;
};

// Laid out by hand from the format's description.
TEST_F(DocumentFileTest, Bytes_OneObject_AreAsDescribed) {
  Document document({2, 1});
  document.SetPage({2, 1}, {1, 2, 3, 4});
  document.SetLayerSettings(document.FirstLayer().id, {"Zeile", true, true});
  auto object = Taken(Document::NewObject(AKClassID("stdRect"), "-default"));
  object->bounds = {0, 0, 1, 2};
  object->brush.SetStyleNone();
  document.AppendObject(std::move(object));
  ASSERT_TRUE(WriteDocument(document, Path("a")));
  const Bytes bytes = Read(Path("a"));
  const std::size_t objectSize = 8 + 8 + 32 + 8 + 40 + 80 + 8 + 16;
  ASSERT_EQ(bytes.size(), 36 + 16 + 16 + objectSize);
  const auto at = [&bytes](std::size_t offset, std::size_t size) { return bytes.substr(offset, size); };
  EXPECT_EQ(at(0, 8), Bytes("HDoc\x04\x01\0\0", 8));
  EXPECT_EQ(at(8, 20), Bytes("\2\0\0\0\0\0\0\0\0\0\0\x40\0\0\0\0\0\0\xf0\x3f", 20));
  EXPECT_EQ(at(28, 8), Bytes("\1\2\3\4\1\0\0\0", 8));
  EXPECT_EQ(at(36, 16), Bytes("HLay\xe0\0\0\0\3\0\0\0\1\0\0\0", 16));
  EXPECT_EQ(at(52, 16), Bytes("strg\x08\0\0\0Zeile\0\0\0", 16));
  EXPECT_EQ(at(68, 16), Bytes("HObj\xc0\0\0\0stdRect\0", 16));
  EXPECT_EQ(at(244, 24), Bytes("HRec\x10\0\0\0\0\0\0\x3f\0\0\0\0\0\0\0\0\0\0\0\0", 24));

  // Hidden, and in the second of two groups, one within the other.
  document.SetMarks(document.ObjectAt(0).id, {true, false, {5, 4}});
  ASSERT_TRUE(WriteDocument(document, Path("m")));
  const Bytes marked = Read(Path("m"));
  EXPECT_EQ(marked.substr(8, 4), Bytes("\3\0\0\0", 4));
  EXPECT_EQ(marked.substr(bytes.size()), Bytes("HMrk\x1c\0\0\0\2\0\0\0\0\0\0\0\1\0\0\0"
                                               "\1\0\0\0\0\0\0\0\1\0\0\0\2\0\0\0",
                                               36));
  constexpr std::size_t kFlags = 28;  // the one number that may be any
  for (std::size_t number = 8; number < 36; number += 4) {
    Bytes damaged = marked;
    damaged.replace(bytes.size() + number, 4, "\xff\xff\xff\xff");
    Write(Path("wrong"), damaged);
    const std::string said = Said(ReadDocument(Path("wrong")));
    EXPECT_EQ(said.find("are damaged") != std::string::npos, number != kFlags) << number << said;
  }

  // Mirrored and dashed, on a page with guides: no number of what follows may be any but the flags.
  document.SetMarks(document.ObjectAt(0).id, {false, false, {}, {0.5, true, false, {3, 1}}});
  document.SetAids({LengthUnit::kMillimetre, 1, {2}, {}});
  ASSERT_TRUE(WriteDocument(document, Path("l")));
  const Bytes looked = Read(Path("l"));
  EXPECT_EQ(looked.substr(8, 4), Bytes("\4\0\0\0", 4));
  const Bytes rest = looked.substr(bytes.size());
  EXPECT_EQ(rest, Bytes("HMrk\x08\0\0\0\0\0\0\0\0\0\0\0"
                        "HLok\x28\0\0\0\1\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0\0\xe0\x3f"
                        "\2\0\0\0\0\0\0\0\0\0\x08\x40\0\0\0\0\0\0\xf0\x3f"
                        "HAid\x1c\0\0\0\2\0\0\0\0\0\0\0\0\0\xf0\x3f"
                        "\1\0\0\0\0\0\0\0\0\0\0\x40\0\0\0\0",
                        100));
  const std::pair<std::size_t, std::size_t> numbers[] = {{24, 4}, {28, 4}, {36, 8}, {44, 4}, {48, 8}, {56, 8},
                                                         {72, 4}, {76, 8}, {84, 4}, {88, 8}, {96, 4}};
  for (const auto& [place, size] : numbers) {
    Bytes damaged = looked;
    damaged.replace(bytes.size() + place, size, size, '\xff');
    Write(Path("wrong"), damaged);
    EXPECT_NE(Said(ReadDocument(Path("wrong"))).find("are damaged"), std::string::npos) << place;
  }

  // A label: of its numbers only the index, the lengths and the size may not be any.
  auto label = std::make_shared<ObjectLabel>();
  *label = {"\u00C4", "", 18, true, false, {128, 0, 0}, LabelAcross::kLeft, LabelDown::kTop};
  document.SetMarks(document.ObjectAt(0).id, {false, false, {}, {}, label});
  document.SetAids({});
  ASSERT_TRUE(WriteDocument(document, Path("t")));
  const Bytes labelled = Read(Path("t"));
  EXPECT_EQ(labelled.substr(8, 4), Bytes("\5\0\0\0", 4));
  const std::size_t place = bytes.size() + 16 + 12;
  const Bytes described(
      "HLbl\x22\0\0\0\1\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0\0\x32\x40"
      "\x80\0\0\xff\0\0\0\0\2\0\0\0\xc3\x84",
      42);
  EXPECT_EQ(labelled.substr(place, 42), described);
  const std::tuple<std::size_t, Bytes, bool> changes[] = {{8, "\2", false},
                                                          {12, "\1", false},
                                                          {16, "\3\x25", true},
                                                          {16, Bytes("\0\3", 2), false},
                                                          {16, Bytes("\0\x0c", 2), false},
                                                          {16, Bytes("\0\x30", 2), false},
                                                          {26, "\xf8\x7f", false},
                                                          {26, "\xd0\x40", false},
                                                          {32, "\1", false},
                                                          {36, "\3", false},
                                                          {36, Bytes("\0", 1), false},
                                                          {40, "\xff", false},
                                                          {40, Bytes("a\0", 2), false}};
  for (const auto& [offset, with, isRead] : changes) {
    Bytes damaged = labelled;
    Write(Path("wrong"), damaged.replace(place + offset, with.size(), with));
    const std::string said = Said(ReadDocument(Path("wrong")));
    EXPECT_EQ(said.find("are damaged") == std::string::npos, isRead) << offset << said;
  }
  document.SetMarks(document.ObjectAt(0).id, {});

  // The same in the first version, without the layer.
  const Bytes flat = Bytes("HDoc\xe4\0\0\0\1\0\0\0", 12) + at(12, 24) + at(68, objectSize);
  Write(Path("flat"), flat);
  const auto old = Taken(ReadDocument(Path("flat")));
  EXPECT_EQ(FullListing(*old), FullListing(document));
  EXPECT_TRUE(old->FirstLayer().IsEditable());
}

TEST_F(DocumentFileTest, RoundTrip_KeepsEveryProperty_AndIsStable) {
  const auto document = MakeDocument();
  ASSERT_TRUE(WriteDocument(*document, Path("a")));
  const auto reopened = Taken(ReadDocument(Path("a")));
  EXPECT_EQ(FullListing(*document), FullListing(*reopened));
  ASSERT_TRUE(WriteDocument(*reopened, Path("b")));
  EXPECT_EQ(Read(Path("a")), Read(Path("b")));
}

TEST_F(DocumentFileTest, Truncated_AtEveryByte_IsRefused) {
  ASSERT_TRUE(WriteDocument(*MakeDocument(), Path("a")));
  const Bytes whole = Read(Path("a"));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    Write(Path("cut"), whole.substr(0, size));
    const std::string said = Said(ReadDocument(Path("cut")));
    ASSERT_FALSE(said.empty()) << size;
    ASSERT_EQ(said.find('\n'), std::string::npos) << said;
  }
  Write(Path("long"), whole + "x");
  EXPECT_FALSE(ReadDocument(Path("long")));
}

TEST_F(DocumentFileTest, FlippedBits_ReadOrAreRefused_NeverWorse) {
  ASSERT_TRUE(WriteDocument(*MakeDocument(), Path("a")));
  const Bytes whole = Read(Path("a"));
  unsigned int refused = 0;
  for (std::size_t bit = 0; bit < whole.size() * 8; bit += 3) {
    Bytes damaged = whole;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
    Write(Path("bad"), damaged);
    if (!ReadDocument(Path("bad"))) ++refused;
  }
  EXPECT_GT(refused, 0U);
}

TEST_F(DocumentFileTest, UnknownClass_KeepsPlaceAndBytes) {
  ASSERT_TRUE(WriteDocument(*MakeDocument(), Path("a")));
  Bytes bytes = Read(Path("a"));
  // The second object becomes one of a class that nobody has, with reserved bytes that are not zero.
  const std::size_t second = bytes.find("stdRect", bytes.find("stdRect") + 1);
  bytes.replace(second, 7, "unknown");
  bytes[second + 48 + 6] = 0x5A;
  bytes[second + 48 + 33] = 0x5B;
  Write(Path("b"), bytes);
  const auto document = Taken(ReadDocument(Path("b")));
  EXPECT_TRUE(document->ObjectAt(1).IsPlaceholder());
  EXPECT_FALSE(document->ObjectAt(2).IsPlaceholder());
  ASSERT_TRUE(WriteDocument(*document, Path("c")));
  EXPECT_EQ(Read(Path("c")), bytes);
}

TEST_F(DocumentFileTest, FailedSave_LeavesTheOldFileAndNoOther) {
  const auto document = MakeDocument();
  ASSERT_TRUE(WriteDocument(*document, Path("a")));
  const Bytes before = Read(Path("a"));
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  const rlimit tight{100, old.rlim_max};
  setrlimit(RLIMIT_FSIZE, &tight);
  const std::string said = Said(WriteDocument(*document, Path("a")));
  setrlimit(RLIMIT_FSIZE, &old);
  EXPECT_NE(said.find("File too large"), std::string::npos) << said;
  EXPECT_EQ(Read(Path("a")), before);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_), {}), 1);
}

}  // namespace
}  // namespace host
