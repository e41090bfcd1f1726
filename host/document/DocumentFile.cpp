#include "host/document/DocumentFile.h"

#include <climits>
#include <cstring>

#include "host/Host.h"
#include "host/QuietLog.h"
#include "host/tables/SlotCall.h"
#include "kit/AKFile.h"
#include "kit/AKFileChunk.h"
#include "kit/AKFileGeometry.h"
#include "kit/AKFileNumbers.h"
#include "kit/AKFileRecords.h"
#include "kit/files/AKFileReplacer.h"
#include "kit/files/AKFileUtils.h"

namespace host {
namespace {

constexpr std::uint32_t kDocumentSignature = 0x48446F63;  // "HDoc"
constexpr std::uint32_t kObjectSignature = 0x484F626A;    // "HObj"
constexpr std::uint32_t kRecordSignature = 0x48526563;    // "HRec"
constexpr unsigned int kFormatVersion = 1;

// Reads one document from a stream that holds the whole file. The first problem is kept as a text.
class DocumentReader {
 public:
  explicit DocumentReader(AKFile const& file) : file_(file) {}

  std::unique_ptr<Document> Read() {
    AKFileChunk chunk;
    if (AKFileReadChunkHeader(file_, &chunk) != 0 || chunk.signature != kDocumentSignature) {
      return Fail("is not a document of this program");
    }
    unsigned long long size = 0;
    file_.GetFileInfo(&size, nullptr, nullptr);
    if (chunk.size + 8ULL > size) return Fail("is cut short");
    if (chunk.size + 8ULL < size) return Fail("has bytes behind its end");

    unsigned int version = 0;
    AGSize page;
    AGColor background;
    unsigned int count = 0;
    if (!Ok(AKFileReadUInt32(file_, &version))) return nullptr;
    if (version != kFormatVersion) return Fail("has the unknown format version " + std::to_string(version));
    if (!Ok(AKFileReadAGSize(file_, &page)) || !Ok(AKFileReadAGColor(file_, &background)) ||
        !Ok(AKFileReadUInt32(file_, &count))) {
      return nullptr;
    }
    auto document = std::make_unique<Document>(page);
    document->SetBackground(background);
    for (unsigned int i = 0; i < count; ++i) {
      if (!ReadObject(chunk, document.get())) {
        problem_ = "is damaged at object " + std::to_string(i) + ": " + problem_;
        return nullptr;
      }
    }
    return document;
  }

  std::string const& Problem() const { return problem_; }

 private:
  std::unique_ptr<Document> Fail(std::string problem) {
    problem_ = std::move(problem);
    return nullptr;
  }

  bool Ok(int status) {
    if (status != 0) problem_ = "it ends too early (status " + std::to_string(status) + ")";
    return status == 0;
  }

  // A chunk of a signature that ends no later than the one around it.
  bool ReadChunkWithin(AKFileChunk const& outer, std::uint32_t signature, AKFileChunk* chunk) {
    if (!Ok(AKFileReadChunkHeader(file_, chunk))) return false;
    if (chunk->signature != signature) {
      problem_ = "unexpected bytes at position " + std::to_string(chunk->pos);
      return false;
    }
    if (chunk->pos + 8 + chunk->size > outer.pos + 8 + outer.size) {
      problem_ = "the chunk at position " + std::to_string(chunk->pos) + " is longer than what holds it";
      return false;
    }
    return true;
  }

  bool ReadObject(AKFileChunk const& outer, Document* document) {
    AKFileChunk chunk;
    if (!ReadChunkWithin(outer, kObjectSignature, &chunk)) return false;
    DocumentObject object;
    if (!Ok(AKFileReadAKClassID(file_, &object.classID)) || !Ok(AKFileReadAGRect(file_, &object.bounds)) ||
        !Ok(AKFileReadAGCoord(file_, &object.angle)) || !Ok(object.brush.ReadFromFile(file_)) ||
        !Ok(object.pen.ReadFromFile(file_))) {
      return false;
    }
    object.classID.chars[7] = '\0';
    AKFileChunk record;
    if (!ReadChunkWithin(chunk, kRecordSignature, &record)) return false;

    AKClass const* cls = Host::Instance().Classes().Find(object.classID);
    const bool known = cls != nullptr && cls->constructor != nullptr;
    if (!(known ? ReadInstance(record, &object) : KeepBody(chunk, &object))) return false;
    document->Objects().push_back(std::move(object));
    return Ok(AKFileGotoChunkEnd(file_, chunk));
  }

