#include "host/model/InstanceCall.h"

#include <utility>
#include <vector>

namespace host {
namespace {

unsigned int sDepth = 0;
unsigned int sDrawingDepth = 0;

// Empty but for the end of a call that removed something, so nothing is left when bundles go.
std::vector<Instance>& Leaving() {
  static std::vector<Instance> leaving;
  return leaving;
}

}  // namespace

InstanceCall::InstanceCall(Kind kind) : kind_(kind) {
  ++sDepth;
  if (kind_ == Kind::kDraw) ++sDrawingDepth;
}

InstanceCall::~InstanceCall() {
  if (kind_ == Kind::kDraw) --sDrawingDepth;
  if (--sDepth != 0) return;
  // A method that runs on deletion may remove further instances.
  while (!Leaving().empty()) {
    const std::vector<Instance> last = std::exchange(Leaving(), {});
  }
}

bool InstanceCall::IsDrawing() { return sDrawingDepth != 0; }

void InstanceCall::Destroy(Instance instance) {
  if (instance && sDepth != 0) Leaving().push_back(std::move(instance));
}

}  // namespace host
