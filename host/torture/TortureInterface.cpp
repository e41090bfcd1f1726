#include "host/torture/TortureInterface.h"

#include "kit/panels/AKGUIEvent.h"

namespace host {

bool TortureInterface::ChooseFileToSave(AKFilePath* path, const std::string&, const std::string&) {
  path->SetText("/chosen.akd");
  return true;
}

bool TortureInterface::ChooseFileToOpen(AKFilePath*, const std::string&, const std::string&) { return false; }

bool TortureInterface::ShowProgress(double fraction, const std::string&) {
  trial_.Expect(fraction >= 0, "a fraction from 0 to 1, or more at the end", std::to_string(fraction));
  return fraction >= 1;
}

int TortureInterface::RunDialog(HostPanel&, const std::function<int(AKGUIEvent&)>& send) {
  result_ = 0;  // as in a window, what was closed before is not what is shown now
  AKGUIEvent event;
  event.kind = AKGUIEvent::kControlChanged;
  event.ctrlID = 1;
  send(event);
  return result_;
}

void TortureInterface::CloseDialog(HostPanel&, int result) { result_ = result; }

}  // namespace host
