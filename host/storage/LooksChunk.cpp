#include "host/storage/LooksChunk.h"

#include <algorithm>

#include "host/model/ObjectRecord.h"
#include "host/text/Localisation.h"
#include "kit/streams/AKFileNumbers.h"

namespace host {
namespace {

constexpr std::uint32_t kLooksSignature = 0x484C6F6B;  // "HLok"
constexpr unsigned int kFlippedX = 1;
constexpr unsigned int kFlippedY = 2;
constexpr unsigned int kFixedBytes = 20;  // of an object, without its dashes
constexpr unsigned int kDashBytes = 8;

int WriteLook(AKFile& file, unsigned int index, const ObjectLook& look) {
  int status = AKFileWriteUInt32(file, index);
  const unsigned int flags = (look.flippedX ? kFlippedX : 0) | (look.flippedY ? kFlippedY : 0);
  if (status == 0) status = AKFileWriteUInt32(file, flags);
  if (status == 0) status = AKFileWriteFloat64(file, look.opacity);
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(look.dashes.size()));
  for (const double length : look.dashes) {
    if (status == 0) status = AKFileWriteFloat64(file, length);
  }
  return status;
}

// `left` are the bytes of the chunk that follow.
bool ReadLook(const AKFile& file, unsigned int* left, std::vector<ObjectMarks>* objects) {
  unsigned int index = 0;
  unsigned int flags = 0;
  unsigned int dashes = 0;
  ObjectLook look;
  if (*left < kFixedBytes || AKFileReadUInt32(file, &index) != 0 || AKFileReadUInt32(file, &flags) != 0 ||
      AKFileReadFloat64(file, &look.opacity) != 0 || AKFileReadUInt32(file, &dashes) != 0) {
    return false;
  }
  *left -= kFixedBytes;
  if (index >= objects->size() || dashes > ObjectLook::kMostDashes || dashes * kDashBytes > *left) return false;
  *left -= dashes * kDashBytes;
  look.dashes.resize(dashes);
  for (double& length : look.dashes) {
    if (AKFileReadFloat64(file, &length) != 0) return false;
  }
  look.flippedX = (flags & kFlippedX) != 0;
  look.flippedY = (flags & kFlippedY) != 0;
  if (!(look.opacity >= 0 && look.opacity <= 1) || (dashes != 0 && !AreDashes(look.dashes))) return false;
  (*objects)[index].look = std::move(look);
  return true;
}

}  // namespace

int WriteLooks(AKFile& file, const std::vector<const ObjectMarks*>& objects) {
  const auto isPlain = [](const ObjectMarks* marks) { return marks->look.IsPlain(); };
  const auto count =
      static_cast<unsigned int>(objects.size()) - static_cast<unsigned int>(std::ranges::count_if(objects, isPlain));
  AKFileChunk chunk{kLooksSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWriteUInt32(file, count);
  for (std::size_t i = 0; i < objects.size() && status == 0; ++i) {
    if (!isPlain(objects[i])) status = WriteLook(file, static_cast<unsigned int>(i), objects[i]->look);
  }
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

Result<> ReadLooks(const AKFile& file, const AKFileChunk& outer, std::vector<ObjectMarks>* objects) {
  ObjectChunkReader reader(file);
  AKFileChunk chunk;
  unsigned int count = 0;
  if (!reader.ReadHeader(outer, kLooksSignature, &chunk)) return *reader.Why();
  unsigned int left = chunk.size;
  bool sound = left >= 4 && AKFileReadUInt32(file, &count) == 0;
  if (sound) left -= 4;
  for (unsigned int i = 0; sound && i < count; ++i) sound = ReadLook(file, &left, objects);
  if (sound) return {};
  return Problem(N_("the looks of objects at position %s are damaged"), {std::to_string(chunk.pos)});
}

}  // namespace host
