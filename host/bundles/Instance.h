// An instance of a class, owned by the host.
#pragma once

#include <memory>

#include "kit/objects/AKClass.h"

namespace host {

/// The version that classes are told when they read a record, wherever it comes from: there is one form of records.
inline constexpr unsigned int kRecordVersion = 1;

struct InstanceDeleter {
  void operator()(AKObject* object) const;
};

/// Deleted with akmDelete and the class destructor.
using Instance = std::unique_ptr<AKObject, InstanceDeleter>;

}  // namespace host
