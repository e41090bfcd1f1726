#include "host/window/WindowInterface.h"

#include <glibmm/main.h>
#include <gtkmm/box.h>
#include <gtkmm/dialog.h>

#include <algorithm>

#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
#include "host/window/dialogs/FileChooser.h"
#include "host/window/dialogs/ProgressWindow.h"
#include "host/window/panels/PanelWidget.h"
#include "kit/files/AKFileUtils.h"

namespace host {
namespace {

constexpr int kPanelWidth = 240;  // of a panel that leaves it to the host

// "akd;png" as "*.akd;*.png".
std::string Patterns(const std::string& extensions) {
  std::string patterns = "*.";
  for (const char c : extensions) patterns += c == ';' ? std::string(";*.") : std::string(1, c);
  return patterns;
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
  const std::string folder = AKFileUtils::GetAsSystemPath(path->Folder()).CStr();
  const std::string name = DisplayText(path->FileName());
  FileQuestion question{title, save, folder.empty() ? name : folder + "/" + name, {}};
  if (!filter.empty()) question.kinds.emplace_back(filter, Patterns(filter));
  const auto loop = Glib::MainLoop::create();
  std::optional<std::string> chosen;
  FileChooser chooser;
  chooser.Ask(parent_, question, [&](const std::optional<std::string>& answer) {
    chosen = answer;
    loop->quit();
  });
  loop->run();
  return chosen && AKFileUtils::GetFromSystemPath(chosen->c_str(), path);
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
