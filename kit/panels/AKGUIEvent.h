// An event of an inspector panel, filled by the host and passed to the class's inspector method.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kit/text/AKString.h"

struct AKGUIEvent {
  /// Kinds that plug-ins handle; the others are the host's.
  static constexpr std::uint32_t kFillControls = 1;    ///< the controls must be filled from the object's state
  static constexpr std::uint32_t kControlChanged = 3;  ///< the user changed the control `ctrlID`

  std::uint32_t kind = 0;           ///< one of the two above, or 2: idle, for panels that asked for it
  std::uint32_t ctrlID = 0;         ///< of the control that was changed
  std::uint64_t hostWords[2] = {};  ///< the host's own
  AKString actionName;              ///< the inspector may name the change for the undo list here
};

static_assert(offsetof(AKGUIEvent, kind) == 0);
static_assert(offsetof(AKGUIEvent, ctrlID) == 4);
static_assert(offsetof(AKGUIEvent, hostWords) == 8);
static_assert(offsetof(AKGUIEvent, actionName) == 24);
static_assert(sizeof(AKGUIEvent) == 32);
