#include "host/window/dialogs/FileChooser.h"

#include <giomm/file.h>
#include <glibmm/convert.h>
#include <glibmm/error.h>
#include <gtkmm/dialog.h>

#include <algorithm>
#include <map>

#include "host/text/Localisation.h"

namespace host {
namespace {

using Dialog = Glib::RefPtr<Gtk::FileChooserNative>;
using Kinds = std::vector<std::pair<Glib::ustring, std::string>>;

// Those that are closed, by whether they save and by their kinds of files, which stay: the toolkit lets go of a filter
// once too often when it is taken away.
std::vector<Dialog>& Spare(bool isToSave, const Kinds& kinds) {
  static auto* const spare = new std::map<std::pair<bool, Kinds>, std::vector<Dialog>>;  // outlives what is loaded
  return (*spare)[{isToSave, kinds}];
}

void AddKinds(Gtk::FileChooserNative& dialog, const Kinds& kinds) {
  for (const auto& [name, patterns] : kinds) {
    auto filter = Gtk::FileFilter::create();
    filter->set_name(name);
    for (std::size_t begin = 0; begin < patterns.size();) {
      const std::size_t end = std::min(patterns.find(';', begin), patterns.size());
      filter->add_pattern(patterns.substr(begin, end - begin));
      begin = end + 1;
    }
    dialog.add_filter(filter);
  }
}

Dialog Take(const FileQuestion& question) {
  std::vector<Dialog>& spare = Spare(question.isToSave, question.kinds);
  if (!spare.empty()) {
    Dialog dialog = std::move(spare.back());
    spare.pop_back();
    return dialog;
  }
  const auto action = question.isToSave ? Gtk::FileChooser::Action::SAVE : Gtk::FileChooser::Action::OPEN;
  Dialog dialog =
      Gtk::FileChooserNative::create("", action, question.isToSave ? Tr("_Save") : Tr("_Open"), Tr("_Cancel"));
  AddKinds(*dialog.get(), question.kinds);
  return dialog;
}

// A folder that is not there leaves the one that was shown last.
void SetPlace(Gtk::FileChooserNative& dialog, const FileQuestion& question) {
  const std::size_t slash = question.path.rfind('/');
  const std::string name = slash == std::string::npos ? question.path : question.path.substr(slash + 1);
  if (slash != std::string::npos) {
    try {
      dialog.set_current_folder(Gio::File::create_for_path(question.path.substr(0, slash + 1)));
    } catch (const Glib::Error&) {
    }
  }
  if (question.isToSave) dialog.set_current_name(Glib::filename_display_name(name));
}

}  // namespace

FileChooser::~FileChooser() {
  if (dialog_) GiveBack();
}

void FileChooser::Ask(Gtk::Window* parent, const FileQuestion& question, Answer answer) {
  if (dialog_) return dialog_->show();
  spare_ = &Spare(question.isToSave, question.kinds);
  dialog_ = Take(question);
  dialog_->set_title(question.title);
  dialog_->set_modal(true);
  if (parent != nullptr) dialog_->set_transient_for(*parent);
  SetPlace(*dialog_.get(), question);
  answered_ = dialog_->signal_response().connect([this, answer = std::move(answer)](int response) {
    const auto file = dialog_->get_file();
    const bool isChosen = response == Gtk::ResponseType::ACCEPT && file && !file->get_path().empty();
    const Answer then = answer;  // this function goes with the connection
    GiveBack();
    then(isChosen ? std::optional(file->get_path()) : std::nullopt);
  });
  dialog_->show();
}

void FileChooser::GiveBack() {
  answered_.disconnect();
  dialog_->hide();
  dialog_->unset_transient_for();
  spare_->push_back(std::exchange(dialog_, {}));
}

}  // namespace host
