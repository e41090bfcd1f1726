// Documents on disk.
//
// One chunk "HDoc" that fills the file, numbers little-endian:
//
//   UInt32       format version, 1
//   AGSize       page width and height (2 x Float64)
//   AGColor      background (4 bytes: red, green, blue, alpha)
//   UInt32       object count
//   count times a chunk "HObj":
//     AKClassID  8 bytes
//     AGRect     bounds (4 x Float64: x0, y0, x1, y1)
//     Float64    angle in radians
//     brush      40 bytes
//     pen        80 bytes
//     chunk "HRec": the object's own record, as its class writes it
//
// A reader skips what follows the parts that it knows within a chunk. An object of a class that no bundle has keeps its
// chunk's bytes.
#pragma once

#include <memory>
#include <string>

#include "host/document/Document.h"

namespace host {

/// Null on failure, with one line in `*error`: missing, unreadable, truncated, damaged or of another type.
std::unique_ptr<Document> ReadDocument(std::string const& path, std::string* error);

/// Replaces the file whole or leaves it as it was, with one line in `*error`.
bool WriteDocument(Document const& document, std::string const& path, std::string* error);

/// Puts bytes into a file: whole, or not at all.
bool ReplaceFile(std::string const& path, void const* data, std::size_t size, std::string* error);

}  // namespace host
