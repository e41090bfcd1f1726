#include "host/storage/AidsChunk.h"

#include "host/model/ObjectRecord.h"
#include "host/text/Localisation.h"
#include "kit/streams/AKFileNumbers.h"

namespace host {
namespace {

constexpr std::uint32_t kAidsSignature = 0x48416964;  // "HAid"
constexpr unsigned int kPlaceBytes = 8;

bool ReadGuides(const AKFile& file, unsigned int* left, std::vector<double>* guides) {
  unsigned int count = 0;
  if (*left < 4 || AKFileReadUInt32(file, &count) != 0) return false;
  *left -= 4;
  if (count > PageAids::kMostGuides || count * kPlaceBytes > *left) return false;
  *left -= count * kPlaceBytes;
  guides->resize(count);
  for (double& place : *guides) {
    if (AKFileReadFloat64(file, &place) != 0) return false;
  }
  return true;
}

}  // namespace

int WriteAids(AKFile& file, const PageAids& aids) {
  AKFileChunk chunk{kAidsSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(aids.unit));
  if (status == 0) status = AKFileWriteFloat64(file, aids.gridStep);
  for (int axis = 0; axis < 2; ++axis) {
    if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(aids.Guides(axis).size()));
    for (const double place : aids.Guides(axis)) {
      if (status == 0) status = AKFileWriteFloat64(file, place);
    }
  }
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

Result<PageAids> ReadAids(const AKFile& file, const AKFileChunk& outer) {
  ObjectChunkReader reader(file);
  AKFileChunk chunk;
  PageAids aids;
  unsigned int unit = 0;
  if (!reader.ReadHeader(outer, kAidsSignature, &chunk)) return *reader.Why();
  unsigned int left = chunk.size;
  bool sound = left >= 12 && AKFileReadUInt32(file, &unit) == 0 && AKFileReadFloat64(file, &aids.gridStep) == 0;
  if (sound) left -= 12;
  sound = sound && unit < std::size(kLengthUnits);
  for (int axis = 0; axis < 2; ++axis) sound = sound && ReadGuides(file, &left, &aids.Guides(axis));
  if (sound) aids.unit = kLengthUnits[unit];
  if (sound && CheckAids(aids)) return aids;
  return Problem(N_("the guides at position %s are damaged"), {std::to_string(chunk.pos)});
}

}  // namespace host
