#include "host/storage/DocumentFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "host/HostLog.h"
#include "host/model/ObjectRecord.h"
#include "host/storage/AidsChunk.h"
#include "host/storage/LabelsChunk.h"
#include "host/storage/LooksChunk.h"
#include "host/storage/MarksChunk.h"
#include "host/storage/WholeFiles.h"
#include "host/text/Localisation.h"
#include "host/text/Utf8Check.h"
#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileNumbers.h"

namespace host {
namespace {

constexpr std::uint32_t kDocumentSignature = 0x48446F63;  // "HDoc"
constexpr std::uint32_t kLayerSignature = 0x484C6179;     // "HLay"
constexpr std::uint32_t kTextSignature = 0x73747267;      // "strg"
constexpr unsigned int kFlatVersion = 1;                  // objects without layers
constexpr unsigned int kPlainVersion = 2;
constexpr unsigned int kMarkedVersion = 3;    // some objects are hidden, locked or in groups
constexpr unsigned int kLookedVersion = 4;    // some are faint, mirrored or dashed, or the page has guides
constexpr unsigned int kLabelledVersion = 5;  // some have labels
constexpr unsigned int kLayerVisible = 1;
constexpr unsigned int kLayerLocked = 2;

// Text without its padding; false when it is no UTF-8.
bool TakeText(const AKMemoryBlock& bytes, std::string* text) {
  text->assign(reinterpret_cast<const char*>(bytes.Data()), bytes.Size());
  text->erase(text->find_last_not_of('\0') + 1);
  return FindInvalidUtf8(*text) == text->size();
}

// Reads one document from a stream that holds the whole file. The first problem is kept.
class DocumentReader {
 public:
  explicit DocumentReader(const AKFile& file) : file_(file), objects_(file) {}

  Result<std::unique_ptr<Document>> Read() {
    if (auto document = ReadAll()) return document;
    return *problem_;
  }

 private:
  std::unique_ptr<Document> ReadAll() {
    AKFileChunk chunk;
    if (AKFileReadChunkHeader(file_, &chunk) != 0 || chunk.signature != kDocumentSignature) {
      return Fail(Problem(N_("is not a document of this program")));
    }
    unsigned long long size = 0;
    file_.GetFileInfo(&size, nullptr, nullptr);
    if (chunk.size + 8ULL > size) return Fail(Problem(N_("is cut short")));
    if (chunk.size + 8ULL < size) return Fail(Problem(N_("has bytes behind its end")));

    AGSize page;
    AGColor background;
    unsigned int count = 0;
    if (!Ok(AKFileReadUInt32(file_, &version_))) return nullptr;
    if (version_ < kFlatVersion || version_ > kLabelledVersion) {
      return Fail(Problem(N_("has the unknown format version %s"), {std::to_string(version_)}));
    }
    if (!Ok(AKFileReadAGSize(file_, &page)) || !Ok(AKFileReadAGColor(file_, &background)) ||
        !Ok(AKFileReadUInt32(file_, &count))) {
      return nullptr;
    }
    document_ = std::make_unique<Document>(page);
    document_->SetPage(page, background);
    const LayerID first = document_->FirstLayer().id;
    const bool sound = version_ == kFlatVersion ? ReadObjects(chunk, count, first)
                                                : ReadLayers(chunk, count, first) && ReadPageAids(chunk);
    return sound ? std::move(document_) : nullptr;
  }

  std::unique_ptr<Document> Fail(Problem problem) {
    problem_ = std::move(problem);
    return nullptr;
  }

  bool Ok(int status) {
    if (!objects_.Ok(status)) problem_ = objects_.Why();
    return status == 0;
  }

  bool ReadLayers(const AKFileChunk& outer, unsigned int count, LayerID first) {
    if (count == 0) {
      problem_ = Problem(N_("is damaged: it has no layer"));
      return false;
    }
    for (unsigned int i = 0; i < count; ++i) {
      const LayerID layer = i == 0 ? first : document_->InsertLayer({}, i);
      if (ReadLayer(outer, layer)) continue;
      if (!problem_) {
        problem_ = Problem(N_("is damaged at layer %s: %s"), {std::to_string(i), *objects_.Why()});
      }
      return false;
    }
    return true;
  }

  bool ReadPageAids(const AKFileChunk& outer) {
    if (version_ < kLookedVersion) return true;
    auto aids = ReadAids(file_, outer);
    if (!aids) {
      problem_ = Problem(N_("is damaged: %s"), {aids.Why()});
      return false;
    }
    document_->SetAids(std::move(*aids));
    return true;
  }

