// Every kind of file that is read, damaged in every bit, cut at every byte and spliced at random: it is read or refused
// with a line, and what is read can be written and read again. A crash, a sanitizer's report or the alarm ends the
// test.
//
// AK_DAMAGE_SPLICES=N and AK_DAMAGE_SEED=N are for long runs; with the first all bits of the large images are tried
// too.
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <random>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/images/AGImage.h"
#include "host/HostLog.h"
#include "host/commands/EditCommand.h"
#include "host/listings/ChunkDump.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/scripts/ScriptLine.h"
#include "host/storage/Recovery.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueHelpers.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

constexpr unsigned int kLongestRead = 20;  // seconds; the damaged files are a few hundred bytes each
constexpr std::size_t kSmallImage = 200;

struct Kind {
  std::string name;
  std::string sound;
  std::function<std::string(const std::string&)> read;  // why not; empty where it can be read
  bool allBits = true;
};

class DamageTest : public SessionFixture {
 protected:
  void Add(const std::string& name, const std::string& sound, std::function<std::string(const std::string&)> read) {
    ASSERT_EQ(read(sound), "") << name;
    kinds_.push_back({name, sound, std::move(read)});
  }

  void Try(const Kind& kind, const std::string& bytes) {
    alarm(kLongestRead);
    const std::string why = kind.read(bytes);
    alarm(0);
    EXPECT_EQ(why.find('\n'), std::string::npos) << kind.name << ": " << why;
    ++(why.empty() ? taken_ : refused_);
  }

  void TryAllBits(const Kind& kind) {
    for (std::size_t size = 0; size < kind.sound.size(); ++size) Try(kind, kind.sound.substr(0, size));
    std::string bytes = kind.sound;
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
      const char kept = bytes[bit / 8];
      bytes[bit / 8] = static_cast<char>(kept ^ (1 << bit % 8));
      Try(kind, bytes);
      bytes[bit / 8] = kept;
    }
  }

  std::size_t Pick(std::size_t count) { return random_() % count; }

  // Parts doubled, taken out, put elsewhere or made anything; counts made extreme.
  std::string Spliced(const std::string& sound) {
    static const std::string extremes[] = {"\xFF\xFF\xFF\xFF", "\xFF\xFF\xFF\x7F", std::string(4, '\0'),
                                           std::string("\0\0\0\x80", 4), std::string("\0\0\xF8\x7F", 4)};
    std::string bytes = sound;
    for (std::size_t i = Pick(4) + 1; i > 0 && !bytes.empty(); --i) {
      const std::size_t at = Pick(bytes.size());
      const std::size_t size = Pick(std::min<std::size_t>(bytes.size() - at, 64)) + 1;
      const std::string part = bytes.substr(at, size);
      switch (Pick(5)) {
        case 0:
          bytes.erase(at, size);
          break;
        case 1:
          bytes.insert(Pick(bytes.size()), part);
          break;
        case 2:
          bytes.replace(Pick(bytes.size()), size, part);
          break;
        case 3:
          bytes.replace(at / 4 * 4, 4, extremes[Pick(std::size(extremes))]);
          break;
        default:
          for (std::size_t k = at; k < at + size; ++k) bytes[k] = static_cast<char>(random_());
      }
    }
    return bytes;
  }

  static std::string BytesOf(const Document& document) {
    AKFile stream(AKFile::kModeMemory);
    EXPECT_EQ(stream.CreateForReadWrite() | WriteDocument(document, stream, nullptr), 0);
    return file_test::StreamContent(stream);
  }

  // What is taken draws, and comes back as it was written.
  static std::string TakeDocument(const Document& document) {
    const AGBitmap bitmap(32, 32, AGBitmap::kFlagZeroFill);
    document.ForEachObject([&](const DocumentObject& object) {
      DrawObject(object, bitmap.GetContextOfBitmap(), object.brush, object.pen);
    });
    const std::string bytes = BytesOf(document);
    AKFile stream(bytes.data(), static_cast<unsigned int>(bytes.size()));
    stream.OpenForRead();
    EXPECT_EQ(BytesOf(*Taken(ReadDocument(stream, "again"))), bytes);
    return "";
  }

  static std::string ReadDocumentBytes(const std::string& bytes) {
    AKFile stream(bytes.data(), static_cast<unsigned int>(bytes.size()));
    stream.OpenForRead();
    const auto document = ReadDocument(stream, "it");
    return document ? TakeDocument(**document) : document.Why().English();
  }

  template <typename Value>
  static std::string ReadValue(const std::string& bytes) {
    AKFile stream(bytes.data(), static_cast<unsigned int>(bytes.size()));
    Value value;
    return stream.OpenForRead() == 0 && value.ReadFromFile(stream) == 0 ? "" : "refused";
  }

  void AddDocuments() {
    DocumentSession session(MakeDocument(1));
    session.Layers().Add(
        "\xC3\x9C"
        "ber");
    AddPlaceholder(&session);
    const std::string document = Bytes(session);
    Add("document", document, &ReadDocumentBytes);
    Add("chunk dump", document, [](const std::string& bytes) { return DumpChunks(bytes, nullptr).reason; });
    Add("clipboard", session.Clipboard().Copy({ID(session, 0)}), [this](const std::string& bytes) {
      DocumentSession into(MakeDocument(1));
      const auto done = into.Clipboard().Paste(bytes, 5, 5);
      EXPECT_TRUE(done || into.Doc().ObjectCount() == 1) << "a refused paste changed something";
      return done ? TakeDocument(into.Doc()) : done.Why().English();
    });
    Recovery recovery(session, 0);
    recovery.Update();
    std::string bytes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.Path(""))) {
      if (entry.path().extension() == ".akrecover") bytes = file_test::ReadBytes(entry.path());
    }
    const std::string copy = folder_.Path("copy.akrecover");
    Add("recovery file", bytes, [copy](const std::string& damaged) {
      file_test::WriteBytes(copy, damaged);
      const auto restored = OpenRecovery({copy, "", 0});
      return restored ? TakeDocument((*restored)->Doc()) : restored.Why().English();
    });
  }

  void AddValues() {
    AKDictionary dictionary;
    AKValueArray array(2);
    array[0].SetasFloat(1);
    array[1].SetasAKString("text");
    dictionary.SetValue("A.B", AKValueSetasAKValueArray(array));
    AKFile stream(AKFile::kModeMemory);
    ASSERT_EQ(stream.CreateForReadWrite() | dictionary.WriteToFile(stream), 0);
    Add("dictionary", file_test::StreamContent(stream), &ReadValue<AKDictionary>);
    Add("value", file_test::StreamContent(stream), &ReadValue<AKValue>);
  }

  void AddScript() {
    const std::string lines =
        "add stdRect --bounds '0,0,20,20' --set Rounding=0.5\nbegin \"It\"\nmove 0 30,-4\nresize all 0,0,9,9\n"
        "rotate 0 30\nset 0 Pen.Size=3 'Brush.Color=(1;2;3;4)'\nend\nundo\nredo\nlayer add N\nalign all left --page\n";
    Add("script", lines, [this](const std::string& text) -> std::string {
      EditContext context;
      context.session = std::make_unique<DocumentSession>(MakeDocument(2));
      for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::vector<std::string> words;
        if (const auto done = SplitScriptLine(text.substr(begin, end - begin), &words); !done)
          return done.Why().English();
        begin = end + 1;
        const EditCommand* command = words.empty() ? nullptr : FindEditCommand(words[0]);
        if (command == nullptr || command->use == EditUse::kWithoutDocument) continue;
        if (command == &kSaveEdit || command == &kDrawEdit || command == &kExportEdit || command == &kCopyEdit)
          continue;
        const auto done = RunInContext(*command, context, {words.begin() + 1, words.end()});
        if (!done) return done.Why().English();
      }
      return TakeDocument(context.Doc());
    });
  }

  void AddImages() {
    const std::string path = folder_.Path("image");
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(AK_SOURCE_DIR "/tests/images"))
      files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const std::string& file : files) {
      Add(std::filesystem::path(file).filename(), file_test::ReadBytes(file), [path](const std::string& bytes) {
        file_test::WriteBytes(path, bytes);
        AGImage image;
        const bool read = image.SetupFromFile(AKFilePath(path.c_str()));
        EXPECT_EQ(read, image.Width() > 0 && image.Height() > 0);
        return read ? "" : "refused";
      });
      kinds_.back().allBits = kinds_.back().sound.size() <= kSmallImage;
    }
  }

  const file_test::TempFolder folder_;
  std::mt19937 random_;
  std::vector<Kind> kinds_;
  std::size_t taken_ = 0;
  std::size_t refused_ = 0;
};

