// Which bundles there are, and where they are looked for.
#include <cstdio>

#include "host/Program.h"
#include "host/bundles/BundleSet.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/terminal/Output.h"
#include "host/text/DisplayText.h"
#include "host/text/Printable.h"

namespace host {
namespace {

int RunBundles(const std::vector<std::string>& words) {
  CommandLine line({}, {});
  if (const auto done = line.Parse(words, 0, 0); !done) return Fail(done.Why());
  const BundleSet& bundles = Program::Bundles();
  Output::Print("search path\n");
  for (const std::string& folder : bundles.Folders()) Output::Print("  %s\n", Printable(folder).c_str());
  Output::Print("loaded\n");
  for (const auto& bundle : bundles.Loaded()) {
    Output::Print("  %s\n", Printable(bundle->Path()).c_str());
    for (const RegisteredClass* entry : bundle->Classes()) {
      Output::Print("    %-8s %s\n", Printable(entry->record->classID.chars).c_str(),
                    Printable(DisplayText(DisplayName(*entry->record))).c_str());
    }
  }
  if (!bundles.NotLoaded().empty()) Output::Print("skipped\n");
  for (const BundleSet::Skipped& skipped : bundles.NotLoaded())
    Output::Print("  %s\n", skipped.reason.English().c_str());
  return 0;
}

}  // namespace

const Command kBundlesCommand = {
    "bundles", "list the bundles and where they are looked for",
    "usage: objecthost bundles\n\n"
    "Prints the search path, the loaded bundles with their classes, and the bundles that were\n"
    "skipped, with the reason.\n",
    &RunBundles};

}  // namespace host
