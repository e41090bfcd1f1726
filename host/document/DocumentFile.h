// Documents on disk.
//
// The format is described byte by byte in docs/document-format.md: chunks "HDoc" around "HLay" around "HObj". Files of
// its first version, which had no layers, are still read. A reader skips what follows the parts that it knows within a
// chunk. An object of a class that no bundle has keeps its chunk's bytes.
#pragma once

#include <memory>
#include <string>

#include "host/document/Document.h"
#include "kit/AKFile.h"

namespace host {

/// Null on failure, with one line in `*error`: missing, unreadable, truncated, damaged or of another type.
std::unique_ptr<Document> ReadDocument(std::string const& path, std::string* error);

/// Replaces the file whole or leaves it as it was, with one line in `*error`.
bool WriteDocument(Document const& document, std::string const& path, std::string* error);

/// The same into a stream. Returns its status, or that of an object that can't be written.
int WriteDocument(Document const& document, AKFile& file);

/// Puts bytes into a file: whole, or not at all.
bool ReplaceFile(std::string const& path, void const* data, std::size_t size, std::string* error);

}  // namespace host
