// The bundle's one entry point.
#include "Label.h"

static AKClass* gAKClass = nullptr;

extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  // A document may come from a machine with other fonts: then the nearest one will do. This is this bundle's own
  // option.
  AGFont::SetOption(AGFont::kOptionAcceptSubstitute, true);
  return Label::Register(hostServiceRecord, &gAKClass);
}
