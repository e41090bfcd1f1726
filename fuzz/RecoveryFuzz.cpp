// What crashes left in the recovery folder: recovery files, and pages that name the bundle that was at work. The input
// is the content of one of each.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "fuzz/HostFuzz.h"
#include "host/storage/BundleAtWork.h"
#include "host/storage/Recovery.h"
#include "host/storage/RecoveryFolder.h"

namespace {

// A data folder of the process's own, in memory.
const std::string& Folder() {
  static const std::string folder = [] {
    char pattern[] = "/dev/shm/recovery_fuzz_XXXXXX";
    host_fuzz::Require(mkdtemp(pattern) != nullptr && setenv("XDG_DATA_HOME", pattern, 1) == 0);
    std::atexit([] { std::filesystem::remove_all(std::getenv("XDG_DATA_HOME")); });
    std::filesystem::create_directories(host::RecoveryFolder());
    return host::RecoveryFolder();
  }();
  return folder;
}

void Write(const std::string& path, const std::uint8_t* data, std::size_t size) {
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using host_fuzz::Require;
  host_fuzz::Start();
  Write(Folder() + "/a.akrecover", data, size);
  const auto found = host::FindRecoveries();
  Require(found.size() <= 1);
  if (!found.empty()) {
    if (const auto session = host::OpenRecovery(found[0])) {
      Require((*session)->File().HasUnsavedChanges() && (*session)->File().Path() == found[0].original);
      host_fuzz::CheckDocument((*session)->Doc());
    }
    Require(static_cast<bool>(host::DiscardRecovery(found[0])) && host::FindRecoveries().empty());
  }
  if (size < 24) return 0;
  Write(Folder() + "/a.atwork", data, size);
  const auto left = host::BundleAtWork::TakeLeft();
  Require(left.size() <= 1 && (left.empty() || left[0].size() < 4072));
  return 0;
}
