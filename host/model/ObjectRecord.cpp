#include "host/model/ObjectRecord.h"

#include "host/Host.h"
#include "host/model/InstanceCall.h"
#include "host/tables/SlotCall.h"
#include "host/text/Localisation.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"

namespace host {
namespace {

constexpr std::uint32_t kObjectSignature = 0x484F626A;  // "HObj"
constexpr std::uint32_t kRecordSignature = 0x48526563;  // "HRec"

int BlockOf(const AKFile& stream, AKMemoryBlock* block) {
  const void* data = nullptr;
  unsigned long long size = 0;
  const int status = stream.GetMemoryStreamDataPtr(&data, &size);
  block->Assign(data, static_cast<unsigned int>(size));
  return status;
}

int WriteInstance(AKFile& file, const AKObject& instance) {
  const AKClass& cls = *instance.Class();
  if (!HasSlot(cls, kAKMethodWriteToFile)) return 0;
  const InstanceCall call(InstanceCall::Kind::kEdit);
  return CallSlot<int, AKFile&>(cls, kAKMethodWriteToFile, &instance, file);
}

// A chunk whose size is foreseen, as most are: its header is written once and for all, and again only when the body has
// come out longer or shorter. Going back for every size would take a quarter of the time of saving.
class ForeseenChunk {
 public:
  ForeseenChunk(AKFile& file, std::uint32_t signature) : file_(file), chunk_{signature} {}

  int Begin(std::uint32_t size) {
    unsigned long long position = 0;
    int status = file_.GetPos(&position);
    chunk_.pos = position;
    chunk_.size = size;
    if (status == 0) status = AKFileWriteSignat32(file_, chunk_.signature);
    return status == 0 ? AKFileWriteUInt32(file_, size) : status;
  }
  int Complete() {
    unsigned long long end = 0;
    int status = file_.GetPos(&end);
    if (status != 0 || end == chunk_.pos + kAKFileChunkHeaderSize + chunk_.size) return status;
    status = AKFileGotoChunkBegin(file_, chunk_);
    if (status == 0) status = AKFileWriteChunkHeader(file_, chunk_);
    if (status == 0) status = file_.SetPos(end);
    return status == 0 ? AKFileWriteChunkComplete(file_, chunk_) : status;
  }