  bool ReadLayer(const AKFileChunk& outer, LayerID layer) {
    AKFileChunk chunk;
    unsigned int flags = 0;
    unsigned int count = 0;
    LayerSettings settings;
    if (!objects_.ReadHeader(outer, kLayerSignature, &chunk) || !objects_.Ok(AKFileReadUInt32(file_, &flags)) ||
        !objects_.Ok(AKFileReadUInt32(file_, &count)) || !ReadName(chunk, &settings.name)) {
      return false;
    }
    settings.visible = (flags & kLayerVisible) != 0;
    settings.locked = (flags & kLayerLocked) != 0;
    document_->SetLayerSettings(layer, std::move(settings));
    return ReadObjects(chunk, count, layer) && (version_ < kMarkedVersion || ReadLayerMarks(chunk, layer)) &&
           objects_.Ok(AKFileGotoChunkEnd(file_, chunk));
  }

  bool ReadLayerMarks(const AKFileChunk& outer, LayerID layer) {
    const ObjectOrder& order = document_->FindLayer(layer)->objects;
    auto marks = ReadMarks(file_, outer, order.Count(), document_->NewGroup());
    if (!marks) {
      problem_ = Problem(N_("is damaged: %s"), {marks.Why()});
      return false;
    }
    auto read = version_ < kLookedVersion ? Result<>() : ReadLooks(file_, outer, &*marks);
    if (read && version_ >= kLabelledVersion) read = ReadLabels(file_, outer, &*marks);
    if (!read) {
      problem_ = Problem(N_("is damaged: %s"), {read.Why()});
      return false;
    }
    for (std::size_t i = 0; i < marks->size(); ++i) {
      if (!(*marks)[i].IsPlain()) document_->SetMarks(order.At(i)->id, std::move((*marks)[i]));
    }
    return true;
  }

  bool ReadName(const AKFileChunk& outer, std::string* name) {
    AKFileChunk chunk;
    AKMemoryBlock bytes;
    if (!objects_.ReadHeader(outer, kTextSignature, &chunk) || !objects_.ReadBytes(chunk.size, &bytes)) return false;
    if (TakeText(bytes, name)) return true;
    problem_ = Problem(N_("is damaged: the name at position %s is no UTF-8"), {std::to_string(chunk.pos)});
    return false;
  }

  bool ReadObjects(const AKFileChunk& outer, unsigned int count, LayerID layer) {
    for (unsigned int i = 0; i < count; ++i) {
      auto object = objects_.Read(outer);
      if (!object) {
        const std::size_t number = document_->ObjectCount();
        problem_ = Problem(N_("is damaged at object %s: %s"), {std::to_string(number), *objects_.Why()});
        return false;
      }
      document_->InsertObject(std::move(object), {layer, i});
    }
    return true;
  }

  const AKFile& file_;
  ObjectChunkReader objects_;
  std::unique_ptr<Document> document_;
  std::optional<Problem> problem_;
  unsigned int version_ = 0;
};

// Writes the document's objects one after the other.
class ObjectWriter {
 public:
  ObjectWriter(AKFile& file, std::optional<Problem>* unwritable) : file_(file), unwritable_(unwritable) {}

  int Write(const DocumentObject& object) {
    if (unwritable_ == nullptr) return WriteObjectChunk(file_, object, object.record);
    const auto record = ProvenRecord(object);
    if (!record) {
      *unwritable_ = Problem(N_("object %s: %s"), {std::to_string(number_), record.Why()});
      return -1;
    }
    ++number_;
    return WriteObjectChunk(file_, object, *record);
  }

