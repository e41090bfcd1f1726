// The bundle's one entry point.
#include "Star.h"
#include "kit/AKClassBasicTypes.h"

static AKClass* gAKClass = nullptr;

extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  AKClassInfo info;
  info.classID = Star::_ClassID();
  info.parentClassID = AKObjectSymbolVect::_ClassID();
  info.constructor = &Star::_ClassCtor;
  info.destructor = &Star::_ClassDtor;
  info.instanceSize = sizeof(Star);
  info.className = "Star";
  const int status = _AKClassSetupT<Star>(hostServiceRecord, info, &gAKClass);
  if (status != 0) return status;

  NKLocaleSetDomain("Star");
  AKClass::SetClassName(gAKClass, AKString(NKLocaleGetString("Star")), kAKNullString);
  if ((gAKClass->flags & AKClass::kFlagLocked) == 0) Star::FillMethodSlots(gAKClass);
  AKClass::AddInspectorGUIDesc(gAKClass, Star::BuildInspectorGUIDesc());
  return 0;
}