 private:
  AKFile& file_;
  AKFileChunk chunk_;
};

// Class, bounds, angle, brush and pen, and the header of the record behind them.
constexpr std::uint32_t kBytesBeforeRecord = 8 + 32 + 8 + 40 + 80 + kAKFileChunkHeaderSize;

}  // namespace

int WriteRecord(const AKObject& instance, AKMemoryBlock* record) {
  AKFile stream(AKFile::kModeMemory);
  int status = stream.CreateForReadWrite();
  if (status == 0) status = WriteInstance(stream, instance);
  return status == 0 ? BlockOf(stream, record) : status;
}

Instance MakeInstance(AKClassID classID, const AKMemoryBlock& record, int* status) {
  AKFile stream(AKFile::kModeMemory);
  stream.CreateForReadWrite();
  stream.Write(classID.chars, sizeof(classID.chars));
  if (!record.IsEmpty()) stream.Write(record.Data(), record.Size());
  stream.SetPos(0);
  const InstanceCall call(InstanceCall::Kind::kEdit);
  Instance instance(AKClass::NewObjectFromFile(nullptr, stream, kRecordVersion));
  *status = instance ? 0 : AKClass::GetErrorNew();
  return instance;
}

int WriteBody(AKFile& file, const DocumentObject& object) {
  if (object.IsPlaceholder()) return AKFileWrite(file, object.unknownBody.Data(), object.unknownBody.Size());
  int status = AKFileWriteAKClassID(file, object.classID);
  if (status == 0) status = AKFileWriteAGRect(file, object.bounds);
  if (status == 0) status = AKFileWriteAGCoord(file, object.angle);
  if (status == 0) status = object.brush.WriteToFile(file);
  if (status == 0) status = object.pen.WriteToFile(file);
  if (status != 0) return status;
  ForeseenChunk record(file, kRecordSignature);
  status = record.Begin(object.record.Size());
  if (status != 0) return status;
  if (object.instance) {
    status = WriteInstance(file, *object.instance);
  } else if (!object.record.IsEmpty()) {
    status = AKFileWrite(file, object.record.Data(), object.record.Size());
  }
  return status == 0 ? record.Complete() : status;
}

AKMemoryBlock BodyOf(const DocumentObject& object) {
  AKMemoryBlock body;
  AKFile stream(AKFile::kModeMemory);
  if (stream.CreateForReadWrite() == 0 && WriteBody(stream, object) == 0) BlockOf(stream, &body);
  return body;
}

int WriteObjectChunk(AKFile& file, const DocumentObject& object) {
  ForeseenChunk chunk(file, kObjectSignature);
  const std::uint32_t size =
      object.IsPlaceholder() ? object.unknownBody.Size() : kBytesBeforeRecord + object.record.Size();
  int status = chunk.Begin(size);
  if (status == 0) status = WriteBody(file, object);
  return status == 0 ? chunk.Complete() : status;
}

bool ObjectChunkReader::Ok(int status) {
  if (status != 0) problem_ = Problem(N_("it ends too early (status %s)"), {std::to_string(status)});
  return status == 0;
}

bool ObjectChunkReader::ReadHeader(const AKFileChunk& outer, std::uint32_t signature, AKFileChunk* chunk) {
  if (!Ok(AKFileReadChunkHeader(file_, chunk))) return false;
  if (chunk->signature != signature) {
    problem_ = Problem(N_("unexpected bytes at position %s"), {std::to_string(chunk->pos)});
    return false;
  }
  if (chunk->pos + kAKFileChunkHeaderSize + chunk->size > outer.pos + kAKFileChunkHeaderSize + outer.size) {
    problem_ = Problem(N_("the chunk at position %s is longer than what holds it"), {std::to_string(chunk->pos)});
    return false;
  }
  return true;
}

bool ObjectChunkReader::ReadBytes(std::uint32_t size, AKMemoryBlock* bytes) {
  if (!file_.HasBytes(size)) return Ok(-1);
  bytes->Allocate(size, false);
  return size == 0 || Ok(AKFileRead(file_, bytes->MutableData(), size));
}

bool ObjectChunkReader::ReadHostFields(DocumentObject* object) {
  if (!Ok(AKFileReadAKClassID(file_, &object->classID)) || !Ok(AKFileReadAGRect(file_, &object->bounds)) ||
      !Ok(AKFileReadAGCoord(file_, &object->angle)) || !Ok(object->brush.ReadFromFile(file_)) ||
      !Ok(object->pen.ReadFromFile(file_))) {
    return false;
  }
  object->classID.chars[7] = '\0';
  return true;
}

bool ObjectChunkReader::ReadInstance(const AKFileChunk& record, DocumentObject* object) {
  if (!ReadBytes(record.size, &object->record)) return false;
  int status = 0;
  object->instance = MakeInstance(object->classID, object->record, &status);
  if (object->instance) return true;
  problem_ =
      Problem(N_("class \"%s\" can't read its record (status %s)"), {object->classID.chars, std::to_string(status)});
  return false;
}

std::unique_ptr<DocumentObject> ObjectChunkReader::Read(const AKFileChunk& outer) {
  AKFileChunk chunk;
  AKFileChunk record;
  auto object = std::make_unique<DocumentObject>();
  if (!ReadHeader(outer, kObjectSignature, &chunk) || !ReadHostFields(object.get()) ||
      !ReadHeader(chunk, kRecordSignature, &record)) {
    return nullptr;
  }
  const AKClass* cls = Host::Instance().Classes().Find(object->classID);
  if (cls != nullptr && cls->constructor != nullptr) {
    if (!ReadInstance(record, object.get())) return nullptr;
  } else if (!Ok(file_.SetPos(chunk.pos + kAKFileChunkHeaderSize)) || !ReadBytes(chunk.size, &object->unknownBody)) {
    return nullptr;
  }
  return Ok(AKFileGotoChunkEnd(file_, chunk)) ? std::move(object) : nullptr;
}

}  // namespace host
