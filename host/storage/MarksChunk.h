// The marks of objects as bytes: the chunk "HMrk" behind the objects of a layer or of the clipboard
// (docs/document-format.md).
#pragma once

#include <optional>
#include <vector>

#include "host/model/DocumentObject.h"
#include "host/text/Problem.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileChunk.h"

namespace host {

/// Of each object in order. Returns the status of the file.
int WriteMarks(AKFile& file, const std::vector<const ObjectMarks*>& objects);

/// The chunk at the position, which ends within the chunk around it, for `count` objects. Groups have IDs from
/// `firstGroup` on.
Result<std::vector<ObjectMarks>> ReadMarks(const AKFile& file, const AKFileChunk& outer, std::size_t count,
                                           GroupID firstGroup);

}  // namespace host
