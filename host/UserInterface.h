// What the host asks of the person in front of it on behalf of a bundle: files, dialogs, progress.
//
// The window is one. Without any, files are not chosen, dialogs are not opened and progress is not shown.
#pragma once

#include <functional>
#include <string>

#include "kit/files/AKFilePath.h"

struct AKGUIEvent;

namespace host {

class HostPanel;

class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// Lets the user choose a file. `path` is the one to begin with, and the chosen one; texts are UTF-8. `filter` is a
  /// list of extensions without dots, separated by ";", empty for all files. False when the user did not choose.
  virtual bool ChooseFileToSave(AKFilePath* path, const std::string& title, const std::string& filter) = 0;
  virtual bool ChooseFileToOpen(AKFilePath* path, const std::string& title, const std::string& filter) = 0;

  /// Shows how far some work is, `fraction` from 0 to 1; above 1 the work is over. True when the user wants it to stop.
  virtual bool ShowProgress(double fraction, const std::string& text) = 0;

  /// Runs a panel as a modal dialog until CloseDialog; events go to `send`. Returns the result given to CloseDialog.
  virtual int RunDialog(HostPanel& panel, const std::function<int(AKGUIEvent&)>& send) = 0;
  virtual void CloseDialog(HostPanel& panel, int result) = 0;

 protected:
  UserInterface() = default;
  UserInterface(const UserInterface&) = default;
  UserInterface& operator=(const UserInterface&) = default;
};

}  // namespace host
