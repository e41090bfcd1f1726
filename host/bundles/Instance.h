// An instance of a class, owned by the host.
#pragma once

#include <memory>

#include "kit/objects/AKClass.h"

namespace host {

struct InstanceDeleter {
  void operator()(AKObject* object) const { AKClass::DeleteObject(object); }
};

/// Deleted with akmDelete and the class destructor.
using Instance = std::unique_ptr<AKObject, InstanceDeleter>;

}  // namespace host
