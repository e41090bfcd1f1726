#include "host/session/SessionClipboard.h"

#include <algorithm>
#include <unordered_set>

#include "host/HostLog.h"
#include "host/model/ObjectRecord.h"
#include "host/model/Units.h"
#include "host/storage/LabelsChunk.h"
#include "host/storage/LooksChunk.h"
#include "host/storage/MarksChunk.h"
#include "host/text/Localisation.h"
#include "kit/streams/AKFileNumbers.h"

namespace host {
namespace {

constexpr std::uint32_t kClipboardSignature = 0x48436C70;  // "HClp"
constexpr unsigned int kPlainVersion = 1;
constexpr unsigned int kMarkedVersion = 2;
constexpr unsigned int kLookedVersion = 3;
constexpr unsigned int kLabelledVersion = 4;

struct Copied {
  const DocumentObject* object;
  ObjectMarks marks;  // in the groups that are copied
};

// What is copied of each unit.
std::vector<Copied> CopiedOf(const Document& document, const ObjectIDs& ids, const std::vector<GroupID>& entered) {
  const std::unordered_set<ObjectID> known(ids.begin(), ids.end());
  std::vector<Copied> copied;
  for (const Unit& unit : UnitsOf(document, ids, entered)) {
    for (const ObjectID id : unit.objects) {
      if (!known.contains(id)) continue;
      const DocumentObject* const object = document.Find(id);
      copied.push_back({object, object->marks});
      std::vector<GroupID>& groups = copied.back().marks.groups;
      groups.erase(groups.begin(), groups.begin() + static_cast<std::ptrdiff_t>(unit.depth));
    }
  }
  return copied;
}

// The oldest that holds all of them.
unsigned int VersionFor(const std::vector<const ObjectMarks*>& marks) {
  unsigned int version = kPlainVersion;
  for (const ObjectMarks* each : marks) {
    if (!each->IsLoose()) version = std::max(version, kMarkedVersion);
    if (!each->look.IsPlain()) version = std::max(version, kLookedVersion);
    if (each->label != nullptr) version = kLabelledVersion;
  }
  return version;
}

int WriteClipboard(AKFile& file, const std::vector<Copied>& copied) {
  std::vector<const ObjectMarks*> marks;
  marks.reserve(copied.size());
  for (const Copied& each : copied) marks.push_back(&each.marks);
  const unsigned int version = VersionFor(marks);
  AKFileChunk chunk{kClipboardSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWriteUInt32(file, version);
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(copied.size()));
  for (const auto& [object, ownMarks] : copied) {
    if (status != 0) break;
    const auto record = ProvenRecord(*object);
    status = WriteObjectChunk(file, *object, record ? *record : object->record);
  }
  if (status == 0 && version >= kMarkedVersion) status = WriteMarks(file, marks);
  if (status == 0 && version >= kLookedVersion) status = WriteLooks(file, marks);
  if (status == 0 && version >= kLabelledVersion) status = WriteLabels(file, marks);
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

using Objects = std::vector<std::unique_ptr<DocumentObject>>;

// Everything or nothing.
Result<> ReadClipboard(const std::string& bytes, GroupID firstGroup, Objects* objects) {
  const QuietLog quiet;
  AKFile stream(bytes.data(), static_cast<unsigned int>(bytes.size()));
  ObjectChunkReader reader(stream);
  AKFileChunk chunk;
  unsigned int version = 0;
  unsigned int count = 0;
  bool sound = stream.OpenForRead() == 0 && AKFileReadChunkHeader(stream, &chunk) == 0 &&
               chunk.signature == kClipboardSignature && AKFileReadUInt32(stream, &version) == 0 &&
               version >= kPlainVersion && version <= kLabelledVersion && AKFileReadUInt32(stream, &count) == 0;
  for (unsigned int i = 0; sound && i < count; ++i) {
    objects->push_back(reader.Read(chunk));
    sound = objects->back() != nullptr;
  }
  if (sound && version >= kMarkedVersion) {
    auto marks = ReadMarks(stream, chunk, objects->size(), firstGroup);
    sound = marks && (version < kLookedVersion || ReadLooks(stream, chunk, &*marks)) &&
            (version < kLabelledVersion || ReadLabels(stream, chunk, &*marks));
    for (std::size_t i = 0; sound && i < objects->size(); ++i) (*objects)[i]->marks = std::move((*marks)[i]);
  }
  if (!sound || objects->empty()) return Problem(N_("there is nothing on the clipboard that can be pasted"));
  return {};
}

}  // namespace

std::string SessionClipboard::Copy(const ObjectIDs& ids) const {
  AKFile stream(AKFile::kModeMemory);
  const void* data = nullptr;
  unsigned long long size = 0;
  if (stream.CreateForReadWrite() != 0 || WriteClipboard(stream, CopiedOf(document_, ids, selection_.Entered())) != 0 ||
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
  if (const auto done = ReadClipboard(clipboard, document_.NewGroup(), &objects); !done) return done.Why();
  EditStep step(steps_, Tr("Paste"));
  ObjectIDs pasted;
  for (auto& object : objects) {
    pasted.push_back(steps_.Insert(std::move(object), activeLayer_.Front()));
  }
  // Placeholders alone are not moved.
  if (dx != 0 || dy != 0) static_cast<void>(objects_.Shift(pasted, dx, dy));
  step.End();
  selection_.LeaveFor(pasted[0]);
  selection_.Select(pasted);
  return {};
}

Result<> SessionClipboard::PasteAt(const std::string& clipboard, const AGPoint& middle) {
  EditStep step(steps_, Tr("Paste"));
  if (const auto done = Paste(clipboard, 0, 0); !done) return done.Why();
  AGRect box;
  selection_.GetBox(selection_.IDs(), &box);
  const AGPoint old = box.Center();
  static_cast<void>(objects_.Shift(selection_.IDs(), middle.x - old.x, middle.y - old.y));
  return step.End();
}

Result<> SessionClipboard::Duplicate(const ObjectIDs& ids, double dx, double dy) {
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  EditStep step(steps_, Tr("Duplicate"));
  if (const auto done = Paste(Copy(ids), dx, dy); !done) return done.Why();
  return step.End();
}

}  // namespace host
