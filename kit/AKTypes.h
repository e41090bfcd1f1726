// Strings, values, dictionaries and files: everything that travels between objects, hosts and documents.
#pragma once

#include "kit/containers/AKMemoryBlock.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileChunk.h"
#include "kit/streams/AKFileContent.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileMmap.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringArray.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueArray.h"
