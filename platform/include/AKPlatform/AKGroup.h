// Drawing as one: what is drawn in a group appears as if it was a picture, drawn with an opacity of its own, so that
// what lies over each other in it does not show through.
#pragma once

#include <stdbool.h>

#include "CoreGraphics/CGContext.h"

/// Begins a group; groups may lie within each other, and states that are saved in one are restored in it. `extent` is
/// in user space; what is drawn outside of it may be left out. On pages text and gradients stay what they are. False
/// when the context is null or memory lacks: there is no group then.
CG_EXTERN bool CGContextBeginGroup(CGContextRef context, CGRect extent);
/// Draws what was drawn since the group began, `opacity` from 0 to 1. Ignored where no group is open.
CG_EXTERN void CGContextEndGroup(CGContextRef context, CGFloat opacity);
