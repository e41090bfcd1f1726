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
  WindowInterface(WindowInterface const&) = delete;
  WindowInterface& operator=(WindowInterface const&) = delete;
  ~WindowInterface() override;

  /// Questions are asked in front of this window; null for none.
  void SetParent(Gtk::Window* parent) { parent_ = parent; }

  bool ChooseFileToSave(AKFilePath* path, std::string const& title, std::string const& filter) override;
  bool ChooseFileToOpen(AKFilePath* path, std::string const& title, std::string const& filter) override;
  bool ShowProgress(double fraction, std::string const& text) override;
  int RunDialog(HostPanel& panel, std::function<int(AKGUIEvent&)> const& send) override;
  void CloseDialog(HostPanel& panel, int result) override;

 private:
  struct Dialog;

  bool ChooseFile(bool save, AKFilePath* path, std::string const& title, std::string const& filter);

  Gtk::Window* parent_ = nullptr;
  std::unique_ptr<ProgressWindow> progress_;
  Dialog* dialog_ = nullptr;  ///< the innermost that runs
};

}  // namespace host
