#include "host/session/DocumentSession.h"

#include <cmath>

#include "host/Host.h"
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

void DocumentSession::SetBackground(AGColor color) {
  EditStep step(steps_, Tr("Change Background"));
  steps_.Step().BeforePage(*document_);
  document_->SetPage(document_->Page(), color);
  step.End();
}

}  // namespace host