  // The instance reads from a stream of its own record alone, so that it cannot run into what follows.
  bool ReadInstance(AKFileChunk const& record, DocumentObject* object) {
    AKMemoryBlock bytes;
    if (!ReadBytes(record.pos + 8, record.size, &bytes)) return false;
    AKFile stream(AKFile::kModeMemory);
    stream.CreateForReadWrite();
    stream.Write(object->classID.chars, sizeof(object->classID.chars));
    if (!bytes.IsEmpty()) stream.Write(bytes.Data(), bytes.Size());
    stream.SetPos(0);
    object->instance.reset(AKClass::NewObjectFromFile(nullptr, stream, kFormatVersion));
    if (object->instance) return true;
    problem_ = std::string("class \"") + object->classID.chars + "\" can't read its record (status " +
               std::to_string(AKClass::GetErrorNew()) + ")";
    return false;
  }

  bool KeepBody(AKFileChunk const& chunk, DocumentObject* object) {
    return ReadBytes(chunk.pos + 8, chunk.size, &object->unknownBody);
  }

  bool ReadBytes(std::uint64_t position, std::uint32_t size, AKMemoryBlock* bytes) {
    bytes->Allocate(size, false);
    if (!Ok(file_.SetPos(position))) return false;
    return size == 0 || Ok(AKFileRead(file_, bytes->MutableData(), size));
  }

  AKFile const& file_;
  std::string problem_;
};

int WriteKnownBody(AKFile& file, DocumentObject const& object) {
  int status = AKFileWriteAKClassID(file, object.classID);
  if (status == 0) status = AKFileWriteAGRect(file, object.bounds);
  if (status == 0) status = AKFileWriteAGCoord(file, object.angle);
  if (status == 0) status = object.brush.WriteToFile(file);
  if (status == 0) status = object.pen.WriteToFile(file);
  if (status != 0) return status;
  AKFileChunk record{kRecordSignature};
  status = AKFileWriteChunkHeader(file, record);
  AKClass const& cls = *object.instance->Class();
  if (status == 0 && HasSlot(cls, kAKMethodWriteToFile)) {
    status = CallSlot<int, AKFile&>(cls, kAKMethodWriteToFile, object.instance.get(), file);
  }
  return status == 0 ? AKFileWriteChunkComplete(file, record) : status;
}

int WriteObject(AKFile& file, DocumentObject const& object) {
  AKFileChunk chunk{kObjectSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status != 0) return status;
  if (object.IsPlaceholder()) {
    status = AKFileWrite(file, object.unknownBody.Data(), object.unknownBody.Size());
  } else {
    status = WriteKnownBody(file, object);
  }
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

int WriteContent(AKFile& file, Document const& document) {
  AKFileChunk chunk{kDocumentSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWriteUInt32(file, kFormatVersion);
  if (status == 0) status = AKFileWriteAGSize(file, document.Page());
  if (status == 0) status = AKFileWriteAGColor(file, document.Background());
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(document.Objects().size()));
  for (DocumentObject const& object : document.Objects()) {
    if (status == 0) status = WriteObject(file, object);
  }
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

// Writes a file by `write`, a function of an AKFile& that returns a status: whole, or not at all.
template <typename Write>
bool Replace(std::string const& path, Write write, std::string* error) {
  const QuietLog quiet;
  AKFilePath target;
  int status = -1;
  int reason = 0;
  if (AKFileUtils::GetFromSystemPath(path.c_str(), &target)) {
    AKFileReplacer replacer(target);
    errno = 0;
    status = replacer.Open();
    if (status == 0) status = write(replacer.File());
    if (status == 0) status = replacer.Commit();
    reason = errno;  // before the replacer cleans up
  }
  if (status == 0) return true;
  const std::string text = reason != 0 ? std::strerror(reason) : "status " + std::to_string(status);
  *error = "can't write \"" + path + "\": " + text;
  return false;
}

}  // namespace

std::unique_ptr<Document> ReadDocument(std::string const& path, std::string* error) {
  const QuietLog quiet;
  AKFilePath source;
  if (!AKFileUtils::GetFromSystemPath(path.c_str(), &source)) {
    *error = "can't open \"" + path + "\": its name has characters that this program can't represent";
    return nullptr;
  }
  if (AKFileUtils::IsFolder(source)) {
    *error = "can't open \"" + path + "\": it is a folder";
    return nullptr;
  }
  AKFile file(source);
  errno = 0;
  if (file.OpenForRead() != 0) {
    *error = "can't open \"" + path + "\": " + std::strerror(errno);
    return nullptr;
  }
  DocumentReader reader(file);
  auto document = reader.Read();
  if (!document) *error = "\"" + path + "\" " + reader.Problem();
  return document;
}

bool WriteDocument(Document const& document, std::string const& path, std::string* error) {
  return Replace(
      path, [&document](AKFile& file) { return WriteContent(file, document); }, error);
}

bool ReplaceFile(std::string const& path, void const* data, std::size_t size, std::string* error) {
  return Replace(
      path, [data, size](AKFile& file) { return AKFileWrite(file, data, size); }, error);
}

}  // namespace host
