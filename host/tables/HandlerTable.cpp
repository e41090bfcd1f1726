// The handler service table: what a plug-in may do to the open document.
//
// A handler acts on the session that was current when it was made, as long as that lives. What it does can be undone:
// within an inspector event it becomes part of the event's step, otherwise each call is a step, named by the action
// name. A plug-in acts for the program, not for the user: it reaches hidden and locked layers too. From within
// methods that draw, write, read, make or end objects nothing can be added, deleted or revised.
#include <unordered_set>

#include "host/Host.h"
#include "host/model/InstanceCall.h"
#include "host/session/DocumentSession.h"
#include "host/text/DisplayText.h"
#include "kit/log/AKLog.h"
#include "kit/objects/AKHandler.h"

namespace host {
namespace {

constexpr int kStatusNoDocument = -731;
constexpr int kStatusNotInDocument = -732;
constexpr int kStatusNotHere = -733;  ///< a method runs from which documents can't be changed
constexpr int kStatusBadObject = -734;
constexpr int kStatusUnwritable = -735;  ///< it can't write its record, and is as it was before

/// How objects are linked: at the end of the parent layer's order or in front of the parent object; at the beginning,
/// or behind the parent object. Other numbers count as the first.
enum LinkMode : AKHandlerLinkMode { kLinkInFront = 0, kLinkBehind = 1 };

/// The host object behind an AKHandler.
class HostHandler {
 public:
  HostHandler()
      : serial_(Host::Instance().Sessions().Current() == nullptr ? 0
                                                                 : Host::Instance().Sessions().Current()->Serial()) {}

  bool IsActive() const { return Session() != nullptr; }

  void SetActionName(const AKString& name) {
    if (DocumentSession* session = Session()) session->Steps().SetActionName(DisplayText(name));
  }

  AKString ActionName() const {
    const DocumentSession* session = Session();
    return session == nullptr ? AKString() : TextForBundles(session->Steps().ActionName());
  }

  /// The document's first layer.
  AKObject* GetMasterLayer() const {
    DocumentSession* session = Session();
    return session == nullptr ? nullptr : session->StandInOf(session->Doc().FirstLayer().id);
  }

  // The objects go over to the document unless the call fails; then the caller keeps them all.
  int AddObjects(const AKObjectArray& objects, AKObject* parent, AKHandlerLinkMode mode) {
    ObjectPlace place;
    int status = Check("AddObjects");
    if (status == 0) status = CheckNew(objects);
    if (status == 0) status = FindPlace(parent, mode, &place);
    if (status != 0) return Tell(status, "add objects to");
    DocumentSession* session = Session();
    session->Steps().Begin(session->Steps().ActionName());
    for (AKObject* object : objects) {
      session->Objects().Adopt(object, place);
      ++place.index;
    }
    session->Steps().End();
    return 0;
  }

  int DeleteObjects(const AKObjectArray& objects) {
    ObjectIDs ids;
    const int status = Find("DeleteObjects", objects, &ids);
    if (status == 0) Session()->Objects().DeleteAny(ids);
    return Tell(status, "delete objects of");
  }

  int ReviseObjects(const AKObjectArray& objects) {
    ObjectIDs ids;
    int status = Find("ReviseObjects", objects, &ids);
    if (status == 0 && !Session()->Objects().NoticeChanges(ids)) status = kStatusUnwritable;
    return Tell(status, "revise objects of");
  }

 private:
  // What was called from the wrong method has been told of.
  static int Tell(int status, const char* what) {
    return status == 0 || status == kStatusNotHere ? status : AKLogError(status, "Can't %s the document", what);
  }

  DocumentSession* Session() const { return Host::Instance().Sessions().Find(serial_); }

  int Check(const char* entry) const {
    if (Session() == nullptr) return kStatusNoDocument;
    return InstanceCall::MayEdit(entry) ? 0 : kStatusNotHere;
  }

  // All of them or none.
  int Find(const char* entry, const AKObjectArray& objects, ObjectIDs* ids) const {
    const int status = Check(entry);
    if (status != 0) return status;
    for (const AKObject* object : objects) {
      const DocumentObject* found = Session()->Doc().FindByInstance(object);
      if (found == nullptr) return kStatusNotInDocument;
      ids->push_back(found->id);
    }
    return 0;
  }

  // Objects of bundles' classes that are in no document and were not taken out of one, each named once.
  static int CheckNew(const AKObjectArray& objects) {
    std::unordered_set<const AKObject*> named;
    for (const AKObject* object : objects) {
      if (!IsFree(object) || !named.insert(object).second) return kStatusBadObject;
    }
    return 0;
  }

  static bool IsFree(const AKObject* object) {
    if (object == nullptr || InstanceCall::IsLeaving(object)) return false;
    const AKClass* const cls = object->Class();
    return Host::Instance().Classes().Has(cls) && cls->constructor != nullptr &&
           !Host::Instance().Sessions().Has(object);
  }

  // No parent means the active layer.
  int FindPlace(const AKObject* parent, AKHandlerLinkMode mode, ObjectPlace* place) const {
    const Document& document = Session()->Doc();
    if (const DocumentObject* sibling = document.FindByInstance(parent)) {
      *place = document.PlaceOf(sibling->id);
      if (mode != kLinkBehind) ++place->index;
      return 0;
    }
    place->layer = parent == nullptr ? Session()->Layers().Active() : LayerObject::LayerOf(parent);
    const Layer* layer = document.FindLayer(place->layer);
    if (layer == nullptr) return kStatusNotInDocument;
    place->index = mode == kLinkBehind ? 0 : layer->objects.Count();
    return 0;
  }

  std::uint64_t serial_;
};

void Construct(AKHandler* wrapper, NKTreeHandler*) { wrapper->SetHostObject(new HostHandler); }

void Destruct(AKHandler* wrapper) {
  delete static_cast<HostHandler*>(wrapper->HostObject());
  wrapper->SetHostObject(nullptr);
}

AKHandlerTable MakeTable() {
  AKHandlerTable table;
  table.construct = &Construct;
  table.destruct = &Destruct;
  table.isActive.Set<HostHandler>(&HostHandler::IsActive);
  table.setActionName.Set<HostHandler>(&HostHandler::SetActionName);
  table.actionName.Set<HostHandler>(&HostHandler::ActionName);
  table.getMasterLayer.Set<HostHandler>(&HostHandler::GetMasterLayer);
  table.addObjects.Set<HostHandler>(&HostHandler::AddObjects);
  table.deleteObjects.Set<HostHandler>(&HostHandler::DeleteObjects);
  table.reviseObjects.Set<HostHandler>(&HostHandler::ReviseObjects);
  return table;
}

}  // namespace

const AKHandlerTable* HandlerTable() {
  static const AKHandlerTable table = MakeTable();
  return &table;
}

}  // namespace host
