#include "kit/objects/AKClassSetup.h"

#include "kit/host/AKHostServices.h"
#include "kit/log/AKLog.h"
#include "kit/objects/AKHandler.h"
#include "kit/panels/AKGUIDesc.h"

int _AKClassSetupCheck(const AKHostServiceRecord* record, const AKClassInfo& info, AKClass* const* classOut) {
  if (classOut == nullptr || record == nullptr || *classOut != nullptr ||
      record->magic != AKHostServiceRecord::kMagic) {
    return AKLogError(-1, "Can't complete AKClassSetup() of class <%s>", info.className);
  }
  if (!AKIsAPIVersionAccepted(record->apiVersion)) {
    return AKLogError(-792, "Application API is not appropriate for class <%s>", info.className);
  }
  return 0;
}

void AKStoreHostServices(const AKHostServiceRecord& record) {
  gAKWrap = record.generalTable;
  AKClass::sWrapper = record.classTable;
  AKHandler::sWrapper = record.handlerTable;
  AKGUICtrl::sWrapper = record.controlTable;
  AKGUIDesc::sWrapper = record.panelTable;

  AKSetCustomLogMessageProc(gAKWrap == nullptr ? nullptr : gAKWrap->logMessage, false);

  gAGDisplayScale = record.displayScale;
}
