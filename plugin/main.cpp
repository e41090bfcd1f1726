// The bundle's one entry point.
#include "kit/AKClassBasicTypes.h"
#include "plugin/CStdRect.h"

/// The record of this bundle's class; null until the set-up has succeeded.
static AKClass* gAKClass = nullptr;

/// Called once by the host after loading. Returns 0, or the status of the class set-up that failed, in which case
/// nothing else was touched.
extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  AKClassInfo info;
  info.classID = CStdRect::_ClassID();
  info.parentClassID = AKObjectSymbolVect::_ClassID();
  info.constructor = &CStdRect::_ClassCtor;
  info.destructor = &CStdRect::_ClassDtor;
  info.instanceSize = CStdRect::kInstanceSize;
  info.className = "CStdRect";
  const int status = _AKClassSetupT<CStdRect>(hostServiceRecord, info, &gAKClass);
  if (status != 0) return status;

  NKLocaleSetDomain("StdRectangle");
  const AKString name(NKLocaleGetString("Rectangle"));
  AKClass::SetClassName(gAKClass, name, kAKNullString);

  CStdRect::FillMethodSlots(gAKClass);
  AKClass::AddInspectorGUIDesc(gAKClass, CStdRect::BuildInspectorGUIDesc());
  return 0;
}
