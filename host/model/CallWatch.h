// Told of each bundle before it starts, of each method of it before it runs, and of their ends.
#pragma once

#include <string>

#include "kit/objects/AKClass.h"

namespace host {

class CallWatch {
 public:
  CallWatch() = default;
  CallWatch(const CallWatch&) = delete;
  CallWatch& operator=(const CallWatch&) = delete;
  virtual ~CallWatch() = default;

  /// A bundle is about to be loaded and started, and has. `path` is absolute.
  virtual void Starts(const std::string& path) = 0;
  virtual void Started() = 0;
  /// A method of the class is about to run, within others or not; `slot` as in InstanceCall.
  virtual void Begins(const AKClass& cls, unsigned int slot) = 0;
  /// A method has ended; what goes on is one of `outer`, or when that is null the bundle's start, or the host.
  virtual void Ended(const AKClass* outer) = 0;
};

}  // namespace host
