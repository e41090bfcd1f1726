// Objects as bytes: the record that a class writes of an instance, and the chunk of a whole object in files and on the
// clipboard (docs/document-format.md). Statuses are those of the file, or what the class returned.
#pragma once

#include <string>

#include "host/model/DocumentObject.h"
#include "host/text/Problem.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileChunk.h"

namespace host {

/// What the instance's class writes of it, into a stream of its own: whatever the class does to the stream, it does to
/// its record alone. Nothing for a class without such a method.
int WriteRecord(const AKObject& instance, AKMemoryBlock* record);

/// The record for a file: what the class writes now, read back by a fresh instance, so that nothing is written that
/// can't be opened again. A placeholder has none.
Result<AKMemoryBlock> ProvenRecord(const DocumentObject& object);

/// A new instance that has read the record from a stream of its own, so that it cannot run into what follows. Null with
/// the reason in `*status` when there is no such class or it refuses.
Instance MakeInstance(AKClassID classID, const AKMemoryBlock& record, int* status);

/// The body of the object's chunk with the record that it keeps.
AKMemoryBlock BodyOf(const DocumentObject& object);

/// A whole "HObj" chunk with that record. `record` is not used for a placeholder, which writes its own bytes.
int WriteObjectChunk(AKFile& file, const DocumentObject& object, const AKMemoryBlock& record);

/// Why nothing in the placeholder can be changed.
Problem WhyPlaceholder(const DocumentObject& object);

/// Reads "HObj" chunks, each of which must end within the chunk around it.
class ObjectChunkReader {
 public:
  explicit ObjectChunkReader(const AKFile& file) : file_(file) {}

  /// The object, without an ID and behind its chunk, or null with the reason in Why().
  std::unique_ptr<DocumentObject> Read(const AKFileChunk& outer);
  /// A chunk of a signature that ends no later than the one around it; the position is then behind its header.
  bool ReadHeader(const AKFileChunk& outer, std::uint32_t signature, AKFileChunk* chunk);
  /// `size` bytes, which must be there, from the position.
  bool ReadBytes(std::uint32_t size, AKMemoryBlock* bytes);
  /// True for status 0; otherwise Why() says that the file ends too early.
  bool Ok(int status);

  /// What went wrong first, once something did.
  const std::optional<Problem>& Why() const { return problem_; }

 private:
  bool ReadHostFields(DocumentObject* object);
  bool ReadInstance(const AKFileChunk& record, DocumentObject* object);
  bool ReadPlaceholder(const AKFileChunk& chunk, DocumentObject* object);

  const AKFile& file_;
  std::optional<Problem> problem_;
};

}  // namespace host
