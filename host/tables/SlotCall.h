// Calls an object's methods through the slots of its class record.
#pragma once

#include "kit/host/AKHostCall.h"
#include "kit/objects/AKClass.h"

namespace host {

inline bool HasSlot(const AKClass& cls, unsigned int index) { return cls.methods[index].function != 0; }

/// Calls a slot that the class provides; HasSlot tells whether it does.
template <typename Result, typename... Parameters>
Result CallSlot(const AKClass& cls, unsigned int index, const AKObject* object, Parameters... arguments) {
  const AKMethodSlot& slot = cls.methods[index];
  return AKCallMember<Result, Parameters...>(slot, const_cast<AKObject*>(object), arguments...);
}

}  // namespace host
