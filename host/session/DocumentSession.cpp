// The life of a session: its steps, its history and its file.
#include "host/session/DocumentSession.h"

#include <algorithm>

#include "host/session/SessionNotify_p.h"
#include "host/storage/DocumentFile.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

DocumentSession* sCurrent = nullptr;
std::uint64_t sLastSerial = 0;

std::vector<DocumentSession*>& Sessions() {
  static std::vector<DocumentSession*> sessions;
  return sessions;
}

// A name is for a menu. It is cut between characters of UTF-8.
std::string Shortened(std::string name) {
  constexpr std::size_t kLongestName = 200;  // bytes
  if (name.size() <= kLongestName) return name;
  std::size_t length = kLongestName;
  while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80) --length;
  name.resize(length);
  return name + "\xE2\x80\xA6";  // an ellipsis
}

}  // namespace

DocumentSession::DocumentSession(std::unique_ptr<Document> document)
    : document_(std::move(document)), activeLayer_(document_->Layers().back()->id), serial_(++sLastSerial) {
  Sessions().push_back(this);
}

DocumentSession::~DocumentSession() {
  std::erase(Sessions(), this);
  if (sCurrent == this) sCurrent = nullptr;
}

DocumentSession* DocumentSession::Current() { return sCurrent; }
void DocumentSession::MakeCurrent() { sCurrent = this; }

DocumentSession* DocumentSession::FindBySerial(std::uint64_t serial) {
  for (DocumentSession* session : Sessions()) {
    if (session->serial_ == serial) return session;
  }
  return nullptr;
}

void DocumentSession::AddObserver(SessionObserver* observer) {
  observers_.push_back(observer);
  document_->AddObserver(observer);
}

void DocumentSession::RemoveObserver(SessionObserver* observer) {
  std::erase(observers_, observer);
  document_->RemoveObserver(observer);
}

Result<std::unique_ptr<DocumentSession>> DocumentSession::Open(const std::string& path) {
  const FileStamp stamp = FileStamp::Of(path);
  auto document = ReadDocument(path);
  if (!document) return document.Why();
  auto session = std::make_unique<DocumentSession>(std::move(*document));
  session->path_ = path;
  session->stamp_ = stamp;
  return session;
}

std::unique_ptr<DocumentSession> DocumentSession::Restore(std::unique_ptr<Document> document, const std::string& path) {
  auto session = std::make_unique<DocumentSession>(std::move(document));
  session->path_ = path;
  session->stamp_ = FileStamp::Of(path);
  session->history_.MarkNeverClean();
  return session;
}

bool DocumentSession::IsFileChangedOutside() const { return !path_.empty() && !(FileStamp::Of(path_) == stamp_); }

Result<> DocumentSession::Save(bool overwrite) {
  if (path_.empty()) {
    return Problem(N_("the document has no file yet: it needs a name to be saved"));
  }
  if (!overwrite && IsFileChangedOutside()) {
    return Problem(N_("\"%s\" was changed by another program since it was opened; it was left as it is"), {path_});
  }
  return SaveAs(std::string(path_));
}

Result<> DocumentSession::SaveAs(const std::string& path) {
  if (const auto done = WriteDocument(*document_, path); !done) return done.Why();
  const bool isNew = path != path_;
  path_ = path;
  stamp_ = FileStamp::Of(path);
  if (!IsStepOpen()) history_.MarkClean();
  Notify([](SessionObserver& observer) { observer.OnHistoryChanged(); });
  if (isNew) Notify([](SessionObserver& observer) { observer.OnPathChanged(); });
  return {};
}

void DocumentSession::BeginStep(std::string name) {
  open_.push_back(std::make_unique<UndoStep>());
  open_.back()->name = Shortened(std::move(name));
}

void DocumentSession::SetActionName(std::string name) {
  actionName_ = Shortened(std::move(name));
  if (!open_.empty() && !actionName_.empty()) open_.front()->name = actionName_;
}

bool DocumentSession::EndStep() {
  if (open_.empty()) return false;
  std::unique_ptr<UndoStep> step = std::move(open_.back());
  open_.pop_back();
  if (!open_.empty()) {
    const bool changed = !step->IsEmpty();
    open_.back()->Merge(std::move(*step));
    return changed;
  }
  PruneSelection();
  if (!step->Seal(*document_)) return false;
  if (step->name.empty()) step->name = Tr("Change");
  history_.Push(std::move(step));
  ++changes_;
  Notify([](SessionObserver& observer) { observer.OnHistoryChanged(); });
  return true;
}

void DocumentSession::CancelStep() {
  if (open_.empty()) return;
  RewindStep();
  open_.pop_back();
}

void DocumentSession::RewindStep() {
  if (open_.empty()) return;
  open_.back()->Rewind(*document_);
  AfterRemoval();
}

std::string DocumentSession::UndoTitle() const {
  return history_.CanUndo() ? TrWith("Undo %s", history_.UndoName()) : Tr("Undo");
}
std::string DocumentSession::RedoTitle() const {
  return history_.CanRedo() ? TrWith("Redo %s", history_.RedoName()) : Tr("Redo");
}

void DocumentSession::AfterRemoval() {
  PruneSelection();
  if (document_->FindLayer(activeLayer_) == nullptr) SetActiveLayer(document_->Layers().back()->id);
}

// Objects that the step brought back or changed become selected, so that it is seen what happened.
void DocumentSession::AfterChange(const ObjectIDs& toSelect) {
  ++changes_;
  AfterRemoval();
  const auto known = [this](ObjectID id) { return document_->Find(id) != nullptr && IsEditable(id); };
  ObjectIDs present;
  std::copy_if(toSelect.begin(), toSelect.end(), std::back_inserter(present), known);
  if (!present.empty()) Select(present);
  Notify([](SessionObserver& observer) { observer.OnHistoryChanged(); });
}

bool DocumentSession::Undo() {
  if (IsStepOpen()) return false;
  UndoStep* step = history_.StepBack();
  if (step == nullptr) return false;
  step->Undo(*document_);
  AfterChange(step->Objects());
  return true;
}

bool DocumentSession::Redo() {
  if (IsStepOpen()) return false;
  UndoStep* step = history_.StepForward();
  if (step == nullptr) return false;
  step->Redo(*document_);
  AfterChange(step->Objects());
  return true;
}

bool DocumentSession::GoToStep(std::size_t position) {
  if (IsStepOpen() || position > history_.Count()) return false;
  while (history_.Position() > position) Undo();
  while (history_.Position() < position) Redo();
  return true;
}

}  // namespace host
