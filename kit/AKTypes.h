// Strings, values, dictionaries and files: everything that travels between objects, hosts and documents.
#pragma once

#include "kit/AKDictionary.h"
#include "kit/AKFile.h"
#include "kit/AKFileChunk.h"
#include "kit/AKFileContent.h"
#include "kit/AKFileErrors.h"
#include "kit/AKFileGeometry.h"
#include "kit/AKFileMmap.h"
#include "kit/AKFileNumbers.h"
#include "kit/AKFileRecords.h"
#include "kit/AKMemoryBlock.h"
#include "kit/AKString.h"
#include "kit/AKStringArray.h"
#include "kit/AKValue.h"
#include "kit/AKValueArray.h"
