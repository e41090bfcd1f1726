#include "host/model/InstanceCall.h"

#include <deque>
#include <string>
#include <unordered_set>
#include <utility>

#include "host/HostLog.h"
#include "host/listings/MethodName.h"

namespace host {
namespace {

InstanceCall* sInnermost = nullptr;
bool sToldOf = false;  // that something was refused, during the outermost call
bool sIsDestroying = false;
CallWatch* sWatch = nullptr;

// Empty but for the end of a call that removed something, so nothing is left when bundles go.
struct Leavers {
  std::deque<Instance> instances;
  std::unordered_set<const AKObject*> all;  // of them
};

Leavers& Leaving() {
  static Leavers leaving;
  return leaving;
}

bool Edits(unsigned int slot) {
  return slot == kAKMethodInspector || slot == kAKMethodSetObjectProperties || slot == InstanceCall::kDialog;
}

std::string NameOf(unsigned int slot) {
  if (slot == InstanceCall::kConstructor) return "its constructor";
  return slot == InstanceCall::kDialog ? "the procedure of its dialog" : MethodName(slot);
}

}  // namespace

InstanceCall::InstanceCall(const AKClass& cls, unsigned int slot, const AKObject* object)
    : class_(cls),
      slot_(slot),
      object_(object),
      outer_(sInnermost),
      depth_(outer_ == nullptr ? 1 : outer_->depth_ + 1),
      mayEdit_(Edits(slot) && (outer_ == nullptr || outer_->mayEdit_)) {
  if (sWatch != nullptr) sWatch->Begins(cls, slot);
  sInnermost = this;
}

InstanceCall::~InstanceCall() {
  sInnermost = outer_;
  if (sWatch != nullptr) sWatch->Ended(outer_ == nullptr ? nullptr : &outer_->class_);
  if (outer_ != nullptr || sIsDestroying) return;
  sToldOf = false;
  sIsDestroying = true;
  // A method that runs on deletion may remove further instances.
  for (Leavers& leaving = Leaving(); !leaving.instances.empty();) {
    const Instance last = std::move(leaving.instances.front());
    leaving.instances.pop_front();
    leaving.all.erase(last.get());
  }
  sIsDestroying = false;
}

void InstanceCall::Refuse(const char* what, const char* advice) const {
  if (std::exchange(sToldOf, true)) return;
  const std::string line = std::string("class \"") + class_.classID.chars + "\": " + what + " within " + NameOf(slot_) +
                           " was refused: " + advice;
  // The line stands behind the name of the bundle that has the class.
  HostLog::Instance().Take(line.c_str(), reinterpret_cast<const void*>(class_.constructor));
}

void InstanceCall::SetWatch(CallWatch* watch) { sWatch = watch; }
CallWatch* InstanceCall::Watch() { return sWatch; }

bool InstanceCall::MayRun() const {
  if (depth_ <= kDeepest) return true;
  Refuse("a further call", "methods that call the host, and through it methods, may do so 64 calls deep");
  return false;
}

bool InstanceCall::MayEdit(const char* entry) {
  if (sInnermost == nullptr || sInnermost->mayEdit_) return true;
  sInnermost->Refuse(entry, "call it from akmInspector, akmSetObjectProperties or a dialog's procedure");
  return false;
}

bool InstanceCall::IsOutside(const char* entry) {
  if (sInnermost == nullptr) return true;
  sInnermost->Refuse(entry, "call it from pluginMain");
  return false;
}

bool InstanceCall::IsRunning(const AKObject* object) {
  const InstanceCall* call = sInnermost;
  while (call != nullptr && call->object_ != object) call = call->outer_;
  return call != nullptr;
}

bool InstanceCall::IsTooDeep() { return sInnermost != nullptr && sInnermost->depth_ >= kDeepest; }

void InstanceCall::Destroy(Instance instance) {
  if (!instance || sInnermost == nullptr) return;
  Leaving().all.insert(instance.get());
  Leaving().instances.push_back(std::move(instance));
}

bool InstanceCall::IsLeaving(const AKObject* object) { return Leaving().all.contains(object); }

}  // namespace host
