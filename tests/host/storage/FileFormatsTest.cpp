// The examples of docs/file-formats.md: their bytes are read with the kit, compared with what the page says they mean,
// and written again.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>

#include "host/listings/ChunkDump.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/text/AKStringEncoding.h"
#include "kit/text/AKTextConversions.h"
#include "kit/values/AKValueHelpers.h"
#include "tests/kit/streams/FileTestSupport.h"

namespace {

struct Example {
  std::string kind;
  unsigned int line = 0;
  std::string bytes;
  std::string meaning;  // the text behind "Reads as", or the tree
};

// Adds the bytes of "OFFSET  BYTES  # text", whose offset has to be the true one.
void AddBytes(const std::string& line, Example* example) {
  EXPECT_EQ(std::stoul(line.substr(0, 4), nullptr, 16), example->bytes.size()) << line;
  example->bytes += file_test::Bytes(line.substr(4, line.find('#') - 4));
}

std::vector<Example> ReadExamples() {
  std::istringstream page(file_test::ReadBytes(AK_SOURCE_DIR "/docs/file-formats.md"));
  std::vector<Example> examples;
  std::string block;
  unsigned int number = 0;
  for (std::string line; std::getline(page, line);) {
    ++number;
    if (line.rfind("```", 0) == 0) {
      block = line.substr(3, line.find(' ') - 3);
      if (block == "record") examples.push_back({line.substr(10), number, "", ""});
    } else if (block == "record") {
      AddBytes(line, &examples.back());
    } else if (block == "tree") {
      examples.back().meaning += line + "\n";
    } else if (line.rfind("Reads as: `", 0) == 0) {
      examples.back().meaning = line.substr(11, line.size() - 12);
    }
  }
  return examples;
}

std::string AsUtf8(const AKString& text) {
  return AKStringCopyWithEncoding(text, kAKStringEncodingMacRoman, kAKStringEncodingUTF8).CStr();
}

// Reads a record from `in`, writes it to `out`, and says what it means.
using Handler = std::function<std::string(const AKFile& in, AKFile& out, const std::string& bytes)>;

const std::map<std::string, Handler>& Handlers() {
  static const std::map<std::string, Handler> handlers = {
      {"value",
       [](const AKFile& in, AKFile& out, const std::string& bytes) {
         AKValue value;
         EXPECT_EQ(value.ReadFromFile(in) | value.WriteToFile(out), 0);
         std::string tree;
         EXPECT_FALSE(host::DumpChunks(bytes, [&tree](const std::string& line) { tree += line; }).found);
         return tree;
       }},
      {"string",
       [](const AKFile& in, AKFile& out, const std::string&) {
         AKString text;
         EXPECT_EQ(AKFileReadAKString(in, &text) | AKFileWriteAKString(out, text), 0);
         return AsUtf8(text);
       }},
      {"path",
       [](const AKFile& in, AKFile& out, const std::string&) {
         AKFilePath path;
         EXPECT_EQ(AKFileReadAKFilePath(in, &path) | AKFileWriteAKFilePath(out, path), 0);
         return AsUtf8(path.Text());
       }},
      {"utf16",
       [](const AKFile& in, AKFile& out, const std::string&) {
         AKUniChars units;
         EXPECT_EQ(AKFileReadAKUniChars(in, &units) | AKFileWriteAKUniChars(out, units), 0);
         return AsUtf8(*AKValueSetasAKUniChars(units).GetasAKString());
       }},
      {"rectangle",
       [](const AKFile& in, AKFile& out, const std::string&) {
         AGRect rect;
         char text[100];
         EXPECT_EQ(AKFileReadAGRect(in, &rect) | AKFileWriteAGRect(out, rect), 0);
         return std::string(strSetasAGRect(text, rect, 1));
       }},
      {"colour",
       [](const AKFile& in, AKFile& out, const std::string&) {
         AGColor color;
         char text[100];
         EXPECT_EQ(AKFileReadAGColor(in, &color) | AKFileWriteAGColor(out, color), 0);
         return std::string(strSetasAGColor(text, color, true));
       }},
      {"class",
       [](const AKFile& in, AKFile& out, const std::string&) {
         AKClassID id;
         EXPECT_EQ(AKFileReadAKClassID(in, &id) | AKFileWriteAKClassID(out, id), 0);
         return std::string(id.chars);
       }},
  };
  return handlers;
}

TEST(FileFormats, Examples_OfThePage_AreWhatTheKitReadsAndWrites) {
  const std::vector<Example> examples = ReadExamples();
  EXPECT_GE(examples.size(), 14U);
  for (const Example& example : examples) {
    SCOPED_TRACE(example.kind + " at line " + std::to_string(example.line));
    ASSERT_EQ(Handlers().count(example.kind), 1U);
    AKFile in(example.bytes.data(), static_cast<unsigned int>(example.bytes.size()));
    AKFile out(AKFile::kModeMemory);
    ASSERT_EQ(in.OpenForRead() | out.CreateForReadWrite(), 0);
    EXPECT_EQ(Handlers().at(example.kind)(in, out, example.bytes), example.meaning);
    EXPECT_EQ(file_test::StreamContent(out), example.bytes);
    EXPECT_EQ(file_test::PositionOf(in), example.bytes.size());
  }
}

}  // namespace
