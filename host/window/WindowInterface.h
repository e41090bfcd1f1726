// What bundles ask of the user, asked in windows.
//
// A bundle waits for the answer, so each question runs the main loop until it is answered.
#pragma once

#include <gtkmm/window.h>

#include <memory>

#include "host/UserInterface.h"

namespace host {

class ProgressWindow;

class WindowInterface final : public UserInterface {
 public:
  WindowInterface();
  WindowInterface(const WindowInterface&) = delete;
  WindowInterface& operator=(const WindowInterface&) = delete;
  ~WindowInterface() override;

  /// Questions are asked in front of this window; null for none.
  void SetParent(Gtk::Window* parent) { parent_ = parent; }

  bool ChooseFileToSave(AKFilePath* path, const std::string& title, const std::string& filter) override;
  bool ChooseFileToOpen(AKFilePath* path, const std::string& title, const std::string& filter) override;
  bool ShowProgress(double fraction, const std::string& text) override;
  int RunDialog(HostPanel& panel, const std::function<int(AKGUIEvent&)>& send) override;
  void CloseDialog(HostPanel& panel, int result) override;

 private:
  struct Dialog;

  bool ChooseFile(bool save, AKFilePath* path, const std::string& title, const std::string& filter);

  Gtk::Window* parent_ = nullptr;
  std::unique_ptr<ProgressWindow> progress_;
  Dialog* dialog_ = nullptr;  ///< the innermost that runs
};

}  // namespace host
