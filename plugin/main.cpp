// The bundle's one entry point.
#include "plugin/CStdRect.h"

/// The record of this bundle's class; null until the set-up has succeeded.
static AKClass* gAKClass = nullptr;

/// Called once by the host after loading. Returns 0, or the status of the class set-up that failed, in which case
/// the class has no name, slot or panel.
extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  return CStdRect::Register(hostServiceRecord, &gAKClass);
}
