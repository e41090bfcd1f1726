// Documents and sessions for tests.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "graphics/bitmaps/AGBitmap.h"
#include "host/bundles/Bundle.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/session/DocumentSession.h"
#include "host/storage/DocumentFile.h"
#include "tests/host/ResultTestSupport.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace host {

/// The pixels of a page, rows from below.
inline std::vector<AGColor> Drawn(const Document& document) {
  AGBitmap bitmap(document.Page(), AGBitmap::kFlagZeroFill);
  DrawObjects(document, bitmap.GetContextOfBitmap(), 1);
  std::vector<AGColor> pixels;
  for (unsigned int y = 0; y < bitmap.Height(); ++y) {
    for (unsigned int x = 0; x < bitmap.Width(); ++x) pixels.push_back(bitmap.GetPixelColor(x, y));
  }
  return pixels;
}

class SessionFixture : public testing::Test {
 protected:
  void SetUp() override { bundle_ = Taken(Bundle::Load(AK_BUNDLE)); }

  /// Squares of side 10 in a row, at x = 0, 20, 40 ..., y from 0 to 10, with black pens of width 1.
  std::unique_ptr<Document> MakeDocument(int count) {
    auto document = std::make_unique<Document>(AGSize{200, 100});
    for (int i = 0; i < count; ++i) {
      auto object = Taken(Document::NewObject(AKClassID("stdRect"), ""));
      object->bounds = {20.0 * i, 0, 20.0 * i + 10, 10};
      document->AppendObject(std::move(object));
    }
    return document;
  }

  static void AddOne(DocumentSession* session) {
    const LayerID layer = session->Layers().Add("One more");
    std::ignore = session->Layers().SetVisible(layer, true);
  }

  /// An object of a class that nobody has, whose bytes no class would write.
  void AddPlaceholder(DocumentSession* session) {
    const std::string copy = session->Clipboard().Copy({ID(*session, 0)});
    std::string other = copy;
    other.replace(other.find("stdRect"), 7, "strange");
    other[other.size() - 3] = 0x5A;
    ASSERT_TRUE(session->Clipboard().Paste(other, 0, 0));
    placeholder_ = session->Selection().IDs()[0];
    ASSERT_TRUE(session->Doc().Find(placeholder_)->IsPlaceholder());
  }

  static ObjectID ID(const DocumentSession& session, std::size_t number) { return session.Doc().ObjectAt(number).id; }

  /// The document as a file.
  static std::string Bytes(const DocumentSession& session) {
    AKFile stream(AKFile::kModeMemory);
    std::optional<Problem> unwritable;
    EXPECT_EQ(stream.CreateForReadWrite() | WriteDocument(session.Doc(), stream, &unwritable), 0);
    return file_test::StreamContent(stream);
  }

  std::unique_ptr<Bundle> bundle_;
  ObjectID placeholder_ = kNoObjectID;
};

}  // namespace host
