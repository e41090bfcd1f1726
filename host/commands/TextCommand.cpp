// The page of text.
#include <cmath>
#include <cstdio>
#include <new>
#include <vector>

#include "AKPlatform/AKVectorContext.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "host/Fonts.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/gallery/TextPage.h"
#include "host/pictures/DocumentPicture.h"
#include "host/pictures/MemoryWatch.h"
#include "host/storage/WholeFiles.h"
#include "host/terminal/Output.h"
#include "host/text/Printable.h"

namespace host {
namespace {

Result<> SaveBitmap(const std::string& path) {
  const MemoryWatch watch;
  const AGBitmap bitmap(TextPageSize(), 0);
  DrawTextPage(bitmap.GetContextOfBitmap());
  if (MemoryWatch::RanOut()) throw std::bad_alloc();
  return SavePNG(bitmap, path);
}

bool TakeBytes(void* info, const void* bytes, std::size_t count) {
  static_cast<std::string*>(info)->append(static_cast<const char*>(bytes), count);
  return true;
}

Result<> SavePage(PictureKind kind, const std::string& path) {
  const AGSize size = TextPageSize();
  std::string file;
  CGContextRef page = (kind == PictureKind::kPDF ? &CGVectorContextCreatePDF : &CGVectorContextCreateSVG)(
      size.width, size.height, &TakeBytes, &file);
  const MemoryWatch watch;
  DrawTextPage(AGContext(page, size));
  const bool finished = CGVectorContextFinish(page) && !MemoryWatch::RanOut();
  CGContextRelease(page);
  if (finished) return ReplaceFile(path, file.data(), file.size());
  return Problem(N_("can't encode the page"));
}

int RunText(const std::vector<std::string>& words) {
  CommandLine line({}, {});
  if (const auto done = line.Parse(words, 0, 1); !done) return Fail(done.Why());
  const Fonts fonts;
  const bool named = !line.Positional().empty();
  const std::string path = named ? line.Positional()[0] : "out/text.png";
  PictureKind kind = PictureKind::kPNG;
  const bool isKnown = PictureKindOf(path, &kind) && kind != PictureKind::kJPEG && kind != PictureKind::kTIFF;
  if (!isKnown) return Fail("unknown kind of picture: \"" + path + "\"");
  if (!named) {
    if (const auto done = MakeFolder("out"); !done) return Fail(done.Why());
  }
  const auto saved = kind == PictureKind::kPNG ? SaveBitmap(path) : SavePage(kind, path);
  if (!saved) return Fail(saved.Why());
  Output::Print("%s: %zu texts\n", Printable(path).c_str(), TextItems().size());
  return 0;
}

}  // namespace

const Command kTextCommand = {
    "text", "draw a page of what can be done with text",
    "usage: objecthost text [PICTURE.png|PAGE.pdf|PAGE.svg]\n\n"
    "Draws alignments, scripts, paints, clips and directions of text in a labelled grid (out/text.png).\n"
    "On a PDF page text stays text.\n",
    &RunText};

}  // namespace host
