// Marks of the native layer's entry points.
#pragma once

/// An operation that the shared library of the native layer offers.
#define CG_EXTERN extern "C" __attribute__((visibility("default")))
