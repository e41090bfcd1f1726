#include "kit/objects/AKHandler.h"

namespace {

enum Offset : std::size_t {
  kIsActive = 96,
  kSetActionName = 112,
  kActionName = 128,
  kGetMasterLayer = 144,
  kAddObjects = 224,
  kDeleteObjects = 240,
  kReviseObjects = 256,
};

AKObjectArray ArrayOf(AKObject* object) {
  AKObjectArray objects;
  if (object != nullptr) objects.Append(object);
  return objects;
}

}  // namespace

void* AKHandler::sWrapper = nullptr;

AKHandler::AKHandler(NKTreeHandler* treeHandler) {
  if (sWrapper == nullptr) return;
  AKHostCallPlain<void, AKHandler*, NKTreeHandler*>(sWrapper, kAKWrapperConstructorOffset, this, treeHandler);
}

AKHandler::~AKHandler() {
  if (sWrapper != nullptr) AKHostCallPlain<void, AKHandler*>(sWrapper, kAKWrapperDestructorOffset, this);
}

bool AKHandler::IsActive() const { return Call<bool>(kIsActive); }
void AKHandler::SetActionName(const AKString& name) { Call<void, const AKString&>(kSetActionName, name); }
AKString AKHandler::ActionName() const { return Call<AKString>(kActionName); }
AKObject* AKHandler::GetMasterLayer() const { return Call<AKObject*>(kGetMasterLayer); }

int AKHandler::AddObjects(const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode) {
  return Call<int, const AKObjectArray&, AKObject*, AKHandlerLinkMode>(kAddObjects, objects, parent, mode);
}

int AKHandler::DeleteObjects(const AKObjectArray& objects) {
  return Call<int, const AKObjectArray&>(kDeleteObjects, objects);
}

int AKHandler::ReviseObjects(const AKObjectArray& objects) {
  return Call<int, const AKObjectArray&>(kReviseObjects, objects);
}

int AKHandler::AddObject(AKObject* object, AKObject* parent, AKHandlerLinkMode mode) {
  return AddObjects(ArrayOf(object), parent, mode);
}

int AKHandler::DeleteObject(AKObject* object) { return DeleteObjects(ArrayOf(object)); }
int AKHandler::ReviseObject(AKObject* object) { return ReviseObjects(ArrayOf(object)); }
