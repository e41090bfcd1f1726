#include "host/session/SessionClipboard.h"

#include "host/HostLog.h"
#include "host/model/ObjectRecord.h"
#include "host/text/Localisation.h"
#include "kit/streams/AKFileNumbers.h"

namespace host {
namespace {

constexpr std::uint32_t kClipboardSignature = 0x48436C70;  // "HClp"
constexpr unsigned int kClipboardVersion = 1;

int WriteClipboard(AKFile& file, const std::vector<const DocumentObject*>& objects) {
  AKFileChunk chunk{kClipboardSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWriteUInt32(file, kClipboardVersion);
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(objects.size()));
  for (const DocumentObject* object : objects) {
    if (status != 0) break;
    const auto record = ProvenRecord(*object);
    status = WriteObjectChunk(file, *object, record ? *record : object->record);
  }
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

using Objects = std::vector<std::unique_ptr<DocumentObject>>;

// Everything or nothing.
Result<> ReadClipboard(const std::string& bytes, Objects* objects) {
  const QuietLog quiet;
  AKFile stream(bytes.data(), static_cast<unsigned int>(bytes.size()));
  ObjectChunkReader reader(stream);
  AKFileChunk chunk;
  unsigned int version = 0;
  unsigned int count = 0;
  bool sound = stream.OpenForRead() == 0 && AKFileReadChunkHeader(stream, &chunk) == 0 &&
               chunk.signature == kClipboardSignature && AKFileReadUInt32(stream, &version) == 0 &&
               version == kClipboardVersion && AKFileReadUInt32(stream, &count) == 0;
  for (unsigned int i = 0; sound && i < count; ++i) {
    objects->push_back(reader.Read(chunk));
    sound = objects->back() != nullptr;
  }
  if (!sound || objects->empty()) return Problem(N_("there is nothing on the clipboard that can be pasted"));
  return {};
}

}  // namespace

std::string SessionClipboard::Copy(const ObjectIDs& ids) const {
  std::vector<const DocumentObject*> objects;
  for (const ObjectID id : InDrawingOrder(document_, ids)) objects.push_back(document_.Find(id));
  AKFile stream(AKFile::kModeMemory);
  const void* data = nullptr;
  unsigned long long size = 0;
  if (stream.CreateForReadWrite() != 0 || WriteClipboard(stream, objects) != 0 ||
      stream.GetMemoryStreamDataPtr(&data, &size) != 0) {
    return {};
  }
  return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

Result<> SessionClipboard::Cut(const ObjectIDs& ids, std::string* clipboard) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  std::string bytes = Copy(ids);
  if (bytes.empty()) {
    return Problem(N_("the objects can't be copied"));
  }
  EditStep step(steps_, Tr("Cut"));
  if (const auto done = objects_.Delete(ids); !done) return done.Why();
  *clipboard = std::move(bytes);
  return step.End();
}

Result<> SessionClipboard::Paste(const std::string& clipboard, double dx, double dy) {
  Objects objects;
  if (const auto done = CheckTakesObjects(document_, activeLayer_.Get()); !done) return done.Why();
  if (const auto done = ReadClipboard(clipboard, &objects); !done) return done.Why();
  EditStep step(steps_, Tr("Paste"));
  ObjectIDs pasted;
  for (auto& object : objects) {
    pasted.push_back(steps_.Insert(std::move(object), activeLayer_.Front()));
  }
  // Placeholders alone are not moved.
  if (dx != 0 || dy != 0) static_cast<void>(objects_.Move(pasted, dx, dy));
  step.End();
  selection_.Select(pasted);
  return {};
}

Result<> SessionClipboard::Duplicate(const ObjectIDs& ids, double dx, double dy) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  EditStep step(steps_, Tr("Duplicate"));
  if (const auto done = Paste(Copy(ids), dx, dy); !done) return done.Why();
  return step.End();
}

}  // namespace host
