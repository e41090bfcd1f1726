#include "kit/objects/AKHandler.h"

namespace {

AKObjectArray ArrayOf(AKObject* object) {
  AKObjectArray objects;
  if (object != nullptr) objects.Append(object);
  return objects;
}

}  // namespace

const AKHandlerTable* AKHandler::sWrapper = nullptr;

AKHandler::AKHandler(NKTreeHandler* treeHandler) {
  if (sWrapper != nullptr) sWrapper->construct(this, treeHandler);
}

AKHandler::~AKHandler() {
  if (sWrapper != nullptr) sWrapper->destruct(this);
}

bool AKHandler::IsActive() const { return Call(&AKHandlerTable::isActive); }
void AKHandler::SetActionName(const AKString& name) { Call(&AKHandlerTable::setActionName, name); }
AKString AKHandler::ActionName() const { return Call(&AKHandlerTable::actionName); }
AKObject* AKHandler::GetMasterLayer() const { return Call(&AKHandlerTable::getMasterLayer); }

int AKHandler::AddObjects(const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode) {
  return Call(&AKHandlerTable::addObjects, objects, parent, mode);
}

int AKHandler::DeleteObjects(const AKObjectArray& objects) { return Call(&AKHandlerTable::deleteObjects, objects); }
int AKHandler::ReviseObjects(const AKObjectArray& objects) { return Call(&AKHandlerTable::reviseObjects, objects); }

int AKHandler::AddObject(AKObject* object, AKObject* parent, AKHandlerLinkMode mode) {
  return AddObjects(ArrayOf(object), parent, mode);
}

int AKHandler::DeleteObject(AKObject* object) { return DeleteObjects(ArrayOf(object)); }
int AKHandler::ReviseObject(AKObject* object) { return ReviseObjects(ArrayOf(object)); }
