// Hosts that offer less than this one.
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/validator/Subject.h"
#include "kit/files/AKFilePath.h"

namespace host::validator {
namespace {

// Uses what the bundle registered with a host that lacks something, as far as that host could.
void Use(const ClassCalls& cls) {
  const Instance object = cls.Make();
  const State state = StateOf(cls, object);
  cls.Set(object, state.properties);
  const AGBitmap bitmap(64, 64, AGBitmap::kFlagZeroFill);
  AKDrawEvent event;
  event.bounds = {8, 8, 56, 56};
  cls.Draw(object, bitmap.GetContextOfBitmap(), event);
}

// Returns the status.
int StartAndUse(Trial& trial, const Library& library, AKHostServiceRecord record, const char* what) {
  const std::size_t first = Host::Instance().Classes().Classes().size();
  trial.Do(std::string("pluginMain with a host ") + what);
  const int status = library.Start(&record);
  const auto& all = Host::Instance().Classes().Classes();
  for (std::size_t i = first; status == 0 && i < all.size(); ++i) Use(ClassCalls(trial, all[i]));
  return status;
}

// The kit gives what is said of a missing table: nothing, 0, or the text itself.
template <auto table>
void Missing(Trial& trial, const char* what) {
  const Library library(trial);
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  record.*table = nullptr;
  StartAndUse(trial, library, record, what);
}

void WithoutGeneral(Trial& trial) { Missing<&AKHostServiceRecord::generalTable>(trial, "without the general table"); }
void WithoutHandlers(Trial& trial) { Missing<&AKHostServiceRecord::handlerTable>(trial, "without the handler table"); }
void WithoutPanels(Trial& trial) {
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  const Library library(trial);
  record.controlTable = nullptr;
  record.panelTable = nullptr;
  StartAndUse(trial, library, record, "without the tables of panels and controls");
}

void WithoutClasses(Trial& trial) {
  const Library library(trial);
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  record.classTable = nullptr;
  const int status = StartAndUse(trial, library, record, "without the class table");
  trial.Expect(status < 0, "a negative status", StatusText(status));
}

void WithoutOptionalEntries(Trial& trial) {
  static AKGeneralTable general = *GeneralTable();
  general.logMessage = nullptr;
  general.dialogOpenFile = nullptr;
  general.dialogSaveFile = nullptr;
  general.windowProgress = nullptr;
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  record.generalTable = &general;
  const Library library(trial);
  const int status = StartAndUse(trial, library, record, "without log and dialogs, whose entries may be null");
  trial.Expect(status == 0, "status 0", StatusText(status));
}

// A host that knows no property and no path, and whose user presses Cancel.
void Refusing(Trial& trial) {
  static AKGeneralTable general = *GeneralTable();
  general.getApplicationProperty = [](const AKString&, AKValue*) { return -711; };
  general.getStandardPath = [](unsigned int) -> const AKFilePath& {
    static const AKFilePath none;
    return none;
  };
  general.dialogOpenFile = [](AKFilePath&, const AKString&, const AKString&) { return 0; };
  general.dialogSaveFile = general.dialogOpenFile;
  general.windowProgress = [](unsigned int, double, const AKString&) { return 1; };
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  record.generalTable = &general;
  const Library library(trial);
  const int status = StartAndUse(trial, library, record, "that has no property and no path, and whose user says no");
  trial.Expect(status == 0, "status 0", StatusText(status));
}

void Scales(Trial& trial) {
  for (const double scale : {0.5, 2.0, 3.25}) {
    const Library library(trial);
    AKHostServiceRecord record = Host::Instance().ServiceRecord();
    record.displayScale = scale;
    const int status = StartAndUse(trial, library, record, ("of display scale " + std::to_string(scale)).c_str());
    trial.Expect(status == 0, "status 0", StatusText(status));
  }
}

}  // namespace

std::vector<Check> HostChecks() {
  return {
      {"host-no-general-table", "The bundle works with a host that has no general table, by the kit's own answers.", 2,
       &WithoutGeneral},
      {"host-no-handler-table", "The bundle works with a host that has no handlers.", 2, &WithoutHandlers},
      {"host-no-panel-tables", "The bundle works with a host that has no panels.", 2, &WithoutPanels},
      {"host-no-class-table", "A host that keeps no classes is refused, not believed.", 2, &WithoutClasses},
      {"host-no-optional-entries", "Log and dialogs may be null entries, which are asked for first.", 2,
       &WithoutOptionalEntries},
      {"host-refusing", "The bundle works with a host that refuses whatever it is asked.", 2, &Refusing},
      {"host-display-scale", "The bundle works at each display scale.", 2, &Scales},
  };
}

}  // namespace host::validator
