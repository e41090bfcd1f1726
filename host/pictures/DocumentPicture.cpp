#include "host/pictures/DocumentPicture.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unordered_set>

#include "AKPlatform/AKVectorContext.h"
#include "CoreGraphics/CGContext.h"
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/images/AGImage.h"
#include "graphics/native/AGGraphicsLow.h"
#include "host/HostLog.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/pictures/MemoryWatch.h"
#include "host/storage/WholeFiles.h"
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

Problem NoMemory() { return Problem(N_("there is not enough memory for the picture")); }

bool AppendBytes(void* info, const void* bytes, std::size_t count) {
  auto* file = static_cast<Bytes*>(info);
  const auto* first = static_cast<const unsigned char*>(bytes);
  file->insert(file->end(), first, first + count);
  return true;
}

// What is drawn, how, and which object could not be.
struct Job {
  const Document& document;
  const PictureOptions& options;
  Progress* progress;
  UndrawnObject undrawn{};
};

AGRect AreaOf(const Job& job) {
  const AGSize page = job.document.Page();
  return job.options.area.value_or(AGRect{0, 0, page.width, page.height});
}

bool DrawTaken(Job* job, const AGContext& context) {
  const double scale = job->options.scale;
  if (!job->options.objects) return DrawObjects(job->document, context, scale, job->progress, &job->undrawn);
  const std::unordered_set<ObjectID> taken(job->options.objects->begin(), job->options.objects->end());
  return DrawObjects(job->document, context, scale, job->progress, &job->undrawn,
                     [&taken](const DocumentObject& object) { return taken.contains(object.id); });
}

Result<> DrawAll(Job* job, const AGContext& context) {
  const AGRect area = AreaOf(*job);
  const double scale = job->options.scale;
  CGContextSaveGState(context.NativePort());
  CGContextConcatCTM(context.NativePort(), {1, 0, 0, 1, -area.x0 * scale, -area.y0 * scale});
  const bool goesOn = DrawTaken(job, context);
  CGContextRestoreGState(context.NativePort());
  if (!goesOn) return Problem(N_("the picture was given up"));
  if (MemoryWatch::RanOut()) return NoMemory();
  return {};
}

// The picture is there, without an object that did not draw itself.
Result<> Completed(const Job& job) {
  if (job.undrawn.status == 0) return {};
  const DocumentObject& object = *job.document.Find(job.undrawn.id);
  return Problem(
      N_("object %s of class \"%s\" did not draw itself (status %s); the rest is drawn"),
      {std::to_string(job.document.NumberOf(object.id)), object.classID.chars, std::to_string(job.undrawn.status)});
}

AGSize SizeOf(const Job& job) {
  const AGRect area = AreaOf(job);
  return {area.Width() * job.options.scale, area.Height() * job.options.scale};
}

Result<> RenderPage(Job* job, const KindInfo& info, Bytes* file) {
  const MemoryWatch watch;
  const AGSize size = SizeOf(*job);
  CGContextRef page = info.createPage(size.width, size.height, &AppendBytes, file);
  if (page == nullptr) return NoPicture(size);
  const AGContext context(page, size);
  if (!job->options.transparent) {
    AGGraphicsLow::AGContextClearPixels(context, job->document.Background(), {0, 0, size.width, size.height});
  }
  auto drawn = DrawAll(job, context);
  const bool finished = CGVectorContextFinish(page);
  MemoryWatch::Look();
  CGContextRelease(page);
  if (drawn && MemoryWatch::RanOut()) return NoMemory();
  if (drawn && !finished) return Problem(N_("can't encode the picture"));
  return drawn;
}

// The page in a bitmap.
Result<std::unique_ptr<AGBitmap>> DrawBitmap(Job* job) {
  const MemoryWatch watch;
  const AGSize size = SizeOf(*job);
  auto bitmap = std::make_unique<AGBitmap>(size, AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  if (!bitmap->IsOpen()) return NoPicture(size);
  AGContext context = bitmap->GetContextOfBitmap();
  if (!job->options.transparent) context.ClearPixels(job->document.Background());
  if (const auto done = DrawAll(job, context); !done) return done.Why();
  return bitmap;
}

Result<> RenderBitmap(Job* job, const KindInfo& info, Bytes* file) {
  const auto bitmap = DrawBitmap(job);
  if (!bitmap) return bitmap.Why();
  if (info.encode(**bitmap, file)) return {};
  return Problem(N_("can't encode the picture"));
}

Result<> SaveImage(Job* job, const KindInfo& info, const std::string& path) {
  const auto bitmap = DrawBitmap(job);
  if (!bitmap) return bitmap.Why();
  const QuietLog quiet;
  AKFilePath target;
  errno = 0;
  if (AKFileUtils::GetFromSystemPath(path.c_str(), &target) &&
      AGImage(**bitmap).SaveToFile(target, info.format, job->options.quality, job->options.scale >= 2)) {
    return {};
  }
  return errno != 0 ? Problem(N_("can't write \"%s\": %s"), {path, std::strerror(errno)})
                    : Problem(N_("can't write \"%s\""), {path});
}

Result<> Render(Job* job, const KindInfo& info, Bytes* file) {
  return info.encode != nullptr ? RenderBitmap(job, info, file) : RenderPage(job, info, file);
}

Result<> Write(Job* job, const KindInfo& info, const std::string& path) {
  if (info.format != AGImageFileFormat::kNone) return SaveImage(job, info, path);
  Bytes file;
  if (const auto done = Render(job, info, &file); !done) return done.Why();
  return ReplaceFile(path, file.data(), file.size());
}

}  // namespace

bool GetPictureBox(const Document& document, const ObjectIDs& ids, AGRect* box) {
  bool found = false;
  for (const ObjectID id : ids) {
    const DocumentObject* const object = document.Find(id);
    if (object == nullptr || object->marks.hidden || !document.LayerOf(id)->settings.visible) continue;
    ObjectPlacement placement = object->Placement();
    const double around = object->pen.Appears() ? object->pen.Size() / 2 : 0;
    AGRect& bounds = placement.bounds;
    bounds = {bounds.x0 - around, bounds.y0 - around, bounds.x1 + around, bounds.y1 + around};
    const AGRect own = TurnedBox(placement);
    *box = found ? AGRect{std::min(box->x0, own.x0), std::min(box->y0, own.y0), std::max(box->x1, own.x1),
                          std::max(box->y1, own.y1)}
                 : own;
    found = true;
  }
  return found;
}

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

Result<> RenderPicture(const Document& document, PictureKind kind, const PictureOptions& options, Progress* progress,
                       std::vector<unsigned char>* file) {
  const KindInfo& info = InfoOf(kind);
  if (info.format != AGImageFileFormat::kNone) {
    return Problem(N_("a %s picture is made in a file only"), {info.extension});
  }
  Job job{document, options, progress};
  const auto done = Render(&job, info, file);
  return done ? Completed(job) : done;
}

Result<> ExportPicture(const Document& document, const std::string& path, const PictureOptions& options,
                       Progress* progress) {
  PictureKind kind{};
  if (!PictureKindOf(path, &kind)) {
    return Problem(N_("\"%s\" is no name of a %s file"), {path, PictureExtensions()});
  }
  Job job{document, options, progress};
  const auto done = Write(&job, InfoOf(kind), path);
  return done ? Completed(job) : done;
}

}  // namespace host
