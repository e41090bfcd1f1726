// What a plug-in may do to the document that the host has open.
#pragma once

#include "kit/host/AKWrapper.h"
#include "kit/objects/AKObject.h"
#include "kit/text/AKString.h"

class AKHandler : public AKWrapper<AKHandler> {
 public:
  static const AKHandlerTable* sWrapper;  ///< the handler service table, owned by the host

  explicit AKHandler(NKTreeHandler* treeHandler);
  ~AKHandler();

  bool IsActive() const;
  /// Names the change for the undo list.
  void SetActionName(const AKString& name);
  AKString ActionName() const;
  AKObject* GetMasterLayer() const;

  /// The host's int result. The objects go over to the document; `parent` may be null.
  int AddObjects(const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode);
  int DeleteObjects(const AKObjectArray& objects);
  /// Tells the host that the objects changed.
  int ReviseObjects(const AKObjectArray& objects);

  /// The same for one object; null passes an empty array.
  int AddObject(AKObject* object, AKObject* parent, AKHandlerLinkMode mode);
  int DeleteObject(AKObject* object);
  int ReviseObject(AKObject* object);
};

static_assert(sizeof(AKHandler) == sizeof(void*));
