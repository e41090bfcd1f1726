// What a plug-in may do to the document that the host has open.
#pragma once

#include "kit/host/AKWrapper.h"
#include "kit/objects/AKObject.h"
#include "kit/text/AKString.h"

class AKHandler : public AKWrapper<AKHandler> {
 public:
  static const AKHandlerTable* sWrapper;  ///< the handler service table, owned by the host

  /// Has the host make its side of the handler, which acts on the document that is open now. Plug-ins pass null.
  explicit AKHandler(NKTreeHandler* treeHandler);
  /// Ends the host's side; the document stays as it is.
  ~AKHandler();

  /// True when there is a document to act on.
  bool IsActive() const;
  /// Names the change for the undo list.
  void SetActionName(const AKString& name);
  /// What SetActionName set; empty without a document.
  AKString ActionName() const;
  /// What stands for the document's first layer: a parent for AddObjects, and nothing else. The document's; null
  /// without one.
  AKObject* GetMasterLayer() const;

  /// The host's int result. The objects go over to the document; `parent` may be null.
  int AddObjects(const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode);
  /// The host's int result. The document ends the objects.
  int DeleteObjects(const AKObjectArray& objects);
  /// Tells the host that the objects changed.
  int ReviseObjects(const AKObjectArray& objects);

  ///@{
  /// The same for one object; null passes an empty array.
  int AddObject(AKObject* object, AKObject* parent, AKHandlerLinkMode mode);
  int DeleteObject(AKObject* object);
  int ReviseObject(AKObject* object);
  ///@}
};

static_assert(sizeof(AKHandler) == sizeof(void*));