TEST_F(DamageTest, AnyDamage_IsBorneOrRefused) {
  const char* splices = std::getenv("AK_DAMAGE_SPLICES");
  const char* seed = std::getenv("AK_DAMAGE_SEED");
  const bool isLong = splices != nullptr;
  const unsigned long count = isLong ? std::strtoul(splices, nullptr, 10) : 2000;
  const auto from =
      seed != nullptr ? static_cast<unsigned int>(std::strtoul(seed, nullptr, 10)) : std::random_device()();
  std::printf("damage: seed %u\n", from);
  SCOPED_TRACE("seed " + std::to_string(from));
  random_.seed(from);
  ASSERT_EQ(setenv("XDG_DATA_HOME", folder_.Path("").c_str(), 1), 0);
  const QuietLog quiet;
  HostLog::Instance().sink = [](const std::string&) {};
  AddDocuments();
  AddValues();
  AddScript();
  AddImages();
  for (const Kind& kind : kinds_) {
    if (kind.allBits || isLong) TryAllBits(kind);
  }
  std::printf("damage: all bits and prefixes: %zu read, %zu refused\n", taken_, refused_);
  taken_ = refused_ = 0;
  for (unsigned long i = 0; i < count && !HasFailure(); ++i) {
    const Kind& kind = kinds_[i % kinds_.size()];
    Try(kind, Spliced(kind.sound));
  }
  std::printf("damage: splices of %zu kinds: %zu read, %zu refused\n", kinds_.size(), taken_, refused_);
  HostLog::Instance().sink = nullptr;
  unsetenv("XDG_DATA_HOME");
}

}  // namespace
}  // namespace host
