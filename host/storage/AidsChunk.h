// The aids of a page as bytes: the chunk "HAid" behind the layers (docs/document-format.md).
#pragma once

#include "host/model/PageAids.h"
#include "kit/streams/AKFileChunk.h"

namespace host {

/// Returns the status of the file.
int WriteAids(AKFile& file, const PageAids& aids);

/// The chunk at the position, which ends within the chunk around it.
Result<PageAids> ReadAids(const AKFile& file, const AKFileChunk& outer);

}  // namespace host
