// The bundle's one entry point.
#include "kit/objects/AKClassSetup.h"
#include "torture/Ask.h"
#include "torture/Entries.h"
#include "torture/Report.h"

namespace torture {

void AskEverything(const Moment& moment) {
  AskGeneral(moment);
  AskClasses();
  if (moment.ID() != MomentID::kStart) AskSetupAgain();
  AskControls();
  AskPanels(moment);
  AskObjects(moment);
  AskRecords(moment);
  AskDepth();
  AskHandlers(moment);
  AskDeletion(moment);
}

}  // namespace torture

/// Called once by the host after loading. Returns 0 also where the host got something wrong, so that more can be asked;
/// -1 for a null record or a second call, -792 for a version that is not accepted, or the status of a set-up that
/// failed.
extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  static bool isStarted = false;
  const auto* record = static_cast<const AKHostServiceRecord*>(hostServiceRecord);
  if (record == nullptr || isStarted) return -1;
  torture::Report::The();
  const torture::Moment start(torture::MomentID::kStart, nullptr);
  torture::AskRecord(*record);
  if (record->magic != AKHostServiceRecord::kMagic || record->classTable == nullptr) return -1;
  if (!AKIsAPIVersionAccepted(record->apiVersion)) return -792;
  isStarted = true;
  AKStoreHostServices(*record);
  torture::CheckEntries(*record);
  const int status = torture::AskSetup(record->setupWord);
  if (status == 0) torture::AskEverything(start);
  return status;
}
