// Documents on disk.
//
// The format is described byte by byte in docs/document-format.md: chunks "HDoc" around "HLay" around "HObj". Files of
// its first version, which had no layers, are still read. A reader skips what follows the parts that it knows within a
// chunk. An object of a class that no bundle has keeps its chunk's bytes.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/model/Document.h"
#include "host/text/Problem.h"
#include "kit/streams/AKFile.h"

namespace host {

/// Fails for a file that is missing, unreadable, truncated, damaged or of another type.
Result<std::unique_ptr<Document>> ReadDocument(const std::string& path);

/// The same from a stream that holds a document and nothing else; `name` is the file's in messages.
Result<std::unique_ptr<Document>> ReadDocument(const AKFile& file, const std::string& name);

/// What the document has that could not be read and is kept as it was in the file: an object whose class refuses its
/// record. Objects without a class are not told of.
std::vector<Problem> UnreadObjects(const Document& document);

/// Replaces the file whole or leaves it as it was. Every record is read back before, so that a class that goes wrong
/// while it writes stops the save, and the file can be opened again. `model` is that of ReplaceFileBy.
Result<> WriteDocument(const Document& document, const std::string& path,
                       const std::optional<std::string>& model = std::nullopt);

/// The same into a stream. Returns its status; where it is an object's record that stops it, -1 with the reason in
/// `*unwritable`. With null, no class is asked: the records are those that the host keeps of its objects, as their
/// classes wrote them after the last call that may have changed them.
int WriteDocument(const Document& document, AKFile& file, std::optional<Problem>* unwritable);

/// A text or path as a chunk "strg", padded with NULs to a multiple of 4 bytes. A path need not be UTF-8. Reading gives
/// false for another chunk.
int WriteTextChunk(AKFile& file, const std::string& text);
bool ReadTextChunk(const AKFile& file, std::string* text);

}  // namespace host
