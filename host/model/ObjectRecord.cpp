#include "host/model/ObjectRecord.h"

#include <cerrno>
#include <new>

#include "host/Host.h"
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
  return CallSlot<int, AKFile&>(cls, kAKMethodWriteToFile, &instance, file);
}

// All sizes are known before: going back for every size would take a quarter of the time of saving.
int WriteHeader(AKFile& file, const AKFileChunk& chunk) {
  const int status = AKFileWriteSignat32(file, chunk.signature);
  return status == 0 ? AKFileWriteUInt32(file, chunk.size) : status;
}

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
  errno = 0;
  Instance instance(AKClass::NewObjectFromFile(nullptr, stream, kRecordVersion));
  *status = instance ? 0 : AKClass::GetErrorNew();
  if (!instance && errno == ENOMEM) throw std::bad_alloc();  // that is nothing of the record's
  return instance;
}

Result<AKMemoryBlock> ProvenRecord(const DocumentObject& object) {
  AKMemoryBlock record;
  if (!object.instance) return object.record;
  int status = WriteRecord(*object.instance, &record);
  if (status != 0) {
    return Problem(N_("class \"%s\" can't write its record (status %s)"),
                   {object.classID.chars, std::to_string(status)});
  }
  const bool isKept = record == object.record;
  if (isKept && object.isRecordProven) return record;
  if (!MakeInstance(object.classID, record, &status)) {
    return Problem(N_("class \"%s\" writes a record that it can't read back (status %s)"),
                   {object.classID.chars, std::to_string(status)});
  }
  if (isKept) object.isRecordProven = true;
  return record;
}

Problem WhyPlaceholder(const DocumentObject& object) {
  if (object.unreadStatus == 0) {
    return {N_("the object can't be changed: no bundle has its class \"%s\""), {object.classID.chars}};
  }
  return {N_("the object can't be changed: its class \"%s\" can't read its record (status %s)"),
          {object.classID.chars, std::to_string(object.unreadStatus)}};
}

namespace {

int WriteBody(AKFile& file, const DocumentObject& object, const AKMemoryBlock& bytes) {
  if (object.IsPlaceholder()) return AKFileWrite(file, object.unknownBody.Data(), object.unknownBody.Size());
  int status = AKFileWriteAKClassID(file, object.classID);
  if (status == 0) status = AKFileWriteAGRect(file, object.bounds);
  if (status == 0) status = AKFileWriteAGCoord(file, object.angle);
  if (status == 0) status = object.brush.WriteToFile(file);
  if (status == 0) status = object.pen.WriteToFile(file);
  if (status != 0) return status;
  AKFileChunk record{kRecordSignature};
  record.size = bytes.Size();
  status = WriteHeader(file, record);
  if (status == 0 && !bytes.IsEmpty()) status = AKFileWrite(file, bytes.Data(), bytes.Size());
  return status;
}

}  // namespace

AKMemoryBlock BodyOf(const DocumentObject& object) {
  AKMemoryBlock body;
  AKFile stream(AKFile::kModeMemory);
  if (stream.CreateForReadWrite() == 0 && WriteBody(stream, object, object.record) == 0) BlockOf(stream, &body);
  return body;
}

int WriteObjectChunk(AKFile& file, const DocumentObject& object, const AKMemoryBlock& record) {
  AKFileChunk chunk{kObjectSignature};
  chunk.size = object.IsPlaceholder() ? object.unknownBody.Size() : kBytesBeforeRecord + record.Size();
  const int status = WriteHeader(file, chunk);
  return status == 0 ? WriteBody(file, object, record) : status;
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

// The instance, unless there is no such class or it can't read the record.
bool ObjectChunkReader::ReadInstance(const AKFileChunk& record, DocumentObject* object) {
  const AKClass* cls = Host::Instance().Classes().Find(object->classID);
  if (cls == nullptr || cls->constructor == nullptr) return true;
  if (!ReadBytes(record.size, &object->record)) return false;
  object->instance = MakeInstance(object->classID, object->record, &object->unreadStatus);
  object->isRecordProven = object->instance != nullptr;
  return true;
}

// All of the chunk, to be written back as it is.
bool ObjectChunkReader::ReadPlaceholder(const AKFileChunk& chunk, DocumentObject* object) {
  object->record.Free();
  return Ok(file_.SetPos(chunk.pos + kAKFileChunkHeaderSize)) && ReadBytes(chunk.size, &object->unknownBody);
}

std::unique_ptr<DocumentObject> ObjectChunkReader::Read(const AKFileChunk& outer) {
  AKFileChunk chunk;
  AKFileChunk record;
  auto object = std::make_unique<DocumentObject>();
  if (!ReadHeader(outer, kObjectSignature, &chunk) || !ReadHostFields(object.get()) ||
      !ReadHeader(chunk, kRecordSignature, &record) || !ReadInstance(record, object.get()) ||
      (!object->instance && !ReadPlaceholder(chunk, object.get()))) {
    return nullptr;
  }
  return Ok(AKFileGotoChunkEnd(file_, chunk)) ? std::move(object) : nullptr;
}

}  // namespace host
