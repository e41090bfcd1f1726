// Marks of the native layer's entry points.
//
// Where memory lacks, what draws draws nothing and says so on standard error, once a process, and contexts, images,
// patterns, shadings and colours are null. Functions that make or extend a path, a text or what it is laid out to, and
// collections, throw std::bad_alloc, and what there was is as it was: who calls them is written in C++, and what is
// left of a path or a text would be drawn as if it were whole.
#pragma once

#include <stdint.h>

/// An operation that the shared library of the native layer offers.
#define CG_EXTERN extern "C" __attribute__((visibility("default")))

typedef double CGFloat;
