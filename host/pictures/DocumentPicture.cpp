#include "host/pictures/DocumentPicture.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "CoreGraphics/CGContext.h"
#include "CoreGraphics/CGVectorContext.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/images/AGImage.h"
#include "graphics/native/AGGraphicsLow.h"
#include "host/HostLog.h"
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

Problem NoPicture(const AGSize& size) {
  char width[32];
  char height[32];
  std::snprintf(width, sizeof(width), "%.6g", size.width);
  std::snprintf(height, sizeof(height), "%.6g", size.height);
  return Problem(N_("can't make a picture of %s by %s"), {width, height});
}

// All that a picture's name may end in.
Problem PictureExtensions() {
  std::string text;
  for (const KindInfo* row = kKinds; row + 1 != std::end(kKinds); ++row) {
    text += (text.empty() ? "" : ", ") + std::string(row->extension);
  }
  return Problem(N_("%s or %s"), {text, (std::end(kKinds) - 1)->extension});
}

bool AppendBytes(void* info, const void* bytes, std::size_t count) {
  auto* file = static_cast<Bytes*>(info);
  const auto* first = static_cast<const unsigned char*>(bytes);
  file->insert(file->end(), first, first + count);
  return true;
}

Result<> DrawAll(const Document& document, const AGContext& context, double scale, Progress* progress) {
  if (DrawObjects(document, context, scale, progress)) return {};
  return Problem(N_("the picture was given up"));
}

Result<> RenderPage(const Document& document, const KindInfo& info, const PictureOptions& options, Progress* progress,
                    Bytes* file) {
  const AGSize size{document.Page().width * options.scale, document.Page().height * options.scale};
  CGContextRef page = info.createPage(size.width, size.height, &AppendBytes, file);
  if (page == nullptr) return NoPicture(size);
  const AGContext context(page, size);
  if (!options.transparent) {
    AGGraphicsLow::AGContextClearPixels(context, document.Background(), {0, 0, size.width, size.height});
  }
  const auto drawn = DrawAll(document, context, options.scale, progress);
  const bool finished = CGVectorContextFinish(page);
  CGContextRelease(page);
  if (drawn && !finished) return Problem(N_("can't encode the picture"));
  return drawn;
}

// The page in a bitmap.
Result<std::unique_ptr<AGBitmap>> DrawBitmap(const Document& document, const PictureOptions& options,
                                             Progress* progress) {
  const AGSize size{document.Page().width * options.scale, document.Page().height * options.scale};
  auto bitmap = std::make_unique<AGBitmap>(size, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  if (!bitmap->IsOpen()) return NoPicture(size);
  AGContext context = bitmap->GetContextOfBitmap();
  if (!options.transparent) context.ClearPixels(document.Background());
  if (const auto done = DrawAll(document, context, options.scale, progress); !done) return done.Why();
  return bitmap;
}

Result<> RenderBitmap(const Document& document, const KindInfo& info, const PictureOptions& options, Progress* progress,
                      Bytes* file) {
  const auto bitmap = DrawBitmap(document, options, progress);
  if (!bitmap) return bitmap.Why();
  if (info.encode(**bitmap, file)) return {};
  return Problem(N_("can't encode the picture"));
}

Result<> SaveImage(const Document& document, const KindInfo& info, const std::string& path,
                   const PictureOptions& options, Progress* progress) {
  const auto bitmap = DrawBitmap(document, options, progress);
  if (!bitmap) return bitmap.Why();
  const QuietLog quiet;
  AKFilePath target;
  errno = 0;
  if (AKFileUtils::GetFromSystemPath(path.c_str(), &target) &&
      AGImage(**bitmap).SaveToFile(target, info.format, options.quality, options.scale >= 2)) {
    return {};
  }
  return errno != 0 ? Problem(N_("can't write \"%s\": %s"), {path, std::strerror(errno)})
                    : Problem(N_("can't write \"%s\""), {path});
}

}  // namespace

bool PictureKindOf(const std::string& path, PictureKind* kind) {
  std::string lower(path);
  for (char& letter : lower) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  for (const KindInfo& row : kKinds) {
    if (!lower.ends_with(row.extension)) continue;
    *kind = row.kind;
    return true;
  }
  return false;
}

Result<> RenderPicture(const Document& document, PictureKind kind, const PictureOptions& options, Progress* progress,
                       std::vector<unsigned char>* file) {
  const KindInfo& info = InfoOf(kind);
  if (info.format != AGImageFileFormat::kNone) {
    return Problem(N_("a %s picture is made in a file only"), {info.extension});
  }
  const auto render = info.encode != nullptr ? &RenderBitmap : &RenderPage;
  return render(document, info, options, progress, file);
}

Result<> ExportPicture(const Document& document, const std::string& path, const PictureOptions& options,
                       Progress* progress) {
  PictureKind kind{};
  Bytes file;
  if (!PictureKindOf(path, &kind)) {
    return Problem(N_("\"%s\" is no name of a %s file"), {path, PictureExtensions()});
  }
  if (InfoOf(kind).format != AGImageFileFormat::kNone) {
    return SaveImage(document, InfoOf(kind), path, options, progress);
  }
  if (const auto done = RenderPicture(document, kind, options, progress, &file); !done) return done.Why();
  return ReplaceFile(path, file.data(), file.size());
}

}  // namespace host
