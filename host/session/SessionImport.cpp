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

AGBrush BrushOf(const SvgRectangle& rectangle) {
  AGBrush brush;
  rectangle.fill ? brush.SetStyleSolid(*rectangle.fill) : brush.SetStyleNone();
  return brush;
}

AGPen PenOf(const SvgRectangle& rectangle, double scale) {
  AGPen pen;
  if (rectangle.stroke) pen.SetStyleSolid(*rectangle.stroke, rectangle.strokeWidth * scale);
  return pen;
}

}  // namespace

AGRect SessionImport::BoundsOf(const AGSize& size, const ImportPlace& place) const {
  if (place.bounds) return *place.bounds;
  AGPoint corner = place.corner.value_or(AGPoint{0, document_.Page().height - size.height});
  if (place.middle) corner = {place.middle->x - size.width / 2, place.middle->y - size.height / 2};
  return {corner.x, corner.y, corner.x + size.width, corner.y + size.height};
}

Result<ObjectID> SessionImport::Insert(const char* classID, const ObjectPlacement& placement,
                                       const AKDictionary& properties, const AGBrush& brush, const AGPen& pen) {
  auto made = Document::NewObject(AKClassID(classID), "");
  if (!made) return made.Why();
  (*made)->bounds = placement.bounds;
  (*made)->angle = placement.angle;
  (*made)->brush = brush;
  (*made)->pen = pen;
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
  const auto id = Insert(kPictureClass, {BoundsOf(header->size, place), 0}, properties, brush, AGPen());
  if (!id) return id.Why();
  step.End();
  selection_.LeaveFor(*id);
  selection_.Select({*id});
  return Imported{1, 1};
}

Result<Imported> SessionImport::TakeDrawing(const std::string& bytes, const ImportPlace& place) {
  const auto picture = ReadSvg(bytes);
  if (!picture) return picture.Why();
  if (picture->rectangles.empty()) {
    return Problem(N_("none of its %s elements is a rectangle that can be taken"), {std::to_string(picture->elements)});
  }
  const AGRect bounds = BoundsOf(picture->size, place);
  const double x = bounds.Width() / picture->size.width;
  const double y = bounds.Height() / picture->size.height;
  EditStep step(steps_, Tr("Import"));
  ObjectIDs ids;
  for (const SvgRectangle& rectangle : picture->rectangles) {
    AKDictionary properties;
    properties.SetValue(kKey_Rounding, AKValueSetasFloat64(rectangle.rounding));
    const auto id = Insert(kRectangleClass, Placed(rectangle, x, y, {bounds.x0, bounds.y0}), properties,
                           BrushOf(rectangle), PenOf(rectangle, std::sqrt(std::fabs(x * y))));
    if (!id) return id.Why();
    ids.push_back(*id);
  }
  step.End();
  selection_.LeaveFor(ids[0]);
  selection_.Select(ids);
  return Imported{ids.size(), picture->elements};
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
