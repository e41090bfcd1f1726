#pragma once
#include <CoreFoundation/CFBase.h>
#include <stddef.h>
#include <stdint.h>
#define CG_EXTERN extern "C"
typedef double CGFloat;
