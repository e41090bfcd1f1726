// Told of each method of a plug-in before it runs, and of its end.
#pragma once

#include "kit/objects/AKClass.h"

namespace host {

class CallWatch {
 public:
  CallWatch() = default;
  CallWatch(const CallWatch&) = delete;
  CallWatch& operator=(const CallWatch&) = delete;
  virtual ~CallWatch() = default;

  /// A method of the class is about to run, within others or not; `slot` as in InstanceCall.
  virtual void Begins(const AKClass& cls, unsigned int slot) = 0;
  /// A method has ended; what goes on is one of `outer`, or the host when that is null.
  virtual void Ended(const AKClass* outer) = 0;
};

}  // namespace host
