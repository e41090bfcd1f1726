#include "host/window/WindowInterface.h"

#include <glibmm/main.h>
#include <gtkmm/box.h>
#include <gtkmm/dialog.h>
#include <gtkmm/filechoosernative.h>
#include <gtkmm/filefilter.h>

#include <algorithm>

#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
#include "host/window/dialogs/ProgressWindow.h"
#include "host/window/panels/PanelWidget.h"
#include "kit/files/AKFileUtils.h"

namespace host {
namespace {

constexpr int kPanelWidth = 240;  // of a panel that leaves it to the host

// "akd;png" as one filter; empty for all files.
void AddFilter(Gtk::FileChooserNative& chooser, const std::string& extensions) {
  if (extensions.empty()) return;
  auto filter = Gtk::FileFilter::create();
  filter->set_name(extensions);
  for (std::size_t begin = 0; begin < extensions.size();) {
    const std::size_t end = std::min(extensions.find(';', begin), extensions.size());
    filter->add_pattern("*." + extensions.substr(begin, end - begin));
    begin = end + 1;
  }
  chooser.add_filter(filter);
}

}  // namespace

struct WindowInterface::Dialog {
  HostPanel* panel;
  Glib::RefPtr<Glib::MainLoop> loop;
  int result;
  Dialog* outer;
};

WindowInterface::WindowInterface() = default;
WindowInterface::~WindowInterface() = default;

bool WindowInterface::ChooseFileToSave(AKFilePath* path, const std::string& title, const std::string& filter) {
  return ChooseFile(true, path, title, filter);
}

bool WindowInterface::ChooseFileToOpen(AKFilePath* path, const std::string& title, const std::string& filter) {
  return ChooseFile(false, path, title, filter);
}

bool WindowInterface::ChooseFile(bool save, AKFilePath* path, const std::string& title, const std::string& filter) {
  const auto action = save ? Gtk::FileChooser::Action::SAVE : Gtk::FileChooser::Action::OPEN;
  const auto chooser = Gtk::FileChooserNative::create(title, action, save ? Tr("_Save") : Tr("_Open"), Tr("_Cancel"));
  if (parent_ != nullptr) chooser->set_transient_for(*parent_);
  chooser->set_modal(true);
  AddFilter(*chooser.get(), filter);
  const std::string name = DisplayText(path->FileName());
  const std::string folder = AKFileUtils::GetAsSystemPath(path->Folder()).CStr();
  if (!folder.empty()) chooser->set_current_folder(Gio::File::create_for_path(folder));
  if (save && !name.empty()) chooser->set_current_name(name);
  const auto loop = Glib::MainLoop::create();
  bool accepted = false;
  chooser->signal_response().connect([&](int answer) {
    accepted = answer == Gtk::ResponseType::ACCEPT;
    loop->quit();
  });
  chooser->show();
  loop->run();
  const auto file = chooser->get_file();
  if (!accepted || !file) return false;
  return AKFileUtils::GetFromSystemPath(file->get_path().c_str(), path);
}

bool WindowInterface::ShowProgress(double fraction, const std::string& text) {
  if (fraction > 1) {
    progress_.reset();
    return false;
  }
  if (progress_ == nullptr) progress_ = std::make_unique<ProgressWindow>(parent_, "objecthost");
  return !progress_->Update(fraction, text);
}

int WindowInterface::RunDialog(HostPanel& panel, const std::function<int(AKGUIEvent&)>& send) {
  Gtk::Window window;
  window.set_title(DisplayText(panel.GetPanelTitle()));
  window.set_modal(true);
  if (parent_ != nullptr) window.set_transient_for(*parent_);
  Dialog dialog{&panel, Glib::MainLoop::create(), 0, dialog_};
  dialog_ = &dialog;
  PanelWidget* shown = nullptr;
  PanelWidget widget(panel, [&](unsigned int controlID, const ControlWidget::SetValue& set, bool) {
    set(panel.Wrapper(), controlID);
    AKGUIEvent event;
    event.kind = AKGUIEvent::kControlChanged;
    event.ctrlID = controlID;
    send(event);
    if (shown != nullptr) shown->ShowControls([](unsigned int) { return false; });
  });
  shown = &widget;
  widget.ShowControls([](unsigned int) { return false; });
  widget.set_margin(12);
  int width = 0;
  int height = 0;
  panel.GetPanelSize(&width, &height);
  widget.set_size_request(width > 0 ? width : kPanelWidth, height);
  window.set_child(widget);
  window.signal_close_request().connect(
      [&dialog] {
        dialog.loop->quit();
        return true;
      },
      false);
  window.present();
  dialog.loop->run();
  dialog_ = dialog.outer;
  window.unset_child();
  return dialog.result;
}

void WindowInterface::CloseDialog(HostPanel& panel, int result) {
  for (Dialog* dialog = dialog_; dialog != nullptr; dialog = dialog->outer) {
    if (dialog->panel != &panel) continue;
    dialog->result = result;
    dialog->loop->quit();
    return;
  }
}

}  // namespace host
