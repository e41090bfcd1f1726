#include "host/pictures/DocumentPicture.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "CoreGraphics/CGContext.h"
#include "CoreGraphics/CGVectorContext.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/images/AGImage.h"
#include "graphics/native/AGGraphicsLow.h"
#include "host/QuietLog.h"
#include "host/pictures/BitmapPNG.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/storage/DocumentFile.h"
#include "host/text/Localisation.h"
#include "kit/files/AKFileUtils.h"

namespace host {
namespace {

using Bytes = std::vector<unsigned char>;

/// A kind is drawn into a bitmap and encoded, or written as an image file, or it is drawn onto a page of its own.
struct KindInfo {
  PictureKind kind;
  const char* extension;
  AGImageFileFormat format;
  bool (*encode)(const AGBitmap& bitmap, Bytes* file);
  CGContextRef (*createPage)(CGFloat width, CGFloat height, CGVectorWriteCallback write, void* info);
};

constexpr KindInfo kKinds[] = {
    {PictureKind::kPNG, ".png", AGImageFileFormat::kNone, &EncodePNG, nullptr},
    {PictureKind::kJPEG, ".jpg", AGImageFileFormat::kJPEG, nullptr, nullptr},
    {PictureKind::kJPEG, ".jpeg", AGImageFileFormat::kJPEG, nullptr, nullptr},
    {PictureKind::kTIFF, ".tif", AGImageFileFormat::kTIFF, nullptr, nullptr},
    {PictureKind::kTIFF, ".tiff", AGImageFileFormat::kTIFF, nullptr, nullptr},
    {PictureKind::kPDF, ".pdf", AGImageFileFormat::kNone, nullptr, &CGVectorContextCreatePDF},
    {PictureKind::kSVG, ".svg", AGImageFileFormat::kNone, nullptr, &CGVectorContextCreateSVG},
};

const KindInfo& InfoOf(PictureKind kind) {
  return *std::find_if(std::begin(kKinds), std::end(kKinds), [kind](const KindInfo& row) { return row.kind == kind; });
}

bool NoPicture(const AGSize& size, std::string* error) {
  char width[32];
  char height[32];
  std::snprintf(width, sizeof(width), "%.6g", size.width);
  std::snprintf(height, sizeof(height), "%.6g", size.height);
  *error = ErrorText("can't make a picture of %s by %s", {width, height});
  return false;
}

bool AppendBytes(void* info, const void* bytes, std::size_t count) {
  auto* file = static_cast<Bytes*>(info);
  const auto* first = static_cast<const unsigned char*>(bytes);
  file->insert(file->end(), first, first + count);
  return true;
}

bool DrawAll(const Document& document, const AGContext& context, double scale, Progress* progress, std::string* error) {
  if (DrawObjects(document, context, scale, progress)) return true;
  *error = ErrorText("the picture was given up");
  return false;
}

bool RenderPage(const Document& document, const KindInfo& info, const PictureOptions& options, Progress* progress,
                Bytes* file, std::string* error) {
  const AGSize size{document.Page().width * options.scale, document.Page().height * options.scale};
  CGContextRef page = info.createPage(size.width, size.height, &AppendBytes, file);
  if (page == nullptr) return NoPicture(size, error);
  const AGContext context(page, size);
  if (!options.transparent) {
    AGGraphicsLow::AGContextClearPixels(context, document.Background(), {0, 0, size.width, size.height});
  }
  const bool drawn = DrawAll(document, context, options.scale, progress, error);
  const bool finished = CGVectorContextFinish(page);
  CGContextRelease(page);
  if (drawn && !finished) *error = ErrorText("can't encode the picture");
  return drawn && finished;
}

// The page in a bitmap; null with one line in `*error`.
std::unique_ptr<AGBitmap> DrawBitmap(const Document& document, const PictureOptions& options, Progress* progress,
                                     std::string* error) {
  const AGSize size{document.Page().width * options.scale, document.Page().height * options.scale};
  auto bitmap = std::make_unique<AGBitmap>(size, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  if (!bitmap->IsOpen()) {
    NoPicture(size, error);
    return nullptr;
  }
  AGContext context = bitmap->GetContextOfBitmap();
  if (!options.transparent) context.ClearPixels(document.Background());
  return DrawAll(document, context, options.scale, progress, error) ? std::move(bitmap) : nullptr;
}

bool RenderBitmap(const Document& document, const KindInfo& info, const PictureOptions& options, Progress* progress,
                  Bytes* file, std::string* error) {
  const auto bitmap = DrawBitmap(document, options, progress, error);
  if (!bitmap) return false;
  if (info.encode(*bitmap, file)) return true;
  *error = ErrorText("can't encode the picture");
  return false;
}

bool SaveImage(const Document& document, const KindInfo& info, const std::string& path, const PictureOptions& options,
               Progress* progress, std::string* error) {
  const auto bitmap = DrawBitmap(document, options, progress, error);
  if (!bitmap) return false;
  const QuietLog quiet;
  AKFilePath target;
  errno = 0;
  if (AKFileUtils::GetFromSystemPath(path.c_str(), &target) &&
      AGImage(*bitmap).SaveToFile(target, info.format, options.quality, options.scale >= 2)) {
    return true;
  }
  *error = errno != 0 ? ErrorText("can't write \"%s\": %s", {path, std::strerror(errno)})
                      : ErrorText("can't write \"%s\"", {path});
  return false;
}

}  // namespace

bool PictureKindOf(const std::string& path, PictureKind* kind) {
  std::string lower(path);
  for (char& letter : lower) {  // not by the locale, in which a Turkish I has another small letter
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  for (const KindInfo& row : kKinds) {
    if (!lower.ends_with(row.extension)) continue;
    *kind = row.kind;
    return true;
  }
  return false;
}

std::string PictureExtensions() {
  std::string text;
  for (const KindInfo& row : kKinds) {
    if (!text.empty()) text += &row == std::end(kKinds) - 1 ? " or " : ", ";
    text += row.extension;
  }
  return text;
}

bool RenderPicture(const Document& document, PictureKind kind, const PictureOptions& options, Progress* progress,
                   std::vector<unsigned char>* file, std::string* error) {
  const KindInfo& info = InfoOf(kind);
  if (info.format != AGImageFileFormat::kNone) {
    *error = std::string("a ") + info.extension + " picture is made in a file only";
    return false;
  }
  const auto render = info.encode != nullptr ? &RenderBitmap : &RenderPage;
  return render(document, info, options, progress, file, error);
}

bool ExportPicture(const Document& document, const std::string& path, const PictureOptions& options, Progress* progress,
                   std::string* error) {
  PictureKind kind{};
  Bytes file;
  if (!PictureKindOf(path, &kind)) {
    *error = "\"" + path + "\" is no name of a " + PictureExtensions() + " file";
    return false;
  }
  if (InfoOf(kind).format != AGImageFileFormat::kNone) {
    return SaveImage(document, InfoOf(kind), path, options, progress, error);
  }
  return RenderPicture(document, kind, options, progress, &file, error) &&
         ReplaceFile(path, file.data(), file.size(), error);
}

}  // namespace host
