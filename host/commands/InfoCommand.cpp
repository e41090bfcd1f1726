// What a bundle registers: its class records, method slots and panels.
#include <cstdio>

#include "host/Program.h"
#include "host/bundles/BundleSet.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/listings/JsonListing.h"
#include "host/listings/MethodName.h"
#include "host/listings/PanelListing.h"
#include "host/terminal/Output.h"
#include "host/text/DisplayText.h"
#include "host/text/Printable.h"

namespace host {
namespace {

void PrintRecord(const AKClass& cls) {
  Output::Print("class \"%s\", ID \"%s\", parent \"%s\", %u bytes an instance\n",
                Printable(DisplayText(DisplayName(cls))).c_str(), Printable(cls.classID.chars).c_str(),
                Printable(cls.parentClassID.chars).c_str(), cls.instanceSize);
  Output::Print("record of %zu bytes\n", sizeof(AKClass));
  Output::Print("  %4u  class ID              \"%s\"\n", 0U, Printable(cls.classID.chars).c_str());
  Output::Print("  %4u  parent class ID       \"%s\"\n", 8U, Printable(cls.parentClassID.chars).c_str());
  Output::Print("  %4u  parent record         %s\n", 16U, cls.parentLink != nullptr ? "set" : "none");
  Output::Print("  %4u  constructor           %s\n", 24U, cls.constructor != nullptr ? "set" : "none");
  Output::Print("  %4u  destructor            %s\n", 32U, cls.destructor != nullptr ? "set" : "none");
  Output::Print("  %4u  quick cast            %s\n", 40U, cls.quickCast != nullptr ? "set" : "none");
  Output::Print("  %4u  quick cast, instances %s\n", 48U, cls.instanceQCast != nullptr ? "set" : "none");
  Output::Print("  %4u  flags                 0x%02X\n", 56U, cls.flags);
  for (unsigned int i = 0; i < 4; ++i) {
    Output::Print("  %4u  name %u                \"%s\"\n", 64 + 8 * i, i + 1,
                  Printable(DisplayText(cls.names[i])).c_str());
  }
  Output::Print("  %4u  comments              \"%s\"\n", 96U, Printable(DisplayText(cls.comments)).c_str());
  Output::Print("  %4u  instance size         %u\n", 104U, cls.instanceSize);
  Output::Print("  %4u  further class ID      \"%s\"\n", 112U, Printable(cls.furtherClassID.chars).c_str());
}

// Addresses differ from run to run; what is said is whether a slot is filled, and in which form.
void PrintSlots(const AKClass& cls) {
  Output::Print("method slots\n");
  for (unsigned int i = 0; i < kAKMethodCount; ++i) {
    const AKMethodSlot& slot = cls.methods[i];
    if (slot.function == 0) continue;
    Output::Print("  %2u  at %4zu  %-23s %s, adjustment %td\n", i, 144 + sizeof(AKMethodSlot) * i, MethodName(i),
                  (slot.function & 1) != 0 ? "virtual" : "plain", slot.adjustment);
  }
}

int RunInfo(const std::vector<std::string>& words) {
  CommandLine line({}, {"json"});
  if (const auto done = line.Parse(words, 1, 1); !done) return Fail(done.Why());
  BundleSet bundles(Program::ExecutablePath(), ProbeMemory::DefaultFile());
  if (const auto done = bundles.Load(line.Positional()[0]); !done) return Fail(done.Why());
  const Bundle& bundle = *bundles.Loaded()[0];
  if (line.Has("json")) {
    Output::Write(JsonOfBundle(bundle));
    return 0;
  }
  Output::Print("bundle %s\n", Printable(bundle.Path()).c_str());
  for (const RegisteredClass* entry : bundle.Classes()) {
    PrintRecord(*entry->record);
    PrintSlots(*entry->record);
    if (const HostPanel* panel = HostPanel::Of(entry->panel.get())) Output::Write(PanelListing(*panel));
  }
  return 0;
}

}  // namespace

const Command kInfoCommand = {
    "info", "load a bundle and print what it registers",
    "usage: objecthost info BUNDLE [--json]\n\n"
    "Tries the bundle in a process of its own, loads it, and prints its class records, filled method\n"
    "slots and panels. No other bundle is loaded.\n",
    &RunInfo};

}  // namespace host
