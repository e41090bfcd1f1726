// A user who answers at once.
#pragma once

#include "host/UserInterface.h"
#include "host/validator/Trial.h"

namespace host {

class TortureInterface final : public UserInterface {
 public:
  explicit TortureInterface(validator::Trial& trial) : trial_(trial) {}

  /// A file is chosen to be saved, and none to be opened.
  bool ChooseFileToSave(AKFilePath* path, const std::string& title, const std::string& filter) override;
  bool ChooseFileToOpen(AKFilePath* path, const std::string& title, const std::string& filter) override;
  bool ShowProgress(double fraction, const std::string& text) override;
  int RunDialog(HostPanel& panel, const std::function<int(AKGUIEvent&)>& send) override;
  void CloseDialog(HostPanel& panel, int result) override;

 private:
  validator::Trial& trial_;
  int result_ = 0;
};

}  // namespace host
