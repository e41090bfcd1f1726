// The labels of objects as bytes: the chunk "HLbl" behind the looks of a layer or of the clipboard
// (docs/document-format.md).
#pragma once

#include <vector>

#include "host/model/ObjectMarks.h"
#include "host/text/Problem.h"
#include "kit/streams/AKFileChunk.h"

namespace host {

/// Of each object in order. Returns the status of the file.
int WriteLabels(AKFile& file, const std::vector<const ObjectMarks*>& objects);

/// The chunk at the position, which ends within the chunk around it, into the marks of all objects.
Result<> ReadLabels(const AKFile& file, const AKFileChunk& outer, std::vector<ObjectMarks>* objects);

}  // namespace host
