// The bundle's one entry point.
#include "Star.h"

static AKClass* gAKClass = nullptr;

extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  return Star::Register(hostServiceRecord, &gAKClass);
}
