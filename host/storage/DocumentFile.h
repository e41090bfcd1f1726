// Documents on disk.
//
// The format is described byte by byte in docs/document-format.md: chunks "HDoc" around "HLay" around "HObj". Files of
// its first version, which had no layers, are still read. A reader skips what follows the parts that it knows within a
// chunk. An object of a class that no bundle has keeps its chunk's bytes.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/model/Document.h"
#include "kit/streams/AKFile.h"

namespace host {

/// Null on failure, with one line in `*error`: missing, unreadable, truncated, damaged or of another type.
std::unique_ptr<Document> ReadDocument(const std::string& path, std::string* error);

/// The same from a stream that holds a document and nothing else; what goes behind the file's name in `*problem`.
std::unique_ptr<Document> ReadDocument(const AKFile& file, std::string* problem);

/// Replaces the file whole or leaves it as it was, with one line in `*error`.
bool WriteDocument(const Document& document, const std::string& path, std::string* error);

/// The same into a stream. Returns its status, or that of an object that can't be written.
int WriteDocument(const Document& document, AKFile& file);

/// Puts bytes into a file: whole, or not at all.
bool ReplaceFile(const std::string& path, const void* data, std::size_t size, std::string* error);
/// The same from a function that writes and returns a status.
bool ReplaceFileBy(const std::string& path, const std::function<int(AKFile&)>& write, std::string* error);

/// UTF-8 as a chunk "strg", padded with NULs to a multiple of 4 bytes. Reading gives false for anything else.
int WriteTextChunk(AKFile& file, const std::string& utf8);
bool ReadTextChunk(const AKFile& file, std::string* utf8);

}  // namespace host
