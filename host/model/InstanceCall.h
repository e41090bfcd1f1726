// Marks the time in which an instance's method runs.
//
// A plug-in may ask, from within a method, for the object that the method runs on to be deleted. Instances that leave a
// document meanwhile are kept until the outermost call has returned. While an object is being drawn documents are not
// changed at all: the drawing walks through them.
#pragma once

#include "host/bundles/Instance.h"

namespace host {

class InstanceCall {
 public:
  enum class Kind { kEdit, kDraw };

  explicit InstanceCall(Kind kind);
  InstanceCall(const InstanceCall&) = delete;
  InstanceCall& operator=(const InstanceCall&) = delete;
  ~InstanceCall();

  /// True within a call that draws.
  static bool IsDrawing();
  /// Destroys the instance, now or when the outermost call ends.
  static void Destroy(Instance instance);

 private:
  Kind kind_;
};

}  // namespace host