 private:
  AKFile& file_;
  std::optional<Problem>* unwritable_;
  std::size_t number_ = 0;
};

int WriteLayerMarks(AKFile& file, const Layer& layer, unsigned int version) {
  std::vector<const ObjectMarks*> marks;
  layer.objects.ForEach([&marks](const DocumentObject& object) { marks.push_back(&object.marks); });
  int status = WriteMarks(file, marks);
  if (status == 0 && version >= kLookedVersion) status = WriteLooks(file, marks);
  return status == 0 && version >= kLabelledVersion ? WriteLabels(file, marks) : status;
}

// The oldest that holds all of it.
unsigned int VersionFor(const Document& document) {
  unsigned int version = document.Aids() == PageAids() ? kPlainVersion : kLookedVersion;
  document.ForEachObject([&version](const DocumentObject& object) {
    if (!object.marks.IsLoose()) version = std::max(version, kMarkedVersion);
    if (!object.marks.look.IsPlain()) version = std::max(version, kLookedVersion);
    if (object.marks.label != nullptr) version = kLabelledVersion;
  });
  return version;
}

int WriteLayer(AKFile& file, const Layer& layer, unsigned int version, ObjectWriter* objects) {
  const LayerSettings& settings = layer.settings;
  AKFileChunk chunk{kLayerSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  const unsigned int flags = (settings.visible ? kLayerVisible : 0) | (settings.locked ? kLayerLocked : 0);
  if (status == 0) status = AKFileWriteUInt32(file, flags);
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(layer.objects.Count()));
  if (status == 0) status = WriteTextChunk(file, settings.name);
  layer.objects.ForEach([&](const DocumentObject& object) {
    if (status == 0) status = objects->Write(object);
  });
  if (status == 0 && version >= kMarkedVersion) status = WriteLayerMarks(file, layer, version);
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

}  // namespace

int WriteTextChunk(AKFile& file, const std::string& text) {
  AKFileChunk chunk{kTextSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWrite(file, text.data(), text.size());
  if (status == 0) status = AKFileWriteZeros(file, (4 - text.size() % 4) % 4);
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

bool ReadTextChunk(const AKFile& file, std::string* text) {
  AKFileChunk chunk;
  AKMemoryBlock bytes;
  if (AKFileReadChunkHeader(file, &chunk) != 0 || chunk.signature != kTextSignature || !file.HasBytes(chunk.size)) {
    return false;
  }
  bytes.Allocate(chunk.size, false);
  if (chunk.size != 0 && AKFileRead(file, bytes.MutableData(), chunk.size) != 0) return false;
  static_cast<void>(TakeText(bytes, text));
  return true;
}

int WriteDocument(const Document& document, AKFile& file, std::optional<Problem>* unwritable) {
  ObjectWriter objects(file, unwritable);
  AKFileChunk chunk{kDocumentSignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  const unsigned int version = VersionFor(document);
  if (status == 0) status = AKFileWriteUInt32(file, version);
  if (status == 0) status = AKFileWriteAGSize(file, document.Page());
  if (status == 0) status = AKFileWriteAGColor(file, document.Background());
  if (status == 0) status = AKFileWriteUInt32(file, static_cast<unsigned int>(document.Layers().size()));
  for (const Layer* layer : document.Layers()) {
    if (status == 0) status = WriteLayer(file, *layer, version, &objects);
  }
  if (status == 0 && version >= kLookedVersion) status = WriteAids(file, document.Aids());
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

Result<std::unique_ptr<Document>> ReadDocument(const std::string& path) {
  const QuietLog quiet;
  AKFilePath source;
  AKFileUtils::GetFromSystemPath(path.c_str(), &source);
  if (AKFileUtils::IsFolder(source)) {
    return Problem(N_("can't open \"%s\": it is a folder"), {path});
  }
  AKFile file(source);
  errno = 0;
  if (file.OpenForRead() != 0) {
    return Problem(N_("can't open \"%s\": %s"), {path, std::strerror(errno)});
  }
  return ReadDocument(file, path);
}

Result<std::unique_ptr<Document>> ReadDocument(const AKFile& file, const std::string& name) {
  auto document = DocumentReader(file).Read();
  if (!document) return Problem(N_("\"%s\" %s"), {name, document.Why()});
  return document;
}

std::vector<Problem> UnreadObjects(const Document& document) {
  std::vector<Problem> unread;
  std::size_t number = 0;
  document.ForEachObject([&](const DocumentObject& object) {
    if (object.unreadStatus != 0) {
      unread.emplace_back(N_("object %s of class \"%s\" can't be read (status %s); it is kept as it is"),
                          std::initializer_list<Problem::Part>{std::to_string(number), object.classID.chars,
                                                               std::to_string(object.unreadStatus)});
    }
    ++number;
  });
  return unread;
}

Result<> WriteDocument(const Document& document, const std::string& path, const std::optional<std::string>& model) {
  std::optional<Problem> unwritable;
  const auto write = [&](AKFile& file) { return WriteDocument(document, file, &unwritable); };
  auto done = ReplaceFileBy(path, write, model);
  if (unwritable) return Problem(N_("can't write \"%s\": %s"), {path, *unwritable});
  return done;
}

}  // namespace host
