// The one place where the native layer keeps what pango needs. Private to the native layer.
//
// Fonts are loaded at one size, kReferenceSize units, and everything is measured and laid out at it: without hints all
// measures are linear in the size, so that a line laid out once serves every size, and no size is too large for pango's
// numbers.
#pragma once

#include "platform/text/PangoHandles.h"

namespace platform {

/// The size, in units, of every font of pango's here; a "reference unit" is a unit at that size.
inline constexpr double kReferenceSize = 1024;

/// Reference units in a number of pango's.
inline constexpr double kPerPangoUnit = 1.0 / PANGO_SCALE;

/// The context in which fonts are found and text is laid out. It lives as long as the process: fonts are shared by
/// everything, and the libraries below keep their own state for ever as well. Null when there is no font system.
PangoContext* TextContext();

}  // namespace platform
