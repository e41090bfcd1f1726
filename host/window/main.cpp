// The program of the window: objecthost-window [--bundle FILE]... [--only-bundle FILE]... [--no-bundles] [--]
// [DOCUMENT]..., or objecthost-window --version.
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#include "host/Program.h"
#include "host/Version.h"
#include "host/bundles/BundleSet.h"
#include "host/storage/BundleAtWork.h"
#include "host/text/Localisation.h"
#include "host/window/EditorApplication.h"

namespace {

// The program that tries bundles stands beside this one.
std::string HostProgram() {
  const std::string own = host::Program::ExecutablePath();
  return own.substr(0, own.rfind('/') + 1) + "objecthost";
}

}  // namespace

int main(int argc, char** argv) {
  host::AddCatalogues();
  std::setlocale(LC_NUMERIC, "");
  host::BundleSet bundles(HostProgram(), host::ProbeMemory::DefaultFile());
  std::vector<char*> words{argv[0]};
  bool searches = true;
  bool ownBundles = false;  // which the windows of another program would not have
  bool options = true;      // until "--", which the toolkit takes too
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    options = options && word != "--";
    if (options && word == "--version") {
      std::printf("objecthost-window %s\n", host::kVersion);
      return std::fflush(stdout) == 0 ? 0 : 1;
    }
    const bool isAboutBundles = word == "--no-bundles" || word == "--bundle" || word == "--only-bundle";
    ownBundles = ownBundles || (options && isAboutBundles);
    if (options && word == "--no-bundles") {
      searches = false;
    } else if (options && (word == "--bundle" || word == "--only-bundle") && i + 1 < argc) {
      if (word == "--only-bundle") searches = false;
      if (const auto done = bundles.Load(argv[++i]); !done) {
        std::fprintf(stderr, "objecthost: %s\n", done.Why().Translated().c_str());
        return 1;
      }
    } else {
      words.push_back(argv[i]);
    }
  }
  const auto application = host::EditorApplication::Create(&bundles, !ownBundles);
  const bool isElsewhere = application->IsRunningElsewhere();
  if (!isElsewhere) bundles.LeaveOut(host::BundleAtWork::TakeLeft());
  if (searches && !isElsewhere) {
    const host::BundleAtWork starting([] {});  // a bundle that ends the program now is left out next time
    bundles.LoadFound();
  }
  return application->run(static_cast<int>(words.size()), words.data());
}
