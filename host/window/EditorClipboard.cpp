// Copying, pasting, importing and finding.
#include "host/text/Localisation.h"
#include "host/window/DesktopClipboard.h"
#include "host/window/EditorWindow.h"
#include "host/window/dialogs/FindDialog.h"

namespace host {
namespace {

constexpr double kPasteOffset = 10;

}  // namespace

void EditorWindow::CopySelection(bool cut) {
  std::string clipboard;
  if (cut) {
    Do(session_->Clipboard().Cut(session_->Selection().IDs(), &clipboard));
  } else if (!session_->Selection().IsEmpty()) {
    clipboard = session_->Clipboard().Copy(session_->Selection().IDs());
  }
  if (clipboard.empty()) return;
  OfferOnClipboard(*this, {std::move(clipboard), session_->Doc()});
  pasted_ = 0;
}

// What another program offers comes when it comes: by then the window may be gone, or show another document.
void EditorWindow::PasteClipboard(PastePlace place) {
  const AGPoint pointer = canvas_.PointerPlace();
  ReadClipboard(*this, [this, place, pointer, serial = session_->Serial(),
                        alive = std::weak_ptr(alive_)](const Result<ClipboardContent>& content) {
    if (alive.expired() || session_ == nullptr || session_->Serial() != serial) return;
    FinishTyping();
    if (!content) return Do(content.Why());
    content->isObjects ? PasteObjects(content->bytes, place, pointer) : PastePicture(content->bytes, place, pointer);
  });
}

void EditorWindow::PasteObjects(const std::string& bytes, PastePlace place, const AGPoint& pointer) {
  if (place == PastePlace::kAtPointer) return Do(session_->Clipboard().PasteAt(bytes, pointer));
  const double aside = place == PastePlace::kAside ? ++pasted_ * kPasteOffset : 0;
  Do(session_->Clipboard().Paste(bytes, aside, -aside));
}

void EditorWindow::PastePicture(const std::string& bytes, PastePlace place, const AGPoint& pointer) {
  ImportPlace where;
  if (place == PastePlace::kAside) where.middle = canvas_.MiddlePlace();
  if (place == PastePlace::kAtPointer) where.middle = pointer;
  ShowImported(session_->Import().Take(bytes, where));
}

void EditorWindow::ShowImported(const Result<Imported>& imported) {
  if (!imported) return Do(imported.Why());
  if (const auto summary = imported->Summary()) ShowProblem(*summary, Gtk::MessageType::INFO);
}

void EditorWindow::ImportFile(const std::string& path, const AGPoint& middle) {
  ImportPlace place;
  place.middle = middle;
  ShowImported(session_->Import().TakeFile(path, place));
}

void EditorWindow::ChooseImport() {
  ChooseFile(Tr("Import"), {{Tr("Pictures"), "*.png;*.jpg;*.jpeg;*.tif;*.tiff;*.svg"}, {Tr("All Files"), "*"}},
             [this](const std::string& path) { ImportFile(path, canvas_.MiddlePlace()); });
}

void EditorWindow::ShowFind() {
  new FindDialog(*this, session_->Doc(), [this, serial = session_->Serial()](const Wanted& wanted) -> std::size_t {
    if (session_ == nullptr || session_->Serial() != serial) return 0;
    const ObjectIDs found = wanted.IsEmpty() ? ObjectIDs() : FindObjects(session_->Doc(), wanted);
    session_->Selection().Select(found);
    if (!session_->Selection().IsEmpty()) canvas_.RevealObject(session_->Selection().IDs().front());
    return session_->Selection().Count();
  });
}

}  // namespace host
