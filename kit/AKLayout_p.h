// The layouts that a program and the bundles that it loads must agree on, checked at compile time.
//
// Objects of these types cross between two separately linked copies of the kit. A change of a size or of a fixed
// field's offset breaks every bundle that was built before it.
#pragma once

#include <cstddef>

#include "kit/containers/AKMemoryBlock.h"
#include "kit/containers/AKSharedBytes.h"
#include "kit/files/AKFilePath.h"
#include "kit/files/AKFilePathArray.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileChunk.h"
#include "kit/text/AKArgs.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringArray.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKDictionaryNode_p.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueArray.h"

static_assert(sizeof(AKSharedBuffer) == 16);
static_assert(offsetof(AKSharedBuffer, length) == 0);
static_assert(offsetof(AKSharedBuffer, capacity) == 4);
static_assert(offsetof(AKSharedBuffer, owners) == 8);
static_assert(offsetof(AKSharedBuffer, mark) == 12);
static_assert(offsetof(AKEmptySharedBuffer, terminator) == sizeof(AKSharedBuffer));
static_assert(sizeof(std::atomic<std::uint32_t>) == 4 && std::atomic<std::uint32_t>::is_always_lock_free);

static_assert(sizeof(AKSharedBytes) == sizeof(void*));
static_assert(sizeof(AKString) == sizeof(void*));
static_assert(sizeof(AKMemoryBlock) == sizeof(void*));
static_assert(sizeof(AKStringArray) == 3 * sizeof(void*));
static_assert(sizeof(AKArgs) == sizeof(AKStringArray));

static_assert(sizeof(AKFileChunk) == 16);
static_assert(offsetof(AKFileChunk, signature) == 0);
static_assert(offsetof(AKFileChunk, size) == 4);
static_assert(offsetof(AKFileChunk, pos) == 8);

static_assert(sizeof(AKFilePathArray) == sizeof(AKStringArray));
static_assert(sizeof(AKValueArray) == 3 * sizeof(void*));

/// The types whose fields are private name this as their friend.
struct AKLayout {
  static_assert(sizeof(AKFilePath) == sizeof(AKString));
  static_assert(offsetof(AKFilePath, text_) == 0);

  static_assert(sizeof(AKFile) == 120);
  static_assert(offsetof(AKFile, descriptor_) == 0);
  static_assert(offsetof(AKFile, path_) == 8);
  static_assert(offsetof(AKFile, name_) == 16);
  static_assert(offsetof(AKFile, flags_) == 24);
  static_assert(offsetof(AKFile, memoryOpened_) == 28);
  static_assert(offsetof(AKFile, memoryPosition_) == 32);
  static_assert(offsetof(AKFile, memorySize_) == 36);
  static_assert(offsetof(AKFile, memory_) == 40);
  static_assert(offsetof(AKFile, map_) == 64);
  static_assert(offsetof(AKFile, buffer_) == 72);
  static_assert(sizeof(AKFileBuffer) == 48);

  static_assert(sizeof(AKValue) == 16);
  static_assert(offsetof(AKValue, type_) == 0);
  static_assert(offsetof(AKValue, integer_) == 8);

  static_assert(sizeof(AKDictionary) == sizeof(void*));
  static_assert(offsetof(AKDictionary, store_) == 0);
  static_assert(sizeof(AKDictionaryNode) == 40);
  static_assert(sizeof(AKDictionaryNode::LeafItem) == 24);
  static_assert(sizeof(AKDictionaryNode::InnerItem) == 16);
};
