#include "host/session/DocumentSession.h"

#include <cmath>

#include "host/Host.h"
#include "host/model/ObjectRecord.h"
#include "host/storage/DocumentFile.h"
#include "host/text/Localisation.h"

namespace host {

DocumentSession::DocumentSession(std::unique_ptr<Document> document)
    : document_(std::move(document)), serial_(Host::Instance().Sessions().Add(*this)) {}

DocumentSession::~DocumentSession() { Host::Instance().Sessions().Remove(*this); }

Result<std::unique_ptr<DocumentSession>> DocumentSession::Open(const std::string& path) {
  const FileStamp stamp = FileStamp::Of(path);
  auto document = ReadDocument(path);
  if (!document) return document.Why();
  auto session = std::make_unique<DocumentSession>(std::move(*document));
  session->file_.Link(path, stamp);
  return session;
}

std::unique_ptr<DocumentSession> DocumentSession::Restore(std::unique_ptr<Document> document, const std::string& path) {
  auto session = std::make_unique<DocumentSession>(std::move(document));
  session->file_.Link(path, FileStamp::Of(path));
  session->steps_.MarkNeverSaved();
  return session;
}

Result<> DocumentSession::SetPage(const AGSize& page) {
  if (!(page.width > 0 && page.height > 0) || !std::isfinite(page.width) || !std::isfinite(page.height)) {
    return Problem(N_("the sides of a page are numbers above 0"));
  }
  EditStep step(steps_, Tr("Change Page"));
  steps_.Step().BeforePage(*document_);
  document_->SetPage(page, document_->Background());
  return step.End();
}

Result<> DocumentSession::SetAids(PageAids aids, const std::string& name) {
  if (const auto done = CheckAids(aids); !done) return done.Why();
  EditStep step(steps_, name);
  steps_.Step().BeforePage(*document_);
  document_->SetAids(std::move(aids));
  return step.End();
}

ObjectIDs DocumentSession::ShownObjects() const {
  ObjectIDs shown;
  for (const Layer* layer : document_->Layers()) {
    if (!layer->settings.visible) continue;
    layer->objects.ForEach([&shown](const DocumentObject& object) {
      if (!object.marks.hidden) shown.push_back(object.id);
    });
  }
  return shown;
}

Result<> DocumentSession::FitPage() {
  ObjectIDs all;
  const DocumentObject* fixed = nullptr;
  document_->ForEachObject([&](const DocumentObject& object) {
    all.push_back(object.id);
    if (object.IsPlaceholder()) fixed = &object;
  });
  AGRect box;
  if (!selection_.GetBox(ShownObjects(), &box) || !(box.Width() > 0) || !(box.Height() > 0)) {
    return Problem(N_("there is nothing to be seen that the page could fit to"));
  }
  if (fixed != nullptr) return WhyPlaceholder(*fixed);
  EditStep step(steps_, Tr("Fit Page to Drawing"));
  for (const ObjectID id : all) {
    ObjectPlacement placement = document_->Find(id)->Placement();
    AGRect& b = placement.bounds;
    b = {b.x0 - box.x0, b.y0 - box.y0, b.x1 - box.x0, b.y1 - box.y0};
    steps_.Step().BeforePlacement(*document_, id);
    document_->SetPlacement(id, placement);
  }
  PageAids aids = document_->Aids();
  for (double& x : aids.verticalGuides) x -= box.x0;
  for (double& y : aids.horizontalGuides) y -= box.y0;
  if (const auto done = SetPage({box.Width(), box.Height()}); !done) return done.Why();
  if (const auto done = SetAids(std::move(aids), ""); !done) return done.Why();
  return step.End();
}

void DocumentSession::SetBackground(AGColor color) {
  EditStep step(steps_, Tr("Change Background"));
  steps_.Step().BeforePage(*document_);
  document_->SetPage(document_->Page(), color);
  step.End();
}

}  // namespace host
