// The clipboard: objects as bytes, and back.
//
// A chunk "HClp": u32 version 1, u32 number of objects, and that many "HObj" chunks as in documents.
#include <algorithm>

#include "host/HostLog.h"
#include "host/model/ObjectRecord.h"
#include "host/session/DocumentSession.h"
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
    if (status == 0) status = WriteObjectChunk(file, *object);
  }
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

using Objects = std::vector<std::unique_ptr<DocumentObject>>;

// Everything or nothing.
bool ReadClipboard(const std::string& bytes, Objects* objects, std::string* error) {
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
  if (!sound || objects->empty()) *error = ErrorText("there is nothing on the clipboard that can be pasted");
  return sound && !objects->empty();
}

}  // namespace

std::string DocumentSession::Copy(const ObjectIDs& ids) const {
  std::vector<const DocumentObject*> objects;
  for (const ObjectID id : InDrawingOrder(ids)) objects.push_back(document_->Find(id));
  AKFile stream(AKFile::kModeMemory);
  const void* data = nullptr;
  unsigned long long size = 0;
  if (stream.CreateForReadWrite() != 0 || WriteClipboard(stream, objects) != 0 ||
      stream.GetMemoryStreamDataPtr(&data, &size) != 0) {
    return {};
  }
  return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

bool DocumentSession::Cut(const ObjectIDs& ids, std::string* clipboard, std::string* error) {
  if (!CheckEditable(ids, error)) return false;
  std::string bytes = Copy(ids);
  if (bytes.empty()) {
    *error = ErrorText("the objects can't be copied");
    return false;
  }
  EditStep step(*this, Tr("Cut"));
  if (!Delete(ids, error)) return false;
  *clipboard = std::move(bytes);
  return step.End();
}

bool DocumentSession::Paste(const std::string& clipboard, double dx, double dy, std::string* error) {
  Objects objects;
  if (!CheckActiveLayer(error) || !ReadClipboard(clipboard, &objects, error)) return false;
  EditStep step(*this, Tr("Paste"));
  ObjectIDs pasted;
  for (auto& object : objects) {
    pasted.push_back(InsertOne(std::move(object), {activeLayer_, document_->FindLayer(activeLayer_)->objects.Count()}));
  }
  std::string onlyPlaceholders;
  if (dx != 0 || dy != 0) Move(pasted, dx, dy, &onlyPlaceholders);
  step.End();
  Select(pasted);
  return true;
}

bool DocumentSession::Duplicate(const ObjectIDs& ids, double dx, double dy, std::string* error) {
  if (!CheckEditable(ids, error)) return false;
  EditStep step(*this, Tr("Duplicate"));
  return Paste(Copy(ids), dx, dy, error) && step.End();
}

}  // namespace host
