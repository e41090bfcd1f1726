#include "host/window/dialogs/FileChooser.h"

#include <giomm/file.h>
#include <glibmm/convert.h>
#include <glibmm/error.h>
#include <gtkmm/dialog.h>

#include <algorithm>
#include <array>
#include <memory>

#include "host/text/Localisation.h"

namespace host {
namespace {

using Dialog = Glib::RefPtr<Gtk::FileChooserNative>;

// Those that are closed: those to open a file, and those to save one.
std::vector<Dialog>& Spare(bool isToSave) {
  static auto* const spare = new std::array<std::vector<Dialog>, 2>;  // outlives whatever the toolkit still loads
  return (*spare)[isToSave ? 1 : 0];
}

Dialog Take(bool isToSave) {
  std::vector<Dialog>& spare = Spare(isToSave);
  if (spare.empty()) {
    return Gtk::FileChooserNative::create("",
                                          isToSave ? Gtk::FileChooser::Action::SAVE : Gtk::FileChooser::Action::OPEN,
                                          isToSave ? Tr("_Save") : Tr("_Open"), Tr("_Cancel"));
  }
  Dialog dialog = std::move(spare.back());
  spare.pop_back();
  return dialog;
}

void SetKinds(Gtk::FileChooserNative& dialog, const std::vector<std::pair<Glib::ustring, std::string>>& kinds) {
  const auto old = dialog.get_filters();
  for (guint i = old->get_n_items(); i-- > 0;) {
    const auto filter = std::dynamic_pointer_cast<const Gtk::FileFilter>(old->get_object(i));
    dialog.remove_filter(std::const_pointer_cast<Gtk::FileFilter>(filter));
  }
  for (const auto& [name, patterns] : kinds) {
    auto filter = Gtk::FileFilter::create();
    filter->set_name(name);
    for (std::size_t begin = 0; begin < patterns.size();) {
      const std::size_t end = std::min(patterns.find(';', begin), patterns.size());
      filter->add_pattern(patterns.substr(begin, end - begin));
      begin = end + 1;
    }
    dialog.add_filter(filter);
    if (&name == &kinds.front().first) dialog.set_filter(filter);
  }
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
  dialog_ = Take(isToSave_ = question.isToSave);
  dialog_->set_title(question.title);
  dialog_->set_modal(true);
  if (parent != nullptr) dialog_->set_transient_for(*parent);
  SetKinds(*dialog_.get(), question.kinds);
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
  Spare(isToSave_).push_back(std::exchange(dialog_, {}));
}

}  // namespace host
