// The handler service table: what a plug-in may do to the open document.
#include "host/Host.h"
#include "host/document/Document.h"
#include "host/tables/TableBuilder.h"
#include "kit/AKHandler.h"

namespace host {
namespace {

/// The host object behind an AKHandler: the document that was current when the handler was made.
class HostHandler {
 public:
  explicit HostHandler(Document* document) : document_(document) {}

  bool IsActive() const { return document_ != nullptr; }
  void SetActionName(AKString const& name) { Host::Instance().actionName = name; }
  AKString ActionName() const { return Host::Instance().actionName; }
  // Documents of this host have no master layer.
  AKObject* GetMasterLayer() const { return nullptr; }

  // Objects of this host have no parents among each other, and one way to be linked: at the end of the order.
  int AddObjects(AKObjectArray const& objects, AKObject*, AKHandlerLinkMode) {
    if (document_ == nullptr) return kStatusNoDocument;
    for (AKObject* object : objects) document_->Adopt(object);
    return 0;
  }

  int DeleteObjects(AKObjectArray const& objects) {
    if (document_ == nullptr) return kStatusNoDocument;
    int status = 0;
    for (AKObject const* object : objects) {
      if (!document_->Remove(object)) status = kStatusNotInDocument;
    }
    return status;
  }

  // Nothing is kept that would have to follow a change: the document is drawn anew each time.
  int ReviseObjects(AKObjectArray const& objects) {
    if (document_ == nullptr) return kStatusNoDocument;
    for (AKObject const* object : objects) {
      if (!document_->Contains(object)) return kStatusNotInDocument;
    }
    return 0;
  }

 private:
  static constexpr int kStatusNoDocument = -731;
  static constexpr int kStatusNotInDocument = -732;

  Document* document_;
};

void Construct(AKHandler* wrapper, NKTreeHandler*) { wrapper->SetHostObject(new HostHandler(Document::Current())); }

void Destruct(AKHandler* wrapper) {
  delete static_cast<HostHandler*>(wrapper->HostObject());
  wrapper->SetHostObject(nullptr);
}

TableBuilder MakeTable() {
  TableBuilder table;
  table.Plain(32, &Construct);
  table.Plain(40, &Destruct);
  table.Member(96, &HostHandler::IsActive);
  table.Member(112, &HostHandler::SetActionName);
  table.Member(128, &HostHandler::ActionName);
  table.Member(144, &HostHandler::GetMasterLayer);
  table.Member(224, &HostHandler::AddObjects);
  table.Member(240, &HostHandler::DeleteObjects);
  table.Member(256, &HostHandler::ReviseObjects);
  return table;
}

}  // namespace

void* HandlerTable() {
  static TableBuilder table = MakeTable();
  return table.Table();
}

}  // namespace host
