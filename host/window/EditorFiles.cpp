// Opening, saving and exporting, and the questions around them.
#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <gtkmm/filefilter.h>
#include <gtkmm/messagedialog.h>

#include "host/text/Localisation.h"
#include "host/window/EditorApplication.h"
#include "host/window/EditorWindow.h"
#include "host/window/dialogs/ExportDialog.h"

namespace host {
namespace {

constexpr char kExtension[] = ".akd";

enum Answer : int { kSave = 1, kDiscard = 2, kOverwrite = 3 };

// A question in front of the window; the answer comes later.
void Ask(Gtk::Window& window, const std::string& question, const std::string& details,
         const std::vector<std::pair<std::string, int>>& answers, const std::function<void(int)>& then) {
  auto* const dialog =
      new Gtk::MessageDialog(window, question, false, Gtk::MessageType::QUESTION, Gtk::ButtonsType::NONE, true);
  dialog->set_secondary_text(details);
  dialog->add_button(Tr("_Cancel"), Gtk::ResponseType::CANCEL);
  for (const auto& [text, answer] : answers) dialog->add_button(text, answer);
  dialog->set_default_response(answers.back().second);
  dialog->signal_response().connect([dialog, then](int answer) {
    dialog->hide();
    then(answer);
  });
  dialog->signal_hide().connect([dialog] { Glib::signal_idle().connect_once([dialog] { delete dialog; }); });
  dialog->show();
}

std::string FileName(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

void EditorWindow::ChooseFile(const std::string& title, const std::vector<std::pair<std::string, std::string>>& kinds,
                              const std::function<void(const std::string&)>& then) {
  chooser_ = Gtk::FileChooserNative::create(title, *this, Gtk::FileChooser::Action::OPEN, Tr("_Open"), Tr("_Cancel"));
  for (const auto& [name, pattern] : kinds) {
    auto filter = Gtk::FileFilter::create();
    filter->set_name(name);
    filter->add_pattern(pattern);
    chooser_->add_filter(filter);
  }
  chooser_->signal_response().connect([this, then](int answer) {
    const auto file = chooser_->get_file();
    chooser_.reset();
    if (answer == Gtk::ResponseType::ACCEPT && file) then(file->get_path());
  });
  chooser_->show();
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
  if (const auto done = session_->File().Save(false); !done) return ShowProblem(done.Why(), Gtk::MessageType::ERROR);
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
        if (const auto done = session_->File().Save(true); !done)
          return ShowProblem(done.Why(), Gtk::MessageType::ERROR);
        then();
      });
}

void EditorWindow::SaveAs(const std::function<void()>& then) {
  FinishTyping();
  chooser_ = Gtk::FileChooserNative::create(Tr("Save Document"), *this, Gtk::FileChooser::Action::SAVE, Tr("_Save"),
                                            Tr("_Cancel"));
  chooser_->set_current_name(session_->File().Path().empty() ? std::string(Tr("Untitled")) + kExtension
                                                             : FileName(session_->File().Path()));
  chooser_->signal_response().connect([this, then](int answer) {
    const auto file = chooser_->get_file();
    chooser_.reset();
    if (answer == Gtk::ResponseType::ACCEPT && file) SaveTo(file->get_path(), then);
  });
  chooser_->show();
}

void EditorWindow::SaveTo(const std::string& path, const std::function<void()>& then) {
  const bool named = FileName(path).find('.') != std::string::npos;
  if (const auto done = session_->File().SaveAs(named ? path : path + kExtension); !done) {
    return ShowProblem(done.Why(), Gtk::MessageType::ERROR);
  }
  EditorApplication::NoteUse(session_->File().Path());
  message_.set_revealed(false);
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

// The dialog closes itself.
void EditorWindow::Export() {
  FinishTyping();
  new ExportDialog(*this, *session_, [this](const std::string& file, const Result<>& done) {
    if (!done) return ShowProblem(done.Why(), Gtk::MessageType::ERROR);
    ShowNotice(N_("Exported %s"), file);
  });
}

}  // namespace host
