#include "host/bundles/Instance.h"

#include "host/model/InstanceCall.h"
#include "host/tables/SlotCall.h"

namespace host {

// A chain of instances that end each other runs as deep as it is long: what is too deep waits.
void InstanceDeleter::operator()(AKObject* object) const {
  if (InstanceCall::IsTooDeep()) return InstanceCall::Destroy(Instance(object));
  const AKClass& cls = *object->Class();
  const InstanceCall call(cls, kAKMethodDelete, object);
  // No CallSlot: the two are one method, which either runs or waits.
  if (HasSlot(cls, kAKMethodDelete)) AKCallMember<int>(cls.methods[kAKMethodDelete], object);
  cls.destructor(object);
}

}  // namespace host
