// The page of text as a PDF file, read by a program of its own.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "AKPlatform/AKVectorContext.h"
#include "host/Fonts.h"
#include "host/gallery/TextPage.h"

namespace {

bool Append(void* info, const void* bytes, std::size_t count) {
  static_cast<std::string*>(info)->append(static_cast<const char*>(bytes), count);
  return true;
}

std::string OutputOf(const std::string& folder, const std::string& command) {
  EXPECT_EQ(std::system(("cd " + folder + " && " + command + " > output").c_str()), 0) << command;
  std::ostringstream text;
  text << std::ifstream(folder + "/output").rdbuf();
  return text.str();
}

TEST(TextPageTest, PDF_HoldsItsTextsAsTextAndEmbedsItsFonts) {
  const host::Fonts fonts;
  const AGSize size = host::TextPageSize();
  std::string file;
  CGContextRef page = CGVectorContextCreatePDF(size.width, size.height, &Append, &file);
  host::DrawTextPage(AGContext(page, size));
  ASSERT_TRUE(CGVectorContextFinish(page));
  CGContextRelease(page);

  char pattern[] = "/tmp/textpageXXXXXX";
  const std::string folder = mkdtemp(pattern);
  std::ofstream(folder + "/page.pdf", std::ios::binary) << file;
  const std::string text = OutputOf(folder, "pdftotext -enc UTF-8 page.pdf -");
  const char* const expected[] = {"One line", "second",   "three",      "office",  "fluffy",  "𝔸𝕓𝕔", "éclair",
                                  "Paint",    "outlined", "underlined", "Upright", "a point", "عالم"};
  for (const char* words : expected) EXPECT_NE(text.find(words), std::string::npos) << words << " in " << text;
  EXPECT_EQ(text.find("Path"), std::string::npos);  // outlines are no text
  const std::string embedded = OutputOf(folder, "pdffonts page.pdf");
  EXPECT_NE(embedded.find("DejaVuSans-Bold"), std::string::npos) << embedded;
  EXPECT_EQ(embedded.find(" no  "), std::string::npos) << embedded;  // not embedded, or no subset
  std::filesystem::remove_all(folder);
}

}  // namespace
