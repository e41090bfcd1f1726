// Which bundles there are, and where they are looked for.
#include <cstdio>

#include "host/Program.h"
#include "host/bundles/BundleSet.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/text/DisplayText.h"

namespace host {
namespace {

int RunBundles(const std::vector<std::string>& words) {
  CommandLine line({}, {});
  if (const auto done = line.Parse(words, 0, 0); !done) return Fail(done.Why());
  const BundleSet& bundles = Program::Bundles();
  std::printf("search path\n");
  for (const std::string& folder : bundles.Folders()) std::printf("  %s\n", folder.c_str());
  std::printf("loaded\n");
  for (const auto& bundle : bundles.Loaded()) {
    std::printf("  %s\n", bundle->Path().c_str());
    for (const RegisteredClass* entry : bundle->Classes()) {
      std::printf("    %-8s %s\n", entry->record->classID.chars, DisplayText(DisplayName(*entry->record)).c_str());
    }
  }
  if (!bundles.NotLoaded().empty()) std::printf("skipped\n");
  for (const BundleSet::Skipped& skipped : bundles.NotLoaded()) std::printf("  %s\n", skipped.reason.English().c_str());
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
