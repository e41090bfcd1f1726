#include "host/storage/LabelsChunk.h"

#include <algorithm>

#include "host/model/ObjectRecord.h"
#include "host/text/Localisation.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileNumbers.h"

namespace host {
namespace {

constexpr std::uint32_t kLabelsSignature = 0x484C626C;  // "HLbl"
constexpr unsigned int kBold = 1;
constexpr unsigned int kItalic = 2;
// Where the alignments and the direction lie among the flags, two bits each.
constexpr unsigned int kAcrossShift = 8;
constexpr unsigned int kDownShift = 10;
constexpr unsigned int kDirectionShift = 12;
constexpr unsigned int kFixedBytes = 28;  // of an object, without font and text

unsigned int FlagsOf(const ObjectLabel& label) {
  return (label.bold ? kBold : 0U) | (label.italic ? kItalic : 0U) |
         static_cast<unsigned int>(label.across) << kAcrossShift | static_cast<unsigned int>(label.down) << kDownShift |
         static_cast<unsigned int>(label.direction) << kDirectionShift;
}

void TakeFlags(unsigned int flags, ObjectLabel* label) {
  const auto field = [flags](unsigned int shift) { return static_cast<std::uint8_t>(flags >> shift & 3); };
  label->bold = (flags & kBold) != 0;
  label->italic = (flags & kItalic) != 0;
  label->across = static_cast<LabelAcross>(field(kAcrossShift));
  label->down = static_cast<LabelDown>(field(kDownShift));
  label->direction = static_cast<LabelDirection>(field(kDirectionShift));
}

int WriteLabel(AKFile& file, unsigned int index, const ObjectLabel& label) {
  int status = AKFileWriteUInt32(file, index);
  if (status == 0) status = AKFileWriteUInt32(file, FlagsOf(label));
  if (status == 0) status = AKFileWriteFloat64(file, label.size);
  if (status == 0) status = AKFileWriteAGColor(file, label.color);
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(label.font.size()));
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(label.text.size()));
  if (status == 0) status = AKFileWrite(file, label.font.data(), label.font.size());
  return status == 0 ? AKFileWrite(file, label.text.data(), label.text.size()) : status;
}

bool ReadText(const AKFile& file, unsigned int size, std::string* text) {
  text->resize(size);
  return size == 0 || AKFileRead(file, text->data(), size) == 0;
}

// `left` are the bytes of the chunk that follow.
bool ReadLabel(const AKFile& file, unsigned int* left, std::vector<ObjectMarks>* objects) {
  unsigned int index = 0;
  unsigned int flags = 0;
  unsigned int fontBytes = 0;
  unsigned int textBytes = 0;
  ObjectLabel label;
  if (*left < kFixedBytes || AKFileReadUInt32(file, &index) != 0 || AKFileReadUInt32(file, &flags) != 0 ||
      AKFileReadFloat64(file, &label.size) != 0 || AKFileReadAGColor(file, &label.color) != 0 ||
      AKFileReadUInt32(file, &fontBytes) != 0 || AKFileReadUInt32(file, &textBytes) != 0) {
    return false;
  }
  *left -= kFixedBytes;
  if (index >= objects->size() || fontBytes > ObjectLabel::kMostFontBytes || textBytes > ObjectLabel::kMostBytes ||
      fontBytes + textBytes > *left) {
    return false;
  }
  *left -= fontBytes + textBytes;
  TakeFlags(flags, &label);
  if (!ReadText(file, fontBytes, &label.font) || !ReadText(file, textBytes, &label.text) || !IsLabel(label)) {
    return false;
  }
  (*objects)[index].label = std::make_shared<const ObjectLabel>(std::move(label));
  return true;
}

}  // namespace

int WriteLabels(AKFile& file, const std::vector<const ObjectMarks*>& objects) {
  const auto count = std::ranges::count_if(objects, [](const ObjectMarks* marks) { return marks->label != nullptr; });
  AKFileChunk chunk{kLabelsSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(count));
  for (std::size_t i = 0; i < objects.size() && status == 0; ++i) {
    const ObjectLabel* label = objects[i]->label.get();
    if (label != nullptr) status = WriteLabel(file, static_cast<unsigned int>(i), *label);
  }
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

Result<> ReadLabels(const AKFile& file, const AKFileChunk& outer, std::vector<ObjectMarks>* objects) {
  ObjectChunkReader reader(file);
  AKFileChunk chunk;
  unsigned int count = 0;
  if (!reader.ReadHeader(outer, kLabelsSignature, &chunk)) return *reader.Why();
  unsigned int left = chunk.size;
  bool sound = left >= 4 && AKFileReadUInt32(file, &count) == 0;
  if (sound) left -= 4;
  for (unsigned int i = 0; sound && i < count; ++i) sound = ReadLabel(file, &left, objects);
  if (sound) return {};
  return Problem(N_("the labels of objects at position %s are damaged"), {std::to_string(chunk.pos)});
}

}  // namespace host
