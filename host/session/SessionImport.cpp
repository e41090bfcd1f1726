#include "host/session/SessionImport.h"

#include <cmath>

#include "graphics/images/AGImage.h"
#include "host/Host.h"
#include "host/HostLog.h"
#include "host/bundles/ClassRegistry.h"
#include "host/model/ObjectProperties.h"
#include "host/pictures/ImageHeader.h"
#include "host/storage/WholeFiles.h"
#include "host/text/Localisation.h"
#include "kit/values/AKValueHelpers.h"

namespace host {
namespace {

constexpr char kPictureClass[] = "stdPict";
constexpr char kRectangleClass[] = "stdRect";
const AKString kKey_Data("Data");
const AKString kKey_Rounding("Rounding");

Problem TooLarge(std::size_t bytes) {
  return Problem(N_("it has %s MB, and at most %s are taken"),
                 {std::to_string(bytes >> 20), std::to_string(SessionImport::kMostBytes >> 20)});
}

// Images are read from files, so the bytes become one for a moment.
bool CanBeDecoded(const std::string& bytes) {
  const QuietLog quiet;
  AKFile file(AKFile::kModeTemporary);
  AGImage image;
  return file.CreateForReadWrite() == 0 && file.Write(bytes.data(), bytes.size()) == 0 && file.Flush() == 0 &&
         image.SetupFromFile(file.Path()) && !image.IsEmpty();
}

Result<> CheckImage(const std::string& bytes, const ImageHeader& header) {
  constexpr double kPixelSize = 4;
  const double most = static_cast<double>(AGImage::MaxBytes());
  if (header.width * header.height * kPixelSize > most) {
    return Problem(N_("the picture has %s × %s pixels, and at most %s millions are taken"),
                   {std::to_string(std::llround(header.width)), std::to_string(std::llround(header.height)),
                    std::to_string(std::llround(most / kPixelSize / 1e6))});
  }
  if (!CanBeDecoded(bytes))
    return Problem(N_("the %s picture is damaged, or of a kind that is not read"), {header.format});
  return {};
}

AGRect Scaled(const AGRect& rect, double x, double y, const AGPoint& corner) {
  return {corner.x + rect.x0 * x, corner.y + rect.y0 * y, corner.x + rect.x1 * x, corner.y + rect.y1 * y};
}

// A turned side takes the factor of the direction that it runs in.
ObjectPlacement Placed(const SvgRectangle& rectangle, double x, double y, const AGPoint& corner) {
  if (rectangle.angle == 0) return {Scaled(rectangle.bounds, x, y, corner), 0};
  const AGPoint center = rectangle.bounds.Center();
  const AGPoint middle{corner.x + center.x * x, corner.y + center.y * y};
  const double c = std::cos(rectangle.angle);
  const double s = std::sin(rectangle.angle);
  const double w = rectangle.bounds.Width() * std::hypot(c * x, s * y) / 2;
  const double h = rectangle.bounds.Height() * std::hypot(s * x, c * y) / 2;
  return {{middle.x - w, middle.y - h, middle.x + w, middle.y + h}, rectangle.angle};
}

// By the numbers of SvgNote.
constexpr Text kNotes[kSvgNotes] = {N_("%s are no rectangles"),
                                    N_("%s are sheared, which a rectangle can't be"),
                                    N_("%s are clipped, masked, filtered or blended"),
                                    N_("%s have paint, lengths or transforms that are not understood"),
                                    N_("%s style rules are not understood"),
                                    N_("%s have corners that are not circles: taken with the smaller radius"),
                                    N_("%s have gradients that no brush has: taken as near as one comes"),
                                    N_("%s have outlines that no pen has: taken as near as one comes")};

std::vector<Problem> NotesOf(const SvgPicture& picture, double penScale) {
  std::array<std::size_t, kSvgNotes> counts = picture.leftOut;
  for (const SvgRectangle& rectangle : picture.rectangles) {
    AGPen pen;
    pen.SetSize(rectangle.strokeWidth * penScale);
    std::bitset<kSvgNotes> differs = rectangle.differs;
    const bool hasPen = rectangle.pen.Brush().Style() != kAGBrushStyleNone;
    const bool isTooWide = pen.Size() < rectangle.strokeWidth * penScale * 0.999;
    if (hasPen && isTooWide) differs.set(static_cast<std::size_t>(SvgNote::kOutline));
    for (std::size_t i = 0; i < kSvgNotes; ++i) counts[i] += differs[i];
  }
  std::vector<Problem> notes;
  for (std::size_t i = 0; i < kSvgNotes; ++i) {
    if (counts[i] > 0) notes.push_back(Problem(kNotes[i], {std::to_string(counts[i])}));
  }
  return notes;
}

}  // namespace

AGRect SessionImport::BoundsOf(const AGSize& size, const ImportPlace& place) const {
  if (place.bounds) return *place.bounds;
  AGPoint corner = place.corner.value_or(AGPoint{0, document_.Page().height - size.height});
  if (place.middle) corner = {place.middle->x - size.width / 2, place.middle->y - size.height / 2};
  return {corner.x, corner.y, corner.x + size.width, corner.y + size.height};
}

std::optional<Problem> Imported::Summary() const {
  if (taken == all && notes.empty()) return std::nullopt;
  Problem line(N_("%s of %s elements were taken"), {std::to_string(taken), std::to_string(all)});
  for (const Problem& note : notes) line = Problem(N_("%s; %s"), {std::move(line), note});
  return line;
}

SessionImport::Appearance SessionImport::AppearanceOf(const SvgRectangle& rectangle, const AGRect& bounds,
                                                      const AGSize& picture) {
  const double x = bounds.Width() / picture.width;
  const double y = bounds.Height() / picture.height;
  Appearance made{Placed(rectangle, x, y, {bounds.x0, bounds.y0}), rectangle.brush, rectangle.pen, {}};
  made.pen.SetSize(rectangle.strokeWidth * std::sqrt(std::fabs(x * y)));
  made.look.opacity = rectangle.opacity;
  made.look.dashes = rectangle.dashes;
  return made;
}

Result<ObjectID> SessionImport::Insert(const char* classID, const Appearance& appearance,
                                       const AKDictionary& properties) {
  auto made = Document::NewObject(AKClassID(classID), "");
  if (!made) return made.Why();
  (*made)->bounds = appearance.placement.bounds;
  (*made)->angle = appearance.placement.angle;
  (*made)->brush = appearance.brush;
  (*made)->pen = appearance.pen;
  (*made)->marks.look = appearance.look;
  const ObjectID id = steps_.Insert(std::move(*made), activeLayer_.Front());
  const int status = SetClassProperties(*document_.Find(id), properties);
  if (status != 0) {
    return Problem(N_("class \"%s\" does not take what is imported (status %s)"), {classID, std::to_string(status)});
  }
  if (const auto noticed = steps_.NoticeChange(id); !noticed) return noticed.Why();
  return id;
}

Result<Imported> SessionImport::TakeImage(const std::string& bytes, const ImportPlace& place) {
  const auto header = ReadImageHeader(bytes);
  if (!header) return Problem(N_("it is no PNG, JPEG, TIFF or SVG picture"));
  if (Host::Instance().Classes().Find(AKClassID(kPictureClass)) == nullptr) {
    return Problem(N_("no bundle brings pictures: load StdPicture.so"));
  }
  if (const auto done = CheckImage(bytes, *header); !done) return done.Why();
  AGBrush brush;
  brush.SetStyleSolid(kAGColorWhite);  // a picture shows where its brush would
  AKDictionary properties;
  const AKMemoryBlock data(bytes.data(), static_cast<unsigned int>(bytes.size()));
  properties.SetValue(kKey_Data, AKValueSetasBinary(data));
  EditStep step(steps_, Tr("Import"));
  const auto id = Insert(kPictureClass, {{BoundsOf(header->size, place), 0}, brush, AGPen(), {}}, properties);
  if (!id) return id.Why();
  step.End();
  selection_.LeaveFor(*id);
  selection_.Select({*id});
  return Imported{1, 1, {}};
}

Result<Imported> SessionImport::TakeDrawing(const std::string& bytes, const ImportPlace& place) {
  const auto picture = ReadSvg(bytes);
  if (!picture) return picture.Why();
  const AGRect bounds = BoundsOf(picture->size, place);
  const double scale =
      std::sqrt(std::fabs(bounds.Width() * bounds.Height() / (picture->size.width * picture->size.height)));
  Imported imported{picture->rectangles.size(), picture->elements, NotesOf(*picture, scale)};
  if (imported.taken == 0) {
    Problem why(N_("none of its %s elements is a rectangle that can be taken"), {std::to_string(imported.all)});
    for (const Problem& note : imported.notes) why = Problem(N_("%s; %s"), {std::move(why), note});
    return why;
  }
  EditStep step(steps_, Tr("Import"));
  ObjectIDs ids;
  for (const SvgRectangle& rectangle : picture->rectangles) {
    AKDictionary properties;
    properties.SetValue(kKey_Rounding, AKValueSetasFloat64(rectangle.rounding));
    const auto id = Insert(kRectangleClass, AppearanceOf(rectangle, bounds, picture->size), properties);
    if (!id) return id.Why();
    ids.push_back(*id);
  }
  step.End();
  selection_.LeaveFor(ids[0]);
  selection_.Select(ids);
  return imported;
}

Result<Imported> SessionImport::Take(const std::string& bytes, const ImportPlace& place) {
  if (const auto done = CheckTakesObjects(document_, activeLayer_.Get()); !done) return done.Why();
  if (bytes.size() > kMostBytes) return TooLarge(bytes.size());
  return LooksLikeMarkup(bytes) ? TakeDrawing(bytes, place) : TakeImage(bytes, place);
}

Result<Imported> SessionImport::TakeFile(const std::string& path, const ImportPlace& place) {
  const FileStamp stamp = FileStamp::Of(path);
  std::string bytes;
  if (stamp.exists && stamp.size > static_cast<std::int64_t>(kMostBytes)) {
    return Problem(N_("can't import \"%s\": %s"), {path, TooLarge(static_cast<std::size_t>(stamp.size))});
  }
  if (const auto done = ReadWholeFile(path, &bytes); !done) return done.Why();
  const auto taken = Take(bytes, place);
  if (!taken) return Problem(N_("can't import \"%s\": %s"), {path, taken.Why()});
  return *taken;
}

}  // namespace host
