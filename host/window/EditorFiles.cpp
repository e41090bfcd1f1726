// Opening, saving and exporting, and the questions around them.
#include <glibmm/fileutils.h>
#include <glibmm/ustring.h>
#include <gtkmm/dialog.h>

#include <algorithm>

#include "host/text/Localisation.h"
#include "host/window/EditorApplication.h"
#include "host/window/EditorWindow.h"
#include "host/window/dialogs/ExportDialog.h"
#include "host/window/dialogs/PrintDialog.h"
#include "host/window/dialogs/Question.h"

namespace host {
namespace {

constexpr char kExtension[] = ".akd";

enum Answer : int { kSave = 1, kDiscard = 2, kOverwrite = 3 };

// Another ending is part of the name: "plan-v1.2" becomes "plan-v1.2.akd".
std::string MissingEnding(const std::string& path) {
  const Glib::ustring name = path;
  return name.lowercase().raw().ends_with(kExtension) ? "" : kExtension;
}

std::string FileName(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

void EditorWindow::ChooseFile(const std::string& title, const std::vector<std::pair<Glib::ustring, std::string>>& kinds,
                              const std::function<void(const std::string&)>& then) {
  chooser_.Ask(this, {title, false, "", kinds}, [then](const std::optional<std::string>& path) {
    if (path) then(*path);
  });
}

void EditorWindow::ChooseDocument() {
  ChooseFile(Tr("Open Document"), {{Tr("Documents"), "*.akd"}, {Tr("All Files"), "*"}},
             [this](const std::string& path) {
               if (const auto application = std::dynamic_pointer_cast<EditorApplication>(get_application())) {
                 application->OpenDocument(path, this);
               }
             });
}

void EditorWindow::Save(const std::function<void()>& then) {
  FinishTyping();
  if (session_->File().Path().empty()) return SaveAs(then);
  if (session_->File().IsChangedOutside()) return AskToOverwrite(then);
  if (const auto done = session_->File().Save(false); !done) return OfferAnotherPlace(done.Why(), then);
  message_.set_revealed(false);
  then();
}

void EditorWindow::AskToOverwrite(const std::function<void()>& then) {
  const bool isThere = Glib::file_test(session_->File().Path(), Glib::FileTest::EXISTS);
  Ask(*this, isThere ? Tr("The file was changed by another program.") : Tr("The file is not there any more."),
      isThere ? Tr("Saving replaces it by this document; Save As keeps both.")
              : Tr("Replace writes it again; Save As writes another one."),
      {{Tr("Save _As…"), kSave}, {Tr("_Replace"), kOverwrite}}, [this, then](int answer) {
        if (answer == kSave) SaveAs(then);
        if (answer != kOverwrite) return;
        if (const auto done = session_->File().Save(true); !done) return OfferAnotherPlace(done.Why(), then);
        then();
      });
}

// What can't be written here may be written elsewhere; until then the document stays open with its changes.
void EditorWindow::OfferAnotherPlace(const Problem& problem, const std::function<void()>& then) {
  Ask(*this, Tr("The document was not saved."), problem.Translated(), {{Tr("Save _As…"), kSave}},
      [this, then](int answer) {
        if (answer == kSave) SaveAs(then);
      });
}

void EditorWindow::SaveAs(const std::function<void()>& then) {
  FinishTyping();
  const std::string& own = session_->File().Path();
  const FileQuestion question{
      Tr("Save Document"), true, own.empty() ? std::string(Tr("Untitled")) + kExtension : own, {}};
  chooser_.Ask(this, question, [this, then](const std::optional<std::string>& path) {
    if (!path) return;
    AskForPath(*this, *path, MissingEnding(*path), [this, then](const std::string& whole) { SaveTo(whole, then); });
  });
}

void EditorWindow::SaveTo(const std::string& path, const std::function<void()>& then) {
  const auto application = std::dynamic_pointer_cast<EditorApplication>(get_application());
  EditorWindow* const other = application == nullptr ? nullptr : application->WindowOf(path);
  if (other != nullptr && other != this) {
    return OfferAnotherPlace(Problem(N_("\"%s\" is open in another window"), {path}), then);
  }
  message_.set_revealed(false);  // what the new place brings is shown
  if (const auto done = session_->File().SaveAs(path); !done) return OfferAnotherPlace(done.Why(), then);
  EditorApplication::NoteUse(session_->File().Path());
  then();
}

void EditorWindow::AskToKeepChanges(const std::function<void()>& then) {
  FinishTyping();
  if (!session_->File().HasUnsavedChanges()) return then();
  const std::string name = session_->File().Path().empty() ? Tr("Untitled") : FileName(session_->File().Path());
  Ask(*this, TrWith("Save the changes of “%s” before closing?", name), Tr("Changes that are not saved are lost."),
      {{Tr("_Discard"), kDiscard}, {Tr("_Save"), kSave}}, [this, then](int answer) {
        if (answer == kDiscard) then();
        if (answer == kSave) Save(then);
      });
}

void EditorWindow::AskToRecover(const std::string& name, const std::function<void(bool recover)>& then) {
  Ask(*this, TrWith("“%s” was not closed in good order. Recover it?", name),
      Tr("Its unsaved changes were kept. Cancel keeps them and asks again the next time."),
      {{Tr("_Discard"), kDiscard}, {Tr("_Recover"), kSave}}, [then](int answer) {
        if (answer == kSave || answer == kDiscard) then(answer == kSave);
      });
}

void EditorWindow::Print() {
  PrintDocument(*this, session_->Doc(), [this, alive = std::weak_ptr(alive_)](const Problem& problem) {
    if (!alive.expired()) ShowProblem(problem, Gtk::MessageType::ERROR);
  });
}

// The dialog closes itself.
void EditorWindow::Export() {
  FinishTyping();
  new ExportDialog(*this, *session_, [this](const std::string& file, const Result<>& done) {
    if (!done) return ShowProblem(done.Why(), Gtk::MessageType::ERROR);
    ShowNotice(N_("Exported %s"), file);
  });
}

}  // namespace host
