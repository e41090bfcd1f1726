// The layouts that a program and the bundles that it loads must agree on, checked at compile time.
//
// Objects of these types cross between two separately linked copies of the kit. A change of a size or of a fixed
// field's offset breaks every bundle that was built before it.
#pragma once

#include <cstddef>

#include "kit/AKArgs.h"
#include "kit/AKMemoryBlock.h"
#include "kit/AKSharedBytes.h"
#include "kit/AKString.h"
#include "kit/AKStringArray.h"

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
