// Calls an object's methods through the slots of its class record.
#pragma once

#include <type_traits>

#include "host/model/InstanceCall.h"
#include "kit/host/AKHostCall.h"
#include "kit/objects/AKClass.h"

namespace host {

inline bool HasSlot(const AKClass& cls, unsigned int index) { return cls.methods[index].function != 0; }

/// Calls a slot that the class provides; HasSlot tells whether it does. InstanceCall::kStatusRefused, or what is empty
/// where the result is no status, without a call, when too many run within each other.
template <typename Result, typename... Parameters>
Result CallSlot(const AKClass& cls, unsigned int index, const AKObject* object, Parameters... arguments) {
  const InstanceCall call(cls, index, object);
  if constexpr (std::is_same_v<Result, int>) {
    if (!call.MayRun()) return InstanceCall::kStatusRefused;
  } else {
    if (!call.MayRun()) return Result{};
  }
  const AKMethodSlot& slot = cls.methods[index];
  return AKCallMember<Result, Parameters...>(slot, const_cast<AKObject*>(object), arguments...);
}

}  // namespace host
